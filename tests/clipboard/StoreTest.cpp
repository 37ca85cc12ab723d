#include "ClipboardTests.h"
#include "TestSupport.h"

#include "clipboard/ClipSearch.h"
#include "clipboard/ClipStore.h"
#include "clipboard/VisibleClips.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

// Texts of every storage shape: empty, one byte per character (odd and even lengths, so UTF-16
// texts after them must be realigned), UTF-16 with surrogate pairs, and longer than a block.
QStringList mixedTexts(QRandomGenerator& random, int count)
{
    const QStringList pieces{"a", "Z", " ", "ä", "ÿ", "µ", "€", "ſ", "\U0001F600", "中", "\n", "x"};
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        QString text = QString::number(i) + QLatin1Char(':');
        const int length = random.bounded(i % 50 == 0 ? 3000 : 40);
        for (int k = 0; k < length; ++k)
            text += pieces.at(random.bounded(i % 3 == 0 ? 7 : int(pieces.size())));
        texts.append(text);
    }
    texts.append(QString());
    texts.append(QString(99'999, u'q'));      // more than a block of one-byte characters
    texts.append(QString(49'999, u'\u20ac')); // more than a block of UTF-16
    return texts;
}

QStringList rowTexts(const ClipStore& store, const VisibleRows& visible)
{
    QStringList texts;
    for (qint32 row : visible.rows)
        texts.append(row >= 0 ? store.textOf(quint32(row)) : visible.placeholders.at(-1 - row).text);
    return texts;
}

} // namespace

// The packed history in memory: texts come back exactly, slots stay put, snapshots stay still,
// and the fast rows give what the plain rule gives.
class StoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void everyTextComesBackExactlyFromAnyBlock()
    {
        QRandomGenerator random(11);
        const QStringList texts = mixedTexts(random, 4000);
        ClipTextArena arena;
        QList<TextLocation> at;
        for (const QString& text : texts)
            at.append(arena.add(text));
        QVERIFY(arena.blockCount() > 8); // more blocks than the cache keeps unpacked
        for (const TextLocation& location : at) {
            if (!location.latin1)
                QCOMPARE(location.offset % 2, 0u);
        }
        // Read in an order that keeps evicting cached blocks.
        for (int pass = 0; pass < 2; ++pass) {
            for (qsizetype i = pass; i < texts.size(); i += 2)
                QCOMPARE(arena.text(at.at(i)), texts.at(i));
        }
        QCOMPARE(arena.unpackedBytes() >= (99'999 + 49'999 * 2), true);
        QVERIFY(arena.packedBytes() < arena.unpackedBytes());
    }

    void aSnapshotKeepsWhatItSawWhileTheStoreChanges()
    {
        ClipStore store;
        QStringList texts;
        for (int i = 0; i < 3000; ++i) {
            texts.append(QStringLiteral("Eintrag %1 ").arg(i) + QString(60, QChar(u'a' + i % 26)));
            store.append(Clip{QUuid::createUuid(), texts.last(), now.addSecs(-i)});
        }
        const ClipStore::Snapshot before = store.snapshot();
        // Deleting most of the history repacks its blocks and reuses slots for new texts.
        for (int i = 0; i < 2500; ++i)
            store.removeAt(store.size() - 1);
        for (int i = 0; i < 200; ++i)
            store.prepend(Clip{QUuid::createUuid(), QStringLiteral("neu %1").arg(i), now});

        QCOMPARE(before.order.size(), 3000);
        QByteArray buffer;
        for (qsizetype i = 0; i < before.order.size(); ++i) {
            const ClipStore::Entry& entry = before.entries.at(before.order.at(i));
            const QByteArrayView block = before.texts.unpack(entry.text.block, buffer);
            QCOMPARE(ClipTextArena::decode(block, entry.text), texts.at(i));
        }
        // The live store reads its own, repacked texts.
        QCOMPARE(store.size(), 700);
        QCOMPARE(store.at(0).text, QStringLiteral("neu 199"));
        for (qsizetype i = 200; i < store.size(); ++i)
            QCOMPARE(store.at(i).text, texts.at(i - 200));
    }

    void slotsOrderAndLookupFollowEveryChange()
    {
        ClipStore store;
        const quint32 alt = store.append(Clip{QUuid::createUuid(), QStringLiteral("alt"), now.addSecs(-2)});
        const quint32 mitte =
            store.append(Clip{QUuid::createUuid(), QStringLiteral("mitte"), now.addSecs(-1)});
        const Clip newest{QUuid::createUuid(), QStringLiteral("neu"), now};
        const quint32 neu = store.prepend(newest);
        QCOMPARE(store.toList().first(), newest);
        QCOMPARE(texts(store.toList()), QStringList({"neu", "alt", "mitte"}));

        // Exact text only: no trimming, case matters.
        QCOMPARE(store.slotOf(u"mitte"), std::optional<quint32>(mitte));
        QCOMPARE(store.slotOf(u"Mitte"), std::nullopt);
        QCOMPARE(store.slotOf(u"mitte "), std::nullopt);

        store.moveToTop(2, now.addSecs(5));
        QCOMPARE(texts(store.toList()), QStringList({"mitte", "neu", "alt"}));
        QCOMPARE(store.at(0).date, now.addSecs(5));
        QCOMPARE(store.indexOf(alt), std::optional<qsizetype>(2));

        // A removed entry's slot is reused; the others keep theirs.
        QCOMPARE(store.removeAt(1), neu);
        QCOMPARE(store.slotOf(u"neu"), std::nullopt);
        QCOMPARE(store.indexOf(neu), std::nullopt);
        const quint32 again = store.prepend(Clip{QUuid::createUuid(), QStringLiteral("wieder"), now});
        QCOMPARE(again, neu);
        QCOMPARE(store.slotOf(u"alt"), std::optional<quint32>(alt));
        QCOMPARE(texts(store.toList()), QStringList({"wieder", "mitte", "alt"}));
        store.clear();
        QVERIFY(store.isEmpty());
        QCOMPARE(store.slotOf(u"alt"), std::nullopt);
    }

    // The fast rows (cached kinds, block-wise search, two threads for a long history) against the
    // plain rule, over a history that has seen inserts, moves and deletions.
    void fastRowsGiveWhatThePlainRuleGives_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("length");
        QTest::newRow("short history, one thread") << 600 << 30;
        QTest::newRow("long history, two threads") << 5000 << 2400;
    }

    void fastRowsGiveWhatThePlainRuleGives()
    {
        QFETCH(int, count);
        QFETCH(int, length);
        QRandomGenerator random{quint32(count)};
        const QStringList heads{"https://example.com/", "let x = ", "Rechnung ",   "#abcdef", "/tmp/Datei ",
                                "mail@example.de",      "Straße ",  "\u0160koda ", "42"};
        ClipStore store;
        QList<Clip> reference;
        for (int i = 0; i < count; ++i) {
            const int fill = (i % 5 == 0) ? 0 : random.bounded(length);
            const QString text = heads.at(random.bounded(int(heads.size()))) +
                                 QString(fill, QChar(u'a' + random.bounded(26))) + QString::number(i);
            const Clip clip{QUuid::createUuid(), text, now.addSecs(i)};
            store.prepend(clip);
            reference.prepend(clip);
            if (i % 7 == 3) {
                const qsizetype gone = random.bounded(int(reference.size()));
                store.removeAt(gone);
                reference.removeAt(gone);
            } else if (i % 11 == 5) {
                const qsizetype moved = random.bounded(int(reference.size()));
                store.moveToTop(moved, now.addSecs(i));
                reference.move(moved, 0);
                reference.first().date = now.addSecs(i);
            }
        }
        QCOMPARE(texts(store.toList()), texts(reference));

        const QStringList pins{reference.at(3).text, QStringLiteral("Straße weg"), reference.last().text};
        QList<PinnedText> pinned;
        for (const QString& pin : pins)
            pinned.append(PinnedText{pin, store.slotOf(pin)});
        const ClipStore::Snapshot snapshot = store.snapshot();
        for (ClipKind filter : ClipKinds::allCases()) {
            for (const QString& search :
                 {QString(), QStringLiteral("RECHNUNG"), QStringLiteral("STRASSE"), QStringLiteral("škoda"),
                  QStringLiteral("7"), QStringLiteral("zzzz")}) {
                const VisibleRows fast = visibleRows(snapshot, pinned, search, filter, now);
                const QList<Clip> plain = visibleClips(reference, pins, search, filter, now);
                QCOMPARE(rowTexts(store, fast), texts(plain));
                qsizetype plainPinned = 0;
                while (plainPinned < plain.size() && pins.contains(plain.at(plainPinned).text))
                    ++plainPinned;
                QCOMPARE(fast.pinnedCount, plainPinned);
            }
        }
    }

    // Texts held one byte per character are searched without widening them; the answer must be
    // the library's, including characters whose case forms lie outside that range.
    void oneByteTextsAreSearchedLikeTheLibrary()
    {
        const QStringList hayPieces{"a", "A", "k", "K", "s", "S", "ß", "ÿ",
                                    "µ", "å", "Å", "i", "I", " ", "e"};
        const QStringList needlePieces{"a",      "K",      "\u212a", "s",      "\u017f", "ß",      "\u1e9e",
                                       "\u0178", "ÿ",      "µ",      "\u03bc", "\u039c", "\u212b", "å",
                                       "I",      "\u0130", "\u0131", "ss",     "e",      "\u00e9"};
        QRandomGenerator random(5);
        const QLocale german(QLocale::German, QLocale::Germany);
        for (int round = 0; round < 3000; ++round) {
            QString needle;
            for (int k = 1 + random.bounded(3); k > 0; --k)
                needle += needlePieces.at(random.bounded(int(needlePieces.size())));
            const ClipSearch search(needle, german);
            for (int k = 0; k < 8; ++k) {
                QString hay;
                for (int n = random.bounded(40); n > 0; --n)
                    hay += hayPieces.at(random.bounded(int(hayPieces.size())));
                const QByteArray latin1 = hay.toLatin1();
                QVERIFY2(search.matches(QLatin1StringView(latin1)) ==
                             QStringView(hay).contains(needle, Qt::CaseInsensitive),
                         qPrintable(needle + QStringLiteral(" in ") + hay));
            }
        }
        // Long enough for the vector scan, with the only hit at the very end.
        const QByteArray longText = QByteArray(5000, 'x') + "Stra\xdf"
                                                            "e"; // Latin-1
        QVERIFY(ClipSearch(QStringLiteral("STRASSE"), german).matches(QLatin1StringView(longText)) ==
                QString::fromLatin1(longText).contains(QStringLiteral("STRASSE"), Qt::CaseInsensitive));
        QVERIFY(ClipSearch(QStringLiteral("straße"), german).matches(QLatin1StringView(longText)));
    }
};

int runStoreTests(int argc, char** argv)
{
    StoreTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "StoreTest.moc"
