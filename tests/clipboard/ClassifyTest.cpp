#include "ClipboardTests.h"

#include "clipboard/ClipKind.h"
#include "clipboard/ClipPatterns.h"
#include "clipboard/CodeUnitSet.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

namespace {

// Compiled once per pattern: the comparisons run tens of thousands of times.
bool matchesPattern(const QString& pattern, const QString& text,
                    QRegularExpression::PatternOptions options = QRegularExpression::NoPatternOption)
{
    static QHash<QString, QRegularExpression> compiled;
    auto it = compiled.find(pattern);
    if (it == compiled.end())
        it = compiled.insert(pattern, QRegularExpression(pattern, options));
    return it->match(text).hasMatch();
}

// The rules exactly as stated, through the plain patterns; the fast recognisers must agree.
bool referenceLink(const QString& t)
{
    static const QRegularExpression space(QStringLiteral("\\s"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    const QUrl url(t, QUrl::StrictMode);
    return !t.contains(space) && url.isValid() && (url.scheme() == u"http" || url.scheme() == u"https") &&
           !url.host().isEmpty();
}
bool referenceEmail(const QString& t)
{
    return matchesPattern(ClipPatterns::emailPattern(), t);
}
bool referenceColor(const QString& t)
{
    return matchesPattern(ClipPatterns::hexColorPattern(), t) ||
           matchesPattern(ClipPatterns::colorFunctionPattern(), t);
}
bool referenceNumber(const QString& t)
{
    return matchesPattern(ClipPatterns::numberPattern(), t);
}
bool referencePhone(const QString& t)
{
    qsizetype numeric = 0;
    for (QChar c : t)
        numeric += c.isNumber() ? 1 : 0;
    if (numeric < 7 || numeric > 15 || !matchesPattern(ClipPatterns::phonePattern(), t))
        return false;
    static const QRegularExpression separator(QStringLiteral("[ ()/\\-]"));
    return t.startsWith(u'+') || (t.startsWith(u'0') && t.contains(separator));
}
bool referencePath(const QString& t)
{
    static const QRegularExpression lineBreak(
        QStringLiteral("[\\x{000A}-\\x{000D}\\x{0085}\\x{2028}\\x{2029}]"));
    if (t.contains(lineBreak))
        return false;
    const bool start = t.startsWith(u'/') || t.startsWith(u"~/") || t.startsWith(u"file://") ||
                       matchesPattern(ClipPatterns::drivePattern(), t);
    return start && !t.startsWith(u"//") && !t.startsWith(u"/*");
}
bool referenceCode(const QString& t)
{
    return t.contains(u"```") ||
           matchesPattern(ClipPatterns::codePattern(), t, QRegularExpression::UseUnicodePropertiesOption);
}

// Texts built from pieces that come close to the patterns' edges.
QStringList randomTexts(const QStringList& pieces, int count, int maxPieces, quint32 seed)
{
    QRandomGenerator random(seed);
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        QString text;
        const int n = 1 + random.bounded(maxPieces);
        for (int k = 0; k < n; ++k)
            text += pieces.at(random.bounded(int(pieces.size())));
        texts.append(text);
    }
    return texts;
}

} // namespace

// Classification: the stated cases, the fast recognisers against the plain patterns, and
// adversarial copies of the largest size.
class ClassifyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void labelsAreTheRawValues()
    {
        QStringList labels;
        for (ClipKind kind : ClipKinds::allCases())
            labels.append(ClipKinds::label(kind));
        QCOMPARE(labels, QStringList({"Alle", "Favoriten", "Text", "Links", "E-Mails", "Telefon", "Zahlen",
                                      "Dateipfade", "Farben", "Code"}));
        for (ClipKind kind : ClipKinds::allCases())
            QCOMPARE(ClipKinds::fromLabel(ClipKinds::label(kind)), std::optional<ClipKind>(kind));
        QCOMPARE(ClipKinds::fromLabel(u"Bilder"), std::nullopt);
        QCOMPARE(ClipKinds::fromLabel(u"alle"), std::nullopt);
    }

    void classify_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kind");
        QTest::newRow("link") << "https://example.com/pfad/seite?x=1"
                              << "Links";
        QTest::newRow("link upper-case scheme") << "HTTP://Example.com"
                                                << "Links";
        QTest::newRow("link with text") << "https://example.com/pfad mit Text"
                                        << "Text";
        QTest::newRow("link without host") << "https:///pfad"
                                           << "Text";
        QTest::newRow("other scheme") << "ftp://example.com/datei"
                                      << "Text";
        QTest::newRow("colour") << "#ff0022"
                                << "Farben";
        QTest::newRow("short hex") << "#12"
                                   << "Text";
        QTest::newRow("colour function") << "rgba(12, 34, 56, 0.5)"
                                         << "Farben";
        QTest::newRow("code let") << "let value = 3"
                                  << "Code";
        QTest::newRow("code fence") << "Schau: ```x```"
                                    << "Code";
        QTest::newRow("code on a later line") << "Notiz\n    def run():"
                                              << "Code";
        QTest::newRow("SELECT then line break") << "SELECT\n* FROM clips"
                                                << "Code";
        QTest::newRow("tag") << "<div>Hallo</div>"
                             << "Code";
        QTest::newRow("plain note") << "Eine normale Notiz"
                                    << "Text";
        QTest::newRow("email with plus tag") << "anna.berg+news@example.co.uk"
                                             << "E-Mails";
        QTest::newRow("email after a word") << "Kontakt: anna@example.de"
                                            << "Text";
        QTest::newRow("email label ends in hyphen") << "anna@example-.de"
                                                    << "Text";
        QTest::newRow("international phone") << "+49 30 1234567"
                                             << "Telefon";
        QTest::newRow("phone with separator") << "030 / 1234567"
                                              << "Telefon";
        QTest::newRow("digits only") << "12345678"
                                     << "Zahlen";
        QTest::newRow("negative decimal") << "-12,50"
                                          << "Zahlen";
        QTest::newRow("percent") << "42%"
                                 << "Zahlen";
        QTest::newRow("date") << "2026-09-20"
                              << "Text";
        QTest::newRow("absolute path") << "/Users/test/My File.txt"
                                       << "Dateipfade";
        QTest::newRow("home path") << "~/Downloads"
                                   << "Dateipfade";
        QTest::newRow("file URL") << "file:///tmp/a.txt"
                                  << "Dateipfade";
        QTest::newRow("drive path") << "C:\\Users\\Test\\file.txt"
                                    << "Dateipfade";
        QTest::newRow("comment") << "// a comment"
                                 << "Text";
        QTest::newRow("block comment") << "/* Kommentar */"
                                       << "Text";
        QTest::newRow("two paths on two lines") << "/one\n/two"
                                                << "Text";
        QTest::newRow("trimmed first") << "  \n#ABC\t "
                                       << "Farben";
    }
    void classify()
    {
        QFETCH(QString, text);
        QFETCH(QString, kind);
        QCOMPARE(ClipKinds::label(ClipKinds::classify(text)), kind);
    }

    void filtersMatchTheirKindOnly()
    {
        QVERIFY(ClipKinds::matches(ClipKind::all, u"egal", false));
        QVERIFY(ClipKinds::matches(ClipKind::pinned, u"egal", true));
        QVERIFY(!ClipKinds::matches(ClipKind::pinned, u"egal", false));
        QVERIFY(ClipKinds::matches(ClipKind::numbers, u"42%", true));
        QVERIFY(!ClipKinds::matches(ClipKind::text, u"42%", false));
        QVERIFY(ClipKinds::matches(ClipKind::text, u"2026-09-20", false));
    }

    void aFilterMatchesExactlyTheTextsOfItsKind()
    {
        const QStringList pieces{
            "https://a.de", "http:", "x@y.de", "@",    "/tmp", "~/", "#fff", "rgb(1,2,3)", "+49 ", "030 ",
            "1234567",      "-1,5",  "%",      "let ", "{",    "\n", " ",    "```",        "Text", "C:\\"};
        for (const QString& text : randomTexts(pieces, 20000, 4, 8)) {
            const ClipKind kind = ClipKinds::classify(text);
            for (ClipKind filter : ClipKinds::allCases()) {
                if (filter != ClipKind::all && filter != ClipKind::pinned)
                    QVERIFY2(ClipKinds::matches(filter, text, false) == (kind == filter), qPrintable(text));
            }
        }
    }

    void plainWebAddressesAreAlwaysValidLinks()
    {
        const QStringList hosts{
            "a", "example", "x-y", "9", "-a", "b-", "", "ü", "a_b", QString(63, u'h'), QString(64, u'h')};
        const QStringList ports{"", "", ":80", ":65535", ":65536", ":0", ":080", ":", ":123456"};
        const QStringList valid{"a", "Z", "9", "-", ".", ":", "/", "?", "#", "&", "=", "_",
                                "~", "'", "(", ")", "*", "+", ",", ";", "@", "!", "$"};
        const QStringList invalid{"%", "%41", "[", "]", "|", "ü", "\\", "^", "`", "{", "\"", "<", " "};
        const QStringList pieces = valid + valid + valid + invalid;
        QRandomGenerator random(9);
        int plain = 0;
        for (int i = 0; i < 100000; ++i) {
            QString t =
                QStringList{"http://", "https://", "HTTPS://", "http:/", "https:"}.at(random.bounded(5));
            const int labels = 1 + random.bounded(3);
            for (int k = 0; k < labels; ++k)
                t += (k ? QStringLiteral(".") : QString()) + hosts.at(random.bounded(int(hosts.size())));
            t += ports.at(random.bounded(int(ports.size())));
            const int n = random.bounded(6);
            for (int k = 0; k < n; ++k)
                t += pieces.at(random.bounded(int(pieces.size())));
            const bool reference = referenceLink(t);
            if (ClipPatterns::isPlainWebAddress(t)) {
                ++plain;
                QVERIFY2(reference, qPrintable(t));
            }
            QVERIFY2(ClipPatterns::isLink(t) == reference, qPrintable(t));
        }
        // The fast path is taken often enough for the comparison to mean something.
        QVERIFY2(plain > 1500, qPrintable(QString::number(plain)));
    }

    void fastRecognisersAgreeWithThePatterns()
    {
        const QStringList emailPieces{"a", "Z", "9",   ".",    "-",  "@", "+", "_",
                                      "!", "~", "x.y", "ab-c", "-.", " ", "ä", "\n"};
        const QStringList colorPieces{"#",    "f", "A", "0", "9", "g", "rgb", "rgba", "hsl",
                                      "hsla", "(", ")", "1", ",", " ", "%",   ".",    "/"};
        const QStringList numberPieces{"1", "23", ".", ",", "+", "-", "%", "0", " ", "a", "\n"};
        const QStringList phonePieces{"+", "0", "1", "2", "7",      " ",     "(",
                                      ")", "/", "-", "x", "\u0663", "\u00bd"};
        const QStringList pathPieces{"/",  "~",  "~/", "file://", "C:",     "c:\\", "x",
                                     "/*", "//", "\n", "\r",      "\u2028", " ",    "*"};
        const QStringList codePieces{
            "let ",   "let",    "func ",   "function ", "const ", "var ",   "import ", "def ",
            "class ", "SELECT", "SELECT ", "SELECT\n",  "{",      "<a",     "</",      "<1",
            "`",      "``",     " ",       "\t",        "\n",     "\r\n",   "\r",      "\v",
            "\f",     "\u2028", "\u2029",  "\u0085",    "\u00a0", "\u3000", "x",       "\u200b"};
        int checked = 0;
        for (const QString& text : randomTexts(emailPieces, 20000, 10, 1)) {
            const QString t = text.trimmed();
            QVERIFY2(ClipPatterns::isEmail(t) == referenceEmail(t), qPrintable(t));
            ++checked;
        }
        for (const QString& text : randomTexts(colorPieces, 20000, 8, 2)) {
            const QString t = text.trimmed();
            QVERIFY2(ClipPatterns::isColor(t) == referenceColor(t), qPrintable(t));
        }
        for (const QString& text : randomTexts(numberPieces, 20000, 6, 3)) {
            const QString t = text.trimmed();
            QVERIFY2(ClipPatterns::isNumber(t) == referenceNumber(t), qPrintable(t));
        }
        for (const QString& text : randomTexts(phonePieces, 20000, 18, 4)) {
            const QString t = text.trimmed();
            QVERIFY2(ClipPatterns::isPhone(t) == referencePhone(t), qPrintable(t));
        }
        for (const QString& text : randomTexts(pathPieces, 20000, 6, 5)) {
            const QString t = text.trimmed();
            QVERIFY2(ClipPatterns::isPath(t) == referencePath(t), qPrintable(t));
        }
        // The code scan is also held to the pattern on untrimmed texts.
        for (const QString& text : randomTexts(codePieces, 40000, 10, 6)) {
            QVERIFY2(ClipPatterns::isCode(text) == referenceCode(text),
                     qPrintable(text.toUtf8().toPercentEncoding()));
            const QString t = text.trimmed();
            QVERIFY2(ClipPatterns::isCode(t) == referenceCode(t), qPrintable(t.toUtf8().toPercentEncoding()));
        }
        QCOMPARE(checked, 20000);
    }

    void adversarialCopiesOfTheLargestSize_data()
    {
        QTest::addColumn<QString>("text");
        // As many units as fit in 99,999 UTF-8 bytes.
        auto fill = [](const QString& head, const QString& unit, const QString& tail) {
            const qsizetype room = 99'999 - head.toUtf8().size() - tail.toUtf8().size();
            return head + unit.repeated(room / unit.toUtf8().size()) + tail;
        };
        QTest::newRow("local part, no domain") << fill({}, "a", "@");
        QTest::newRow("long label ending in hyphen") << fill("a@", "a", "-");
        QTest::newRow("many labels, bad end") << fill("a@b", ".a", "!");
        QTest::newRow("hyphen runs") << fill("a@", "a-", ".");
        QTest::newRow("dots in local part") << fill({}, "a.", "@b.c d");
        QTest::newRow("almost an address") << fill({}, "a", "@a.b-");
        QTest::newRow("deep path") << fill("/", "ordner/", "\n");
        QTest::newRow("home path") << fill("~/", "x", "");
        QTest::newRow("digits then letter") << fill({}, "1", "x");
        QTest::newRow("decimal separators") << fill({}, "1,", "");
        QTest::newRow("percent signs") << fill("+", "1", "%%");
        QTest::newRow("phone-like") << fill("0", " 1", "x");
        QTest::newRow("colour-like") << fill("rgb(", "1,", "x");
        QTest::newRow("blank lines") << fill("a", " \n", "b");
        QTest::newRow("blank lines with tabs") << fill("a", "\n\t  ", "b");
        QTest::newRow("line separators") << fill("a", "\u2028 ", "b");
        QTest::newRow("carriage returns") << fill("a", "\r\n", "let x");
        QTest::newRow("backticks in pairs") << fill({}, "``a", "");
        QTest::newRow("angle brackets") << fill({}, "<", "");
        QTest::newRow("keyword near-misses") << fill({}, "\nSELECTx", "");
    }
    void adversarialCopiesOfTheLargestSize()
    {
        QFETCH(QString, text);
        QVERIFY(text.toUtf8().size() <= 99'999);
        const QString t = text.trimmed();
        QCOMPARE(ClipPatterns::isEmail(t), referenceEmail(t));
        QCOMPARE(ClipPatterns::isPath(t), referencePath(t));
        QCOMPARE(ClipPatterns::isColor(t), referenceColor(t));
        QCOMPARE(ClipPatterns::isPhone(t), referencePhone(t));
        QCOMPARE(ClipPatterns::isNumber(t), referenceNumber(t));
        QCOMPARE(ClipPatterns::isCode(t), referenceCode(t));
        // Every step answers: the classification as a whole gives one of the eight kinds.
        QVERIFY(ClipKinds::classify(text) != ClipKind::all);
    }

    void codeUnitScansFindEveryPosition()
    {
        // Positions on both sides of the vector blocks and in the scalar tail.
        const CodeUnitSet five{u'x', u'\u2028', u'\u00e4', u'9', u'\u0000'};
        const QString plain(53, u'-');
        QCOMPARE(five.findIn(plain), qsizetype(-1));
        QCOMPARE(CodeUnitSet::findLineBreak(plain, 0, true), qsizetype(-1));
        QCOMPARE(five.findIn(QStringView()), qsizetype(-1));
        const QList<char16_t> breaks{u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'};
        for (int at : {0, 7, 8, 15, 16, 17, 31, 32, 47, 48, 52}) {
            QString probe = plain;
            probe[at] = QChar(u'\u0000');
            QCOMPARE(five.findIn(probe), qsizetype(at));
            QCOMPARE(five.findIn(probe, at + 1), qsizetype(-1));
            for (char16_t unit : breaks) {
                probe[at] = QChar(unit);
                QCOMPARE(CodeUnitSet::findLineBreak(probe, 0, false), qsizetype(at));
                QCOMPARE(CodeUnitSet::findLineBreak(probe, at + 1, true), qsizetype(-1));
            }
            probe[at] = u'`';
            QCOMPARE(CodeUnitSet::findLineBreak(probe, 0, true), qsizetype(at));
            QCOMPARE(CodeUnitSet::findLineBreak(probe, 0, false), qsizetype(-1));
            // Neighbours of the ranges are no breaks.
            for (char16_t unit : {u'\u0009', u'\u000e', u'\u2027', u'\u202a', u'\u0084', u'\u0086'}) {
                probe[at] = QChar(unit);
                QCOMPARE(CodeUnitSet::findLineBreak(probe, 0, true), qsizetype(-1));
            }
        }
    }
};

int runClassifyTests(int argc, char** argv)
{
    ClassifyTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ClassifyTest.moc"
