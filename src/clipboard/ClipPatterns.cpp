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

// Possessive forms of the stated patterns. They match the same texts: each possessive run is
// followed by an item its class can never match, so giving characters back could not help;
// a label's run must end in a letter or digit, which the look-behind checks.
const QRegularExpression& emailExpression()
{
    static const QRegularExpression expression(QStringLiteral(
        "^[A-Za-z0-9.!#$%&'*+/"
        "=?^_`{|}~-]++@[A-Za-z0-9][A-Za-z0-9-]*+(?<!-)(?:\\.[A-Za-z0-9][A-Za-z0-9-]*+(?<!-))++$"));
    return expression;
}

const QRegularExpression& hexColorExpression()
{
    static const QRegularExpression expression(
        QStringLiteral("^#(?:[0-9a-fA-F]{3}|[0-9a-fA-F]{4}|[0-9a-fA-F]{6}|[0-9a-fA-F]{8})$"));
    return expression;
}

const QRegularExpression& colorFunctionExpression()
{
    static const QRegularExpression expression(QStringLiteral("^(?:rgb|rgba|hsl|hsla)\\([0-9.,% /]++\\)$"));
    return expression;
}

const QRegularExpression& numberExpression()
{
    static const QRegularExpression expression(
        QStringLiteral("^[+-]?+(?:[0-9]++(?:[.,][0-9]++)?+|[.,][0-9]++)%?+$"));
    return expression;
}

bool startsWithKeyword(QStringView t, qsizetype at)
{
    static constexpr std::u16string_view keywords[] = {u"func ",   u"function ", u"const ", u"let ",
                                                       u"var ",    u"import ",   u"def ",   u"class ",
                                                       u"SELECT ", u"SELECT\n"};
    if (at >= t.size())
        return false;
    const QStringView rest = t.sliced(at);
    const QChar first = rest.front();
    if (first == u'{')
        return true;
    if (first == u'<')
        return rest.size() > 1 && (rest[1] == u'/' || isAsciiLetter(rest[1]));
    for (std::u16string_view keyword : keywords) {
        if (rest.startsWith(QStringView(keyword.data(), qsizetype(keyword.size()))))
            return true;
    }
    return false;
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
    static const CodeUnitSet breaks{u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'};
    return breaks.findIn(t) >= 0;
}

bool isLink(QStringView t)
{
    // Only a text that begins with the scheme can parse with it; the parser is the costly part.
    const bool http = t.size() > 5 && t.first(4).compare(u"http", Qt::CaseInsensitive) == 0 &&
                      (t[4] == u':' || ((t[4] == u's' || t[4] == u'S') && t[5] == u':'));
    if (!http)
        return false;
    for (QChar c : t) {
        if (c.isSpace())
            return false;
    }
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
    static const CodeUnitSet stops{u'`', u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'};
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
        const qsizetype stop = stops.findIn(t, i);
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
