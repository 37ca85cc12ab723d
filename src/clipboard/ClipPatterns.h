#pragma once

#include <QString>
#include <QStringView>

// The recognisers behind the clip kinds. Each takes the text already trimmed of white space
// at both ends. They give exactly the answers of the stated patterns, but never backtrack:
// every one runs in time linear in the text, also on adversarial copies of 99,999 bytes.
namespace ClipPatterns {

// The patterns as the classification rules state them. Only tests use them, to hold the fast
// forms below to the same answers.
QString emailPattern();
QString hexColorPattern();
QString colorFunctionPattern();
QString phonePattern();
QString numberPattern();
QString drivePattern();
// The code pattern with the line and white-space semantics used here: every Unicode line
// terminator starts a line (LF, VT, FF, CR, CR LF, NEL, LS, PS) and \s is Unicode white space.
QString codePattern();

// An http or https URL with a host and no white space.
bool isLink(QStringView t);
// A link of the common plain shape (host of letters, digits and hyphens, optional port, path,
// query and fragment without escapes), which the URL parser always accepts. Expects t to
// start with "http:" or "https:" in any case.
bool isPlainWebAddress(QStringView t);
bool isEmail(QStringView t);
// A path-like start ("/", "~/", "file://", a drive letter) without comment markers or line breaks.
bool isPath(QStringView t);
bool isColor(QStringView t);
// Dialling characters only, with 7 to 15 digits, written internationally or with separators.
bool isPhone(QStringView t);
bool isNumber(QStringView t);
// Three backticks in a row, or a line that starts (after white space) like source code.
bool isCode(QStringView t);
// U+000A–U+000D, U+0085, U+2028 or U+2029.
bool hasLineBreak(QStringView t);

} // namespace ClipPatterns
