#include "clipboard/ClipPatterns.h"

#include "clipboard/CodeUnitSet.h"

#include <QRegularExpression>
#include <QUrl>

#include <array>

namespace {

bool isAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The local part's characters of an e-mail address; the domain's characters are a subset.
constexpr std::array<bool, 128> emailCharacters = [] {
    std::array<bool, 128> table{};
    for (char c = 'a'; c <= 'z'; ++c)
        table[size_t(c)] = table[size_t(c - 'a' + 'A')] = true;
    for (char c = '0'; c <= '9'; ++c)
        table[size_t(c)] = true;
    for (char c : std::string_view(".!#$%&'*+/=?^_`{|}~-"))
        table[size_t(c)] = true;
    return table;
}();

// Each thread has its own compiled expressions: a QRegularExpression is reentrant, not
// thread-safe, and the history is classified on two threads at once.
//
// Possessive forms of the stated patterns. They match the same texts: each possessive run is
// followed by an item its class can never match, so giving characters back could not help;
// a label's run must end in a letter or digit, which the look-behind checks.
const QRegularExpression& emailExpression()
{
    thread_local const QRegularExpression expression(QStringLiteral(
        "^[A-Za-z0-9.!#$%&'*+/"
        "=?^_`{|}~-]++@[A-Za-z0-9][A-Za-z0-9-]*+(?<!-)(?:\\.[A-Za-z0-9][A-Za-z0-9-]*+(?<!-))++$"));
    return expression;
}

const QRegularExpression& hexColorExpression()
{
    thread_local const QRegularExpression expression(
        QStringLiteral("^#(?:[0-9a-fA-F]{3}|[0-9a-fA-F]{4}|[0-9a-fA-F]{6}|[0-9a-fA-F]{8})$"));
    return expression;
}

const QRegularExpression& colorFunctionExpression()
{
    thread_local const QRegularExpression expression(
        QStringLiteral("^(?:rgb|rgba|hsl|hsla)\\([0-9.,% /]++\\)$"));
    return expression;
}

const QRegularExpression& numberExpression()
{
    thread_local const QRegularExpression expression(
        QStringLiteral("^[+-]?+(?:[0-9]++(?:[.,][0-9]++)?+|[.,][0-9]++)%?+$"));
    return expression;
}

bool hasPrefix(const char16_t* at, qsizetype room, std::u16string_view prefix)
{
    return room >= qsizetype(prefix.size()) && std::equal(prefix.begin(), prefix.end(), at);
}

// The alternatives of the code pattern at one position, chosen by their first character
// (each line start of every text runs this).
bool startsWithKeyword(QStringView t, qsizetype at)
{
    if (at >= t.size())
        return false;
    const char16_t* p = t.utf16() + at;
    const qsizetype room = t.size() - at;
    switch (p[0]) {
    case u'{':
        return true;
    case u'<':
        return room > 1 && (p[1] == u'/' || isAsciiLetter(QChar(p[1])));
    case u'f':
        return hasPrefix(p, room, u"func ") || hasPrefix(p, room, u"function ");
    case u'c':
        return hasPrefix(p, room, u"const ") || hasPrefix(p, room, u"class ");
    case u'l':
        return hasPrefix(p, room, u"let ");
    case u'v':
        return hasPrefix(p, room, u"var ");
    case u'i':
        return hasPrefix(p, room, u"import ");
    case u'd':
        return hasPrefix(p, room, u"def ");
    case u'S':
        return hasPrefix(p, room, u"SELECT ") || hasPrefix(p, room, u"SELECT\n");
    default:
        return false;
    }
}

} // namespace

namespace ClipPatterns {

QString emailPattern()
{
    return QStringLiteral("^[A-Za-z0-9.!#$%&'*+/=?^_`{|}~-]+@[A-Za-z0-9](?:[A-Za-z0-9-]*[A-Za-z0-9])?"
                          "(?:\\.[A-Za-z0-9](?:[A-Za-z0-9-]*[A-Za-z0-9])?)+$");
}

QString hexColorPattern()
{
    return QStringLiteral("^#(?:[0-9a-fA-F]{3}|[0-9a-fA-F]{4}|[0-9a-fA-F]{6}|[0-9a-fA-F]{8})$");
}

QString colorFunctionPattern()
{
    return QStringLiteral("^(?:rgb|rgba|hsl|hsla)\\([0-9.,% /]+\\)$");
}

QString phonePattern()
{
    return QStringLiteral("^\\+?[0-9 ()/\\-]+$");
}

QString numberPattern()
{
    return QStringLiteral("^[+-]?(?:[0-9]+(?:[.,][0-9]+)?|[.,][0-9]+)%?$");
}

QString drivePattern()
{
    return QStringLiteral("^[A-Za-z]:[\\\\/]");
}

QString codePattern()
{
    return QStringLiteral("(*ANY)(?m)^\\s*(func |function |const |let |var |import |def |class |SELECT "
                          "|SELECT\\n|<[/a-zA-Z]|\\{)");
}

bool hasLineBreak(QStringView t)
{
    return CodeUnitSet::findLineBreak(t, 0, false) >= 0;
}

bool isPlainWebAddress(QStringView t)
{
    const char16_t* p = t.utf16();
    const qsizetype size = t.size();
    qsizetype i = (p[4] == u':') ? 5 : 6;
    if (size < i + 3 || p[i] != u'/' || p[i + 1] != u'/')
        return false;
    i += 2;
    // Host: dot-separated labels of letters, digits and inner hyphens, each at most 63 long.
    bool anyLabel = false;
    for (;;) {
        const qsizetype start = i;
        while (i < size && (isAsciiLetter(QChar(p[i])) || isAsciiDigit(QChar(p[i])) || p[i] == u'-'))
            ++i;
        const qsizetype length = i - start;
        if (length == 0 || length > 63 || p[start] == u'-' || p[i - 1] == u'-')
            return false;
        anyLabel = true;
        if (i < size && p[i] == u'.') {
            ++i;
            continue;
        }
        break;
    }
    if (!anyLabel || i - (p[4] == u':' ? 7 : 8) > 253)
        return false;
    // Port: 1 to 65535 without leading zeros.
    if (i < size && p[i] == u':') {
        const qsizetype start = ++i;
        int port = 0;
        while (i < size && isAsciiDigit(QChar(p[i])) && i - start < 5)
            port = port * 10 + (p[i++] - u'0');
        if (i == start || p[start] == u'0' || port > 65535)
            return false;
    }
    if (i == size)
        return true;
    if (p[i] != u'/' && p[i] != u'?' && p[i] != u'#')
        return false;
    // Path, query and fragment of unreserved and delimiter characters; no percent escapes, and
    // only the one "#" that starts the fragment.
    static constexpr std::u16string_view allowed = u"-._~!$&'()*+,;=:@/?";
    bool fragment = false;
    for (; i < size; ++i) {
        const char16_t c = p[i];
        if (isAsciiLetter(QChar(c)) || isAsciiDigit(QChar(c)) || allowed.find(c) != std::u16string_view::npos)
            continue;
        if (c == u'#' && !fragment) {
            fragment = true;
            continue;
        }
        return false;
    }
    return true;
}

bool isLink(QStringView t)
{
    // Only a text that begins with the scheme can parse with it.
    const auto is = [&](qsizetype i, char16_t lower) { return (t[i].unicode() | 0x20) == lower; };
    const bool http = t.size() > 5 && is(0, u'h') && is(1, u't') && is(2, u't') && is(3, u'p') &&
                      (t[4] == u':' || (is(4, u's') && t[5] == u':'));
    if (!http)
        return false;
    for (QChar c : t) {
        if (c.isSpace())
            return false;
    }
    // Most copied links are plain; those are valid without asking the URL parser, the costly part.
    if (isPlainWebAddress(t))
        return true;
    const QUrl url(t.toString(), QUrl::StrictMode);
    const QString scheme = url.scheme();
    return url.isValid() && (scheme == u"http" || scheme == u"https") && !url.host().isEmpty();
}

bool isEmail(QStringView t)
{
    // Every character of an address is a local-part character or its one "@"; ordinary text
    // fails this at its first space, long before the expression would run.
    int ats = 0;
    for (QChar c : t) {
        if (c == u'@') {
            if (++ats > 1)
                return false;
        } else if (c.unicode() >= 128 || !emailCharacters[c.unicode()]) {
            return false;
        }
    }
    return ats == 1 && emailExpression().match(t).hasMatch();
}

bool isPath(QStringView t)
{
    const bool drive =
        t.size() >= 3 && isAsciiLetter(t[0]) && t[1] == u':' && (t[2] == u'\\' || t[2] == u'/');
    const bool pathLike = t.startsWith(u'/') || t.startsWith(u"~/") || t.startsWith(u"file://") || drive;
    if (!pathLike || t.startsWith(u"//") || t.startsWith(u"/*"))
        return false;
    return !hasLineBreak(t);
}

bool isColor(QStringView t)
{
    if (t.startsWith(u'#'))
        return hexColorExpression().match(t).hasMatch();
    if (t.startsWith(u"rgb") || t.startsWith(u"hsl"))
        return colorFunctionExpression().match(t).hasMatch();
    return false;
}

bool isPhone(QStringView t)
{
    // ^\+?[0-9 ()/\-]+$ by hand; once it holds, the text's only numeric characters are
    // ASCII digits, so counting those counts every numeric character.
    qsizetype i = t.startsWith(u'+') ? 1 : 0;
    if (i == t.size())
        return false;
    int digits = 0;
    bool separator = false;
    for (; i < t.size(); ++i) {
        const QChar c = t[i];
        if (isAsciiDigit(c))
            ++digits;
        else if (c == u' ' || c == u'(' || c == u')' || c == u'/' || c == u'-')
            separator = true;
        else
            return false;
    }
    if (digits < 7 || digits > 15)
        return false;
    if (t.startsWith(u'+'))
        return true;
    return t.startsWith(u'0') && separator;
}

bool isNumber(QStringView t)
{
    if (t.isEmpty())
        return false;
    const QChar first = t.front();
    if (!isAsciiDigit(first) && first != u'+' && first != u'-' && first != u'.' && first != u',')
        return false;
    return numberExpression().match(t).hasMatch();
}

bool isCode(QStringView t)
{
    // One pass. A line start skips its white space to the first other character q; every
    // later line start inside that run reaches the same q, so the scan goes on from q and
    // each character is looked at once (the plain pattern retries the run from each line).
    const qsizetype size = t.size();
    qsizetype i = 0;
    bool lineStart = true;
    for (;;) {
        if (lineStart) {
            while (i < size && t[i].isSpace())
                ++i;
            if (startsWithKeyword(t, i))
                return true;
            lineStart = false;
        }
        const qsizetype stop = CodeUnitSet::findLineBreak(t, i, true);
        if (stop < 0)
            return false;
        if (t[stop] == u'`') {
            if (stop + 2 < size && t[stop + 1] == u'`' && t[stop + 2] == u'`')
                return true;
        } else {
            lineStart = true;
        }
        i = stop + 1;
    }
}

} // namespace ClipPatterns
