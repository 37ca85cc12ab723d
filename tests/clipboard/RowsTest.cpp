#include "ClipboardTests.h"
#include "TestSupport.h"

#include "clipboard/ClipSearch.h"
#include "clipboard/HistoryListModel.h"
#include "clipboard/VisibleClips.h"
#include "productivity/Productivity.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

namespace {

const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

QList<Clip> history(const QStringList& texts)
{
    QList<Clip> clips;
    for (qsizetype i = 0; i < texts.size(); ++i)
        clips.append(Clip{QUuid::createUuid(), texts.at(i), now.addSecs(-i)});
    return clips;
}

} // namespace

// The visible rows: favourites first, search and filter; and the list model that feeds the page.
class RowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void favouritesComeFirstInTheirOrder()
    {
        const QList<Clip> clips = history({"neu", "Favorit zwei", "mitte", "Favorit eins", "alt"});
        const QStringList pins{"Favorit eins", "Nur noch Favorit", "Favorit zwei"};
        const QList<Clip> rows = visibleClips(clips, pins, {}, ClipKind::all, now);
        QCOMPARE(rows.size(), 6);
        QCOMPARE(rows.at(0), clips.at(3));
        // A favourite that left the history is a placeholder made now, with an id of its own.
        QCOMPARE(rows.at(1).text, QStringLiteral("Nur noch Favorit"));
        QCOMPARE(rows.at(1).date, now);
        QVERIFY(!rows.at(1).id.isNull());
        QCOMPARE(rows.at(2), clips.at(1));
        QCOMPARE(texts(rows).mid(3), QStringList({"neu", "mitte", "alt"}));

        // The store's rows agree, and say which rows are favourites.
        ClipStore store;
        for (const Clip& clip : clips)
            store.append(clip);
        QList<PinnedText> pinned;
        for (const QString& pin : pins)
            pinned.append(PinnedText{pin, store.slotOf(pin)});
        const VisibleRows visible = visibleRows(store.snapshot(), pinned, {}, ClipKind::all, now);
        QCOMPARE(visible.pinnedCount, 3);
        QCOMPARE(visible.rows.size(), 6);
        QCOMPARE(visible.placeholders.size(), 1);
        QCOMPARE(visible.rows.at(1), -1);
        QCOMPARE(store.clipOf(quint32(visible.rows.at(0))), clips.at(3));
    }

    void searchAndFilterBothHold()
    {
        const QList<Clip> clips =
            history({"Rechnung 2026", "42%", "rechnungen@example.de", "#FFAA00", "Notiz"});
        QCOMPARE(texts(visibleClips(clips, {}, "RECHNUNG", ClipKind::all, now)),
                 QStringList({"Rechnung 2026", "rechnungen@example.de"}));
        QCOMPARE(texts(visibleClips(clips, {}, "rechnung", ClipKind::emails, now)),
                 QStringList{"rechnungen@example.de"});
        QCOMPARE(texts(visibleClips(clips, {}, {}, ClipKind::numbers, now)), QStringList{"42%"});
        QCOMPARE(texts(visibleClips(clips, {"Notiz"}, {}, ClipKind::pinned, now)), QStringList{"Notiz"});
        QVERIFY(visibleClips(clips, {}, {}, ClipKind::pinned, now).isEmpty());
        // The search text is not trimmed.
        QVERIFY(visibleClips(clips, {}, " Notiz", ClipKind::all, now).isEmpty());
        // A favourite's placeholder is filtered like any row.
        QCOMPARE(texts(visibleClips(clips, {"#00FF00"}, {}, ClipKind::colors, now)),
                 QStringList({"#00FF00", "#FFAA00"}));
    }

    void aLongHistoryGivesTheRowsOfTheRulesInOrder()
    {
        // Long enough (over two million characters) to be split between two threads.
        QList<Clip> clips;
        const QStringList kinds{"https://example.com/a", "let x = 1", "Rechnung ", "#abcdef", "/tmp/datei"};
        for (int i = 0; i < 3000; ++i) {
            const QString head = kinds.at(i % kinds.size());
            const QString text =
                (i % 7 == 0) ? head + QString::number(i) : head + QString(900, u'x') + QString::number(i);
            clips.append(Clip{QUuid::createUuid(), text, now.addSecs(-i)});
        }
        const QStringList pins{clips.at(5).text, clips.at(2999).text};
        for (ClipKind filter : ClipKinds::allCases()) {
            for (const QString& search : {QString(), QStringLiteral("RECHNUNG"), QStringLiteral("99")}) {
                QStringList expected = pins;
                expected.removeIf([&](const QString& t) {
                    return !(search.isEmpty() || t.contains(search, Qt::CaseInsensitive)) ||
                           !ClipKinds::matches(filter, t, true);
                });
                if (filter != ClipKind::pinned) {
                    for (const Clip& clip : clips) {
                        if (!pins.contains(clip.text) &&
                            (search.isEmpty() || clip.text.contains(search, Qt::CaseInsensitive)) &&
                            ClipKinds::matches(filter, clip.text, false))
                            expected.append(clip.text);
                    }
                }
                QCOMPARE(texts(visibleClips(clips, pins, search, filter, now)), expected);
            }
        }
    }

    void searchIgnoresCaseLikeTheLibrary()
    {
        // The anchored search must give exactly QStringView::contains(…, Qt::CaseInsensitive).
        const QStringList pieces{"a",      "A",      "k",      "K",          "\u212a",     "s",
                                 "S",      "\u017f", "\u00df", "\u1e9e",     "\u03c3",     "\u03c2",
                                 "\u03a3", "\u0130", "i",      "I",          "\u0131",     "e",
                                 " ",      "\u00e4", "\u00c4", "\U00010400", "\U00010428", "x"};
        QRandomGenerator random(7);
        auto make = [&](int maxPieces) {
            QString text;
            const int n = 1 + random.bounded(maxPieces);
            for (int k = 0; k < n; ++k)
                text += pieces.at(random.bounded(int(pieces.size())));
            return text;
        };
        const QLocale german(QLocale::German, QLocale::Germany);
        for (int round = 0; round < 3000; ++round) {
            const QString needle = make(3);
            const ClipSearch search(needle, german);
            for (int k = 0; k < 10; ++k) {
                const QString hay = make(14);
                QVERIFY2(search.matches(hay) == QStringView(hay).contains(needle, Qt::CaseInsensitive),
                         qPrintable(needle + QStringLiteral(" in ") + hay));
            }
        }
        QVERIFY(ClipSearch(QString(), german).matches(u"alles"));
    }

    void turkishSearchKnowsItsDottedI()
    {
        const QLocale turkish(QLocale::Turkish, QLocale::Turkey);
        QVERIFY(ClipSearch(QStringLiteral("İSTANBUL"), turkish).matches(u"istanbul"));
        QVERIFY(ClipSearch(QStringLiteral("IRMAK"), turkish).matches(u"ırmak"));
        QVERIFY(!ClipSearch(QStringLiteral("IRMAK"), turkish).matches(u"irmak"));
    }

    void theListModelFollowsHistoryPinsAndChoices()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        HistoryListModel rows(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                              fixture.memory.scheduler);
        QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
        auto copy = [&](const QString& text) {
            fixture.memory.clock.advance(60);
            fixture.memory.pasteboard.copyFromOutside(text);
            model.pollClipboard();
        };
        copy("https://example.com");
        copy("42");
        copy("Notiz");
        QCOMPARE(rows.rowCount(), 3);
        QCOMPARE(rows.data(rows.index(0), HistoryListModel::TextRole).toString(), QStringLiteral("Notiz"));
        QCOMPARE(rows.data(rows.index(0), HistoryListModel::CaptionRole).toString(),
                 QStringLiteral("Text · ") +
                     fixture.memory.clock.now().toLocalTime().toString(QStringLiteral("HH:mm")));
        QCOMPARE(rows.data(rows.index(2), HistoryListModel::KindRole).toString(), QStringLiteral("Links"));

        model.productivity().togglePin("42");
        QCOMPARE(rows.data(rows.index(0), HistoryListModel::TextRole).toString(), QStringLiteral("42"));
        QVERIFY(rows.data(rows.index(0), HistoryListModel::PinnedRole).toBool());

        QSignalSpy searchSpy(&rows, &HistoryListModel::searchChanged);
        rows.setSearch("NOTIZ");
        QCOMPARE(searchSpy.size(), 1);
        QCOMPARE(rows.rowCount(), 1);
        rows.setSearch({});
        rows.setFilter(ClipKind::links);
        QCOMPARE(rows.rowCount(), 1);
        rows.setFilter(ClipKind::all);

        // Row actions reach the model.
        bool closed = false;
        QObject::connect(&model, &Model::close, &model, [&closed] { closed = true; });
        rows.copyBack(2);
        QVERIFY(closed);
        QCOMPARE(fixture.memory.pasteboard.string(),
                 std::optional<QString>(QStringLiteral("https://example.com")));
        rows.togglePin(0);
        QVERIFY(model.productivity().pins().isEmpty());
        rows.remove(0);
        QCOMPARE(texts(model.clips()), QStringList({"42", "https://example.com"}));
        rows.remove(99);
        QCOMPARE(rows.rowCount(), 2);

        // A long copy shows one line of limited length.
        copy(QStringLiteral("erste Zeile\nzweite Zeile ") + QString(1000, u'x'));
        const QString preview = rows.data(rows.index(0), Qt::DisplayRole).toString();
        QCOMPARE(preview.size(), HistoryListModel::previewLength);
        QVERIFY(preview.startsWith(QStringLiteral("erste Zeile zweite")));
    }

    // Captures change single rows; whatever happened, the rows equal a fresh computation.
    void capturesInsertMoveAndRemoveRows()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        HistoryListModel rows(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                              fixture.memory.scheduler);
        QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
        auto copy = [&](const QString& text) {
            fixture.memory.clock.advance(60);
            fixture.memory.pasteboard.copyFromOutside(text);
            model.pollClipboard();
        };
        auto shown = [&] {
            QStringList texts;
            for (int row = 0; row < rows.rowCount(); ++row)
                texts.append(rows.data(rows.index(row), HistoryListModel::TextRole).toString());
            return texts;
        };
        auto fresh = [&] {
            return texts(visibleClips(model.clips(), model.productivity().pins(), rows.search(),
                                      rows.filter(), fixture.memory.clock.now()));
        };
        for (const char* text : {"alpha", "beta", "gamma", "17"})
            copy(QString::fromLatin1(text));
        model.productivity().togglePin(QStringLiteral("gamma"));

        QSignalSpy resets(&rows, &QAbstractItemModel::modelReset);
        QSignalSpy inserts(&rows, &QAbstractItemModel::rowsInserted);
        QSignalSpy moves(&rows, &QAbstractItemModel::rowsMoved);
        QSignalSpy removals(&rows, &QAbstractItemModel::rowsRemoved);
        QSignalSpy changes(&rows, &QAbstractItemModel::dataChanged);

        copy(QStringLiteral("delta"));
        QCOMPARE(inserts.size(), 1);
        QCOMPARE(inserts.first().at(1).toInt(), 1); // below the favourite
        copy(QStringLiteral("alpha"));
        QCOMPARE(moves.size(), 1);
        QCOMPARE(shown(), QStringList({"gamma", "alpha", "delta", "17", "beta"}));
        // Copying the favourite again changes its date, not its place.
        copy(QStringLiteral("gamma"));
        QCOMPARE(shown().first(), QStringLiteral("gamma"));
        QVERIFY(!changes.isEmpty());
        model.deleteClip(model.clips().at(2));
        QCOMPARE(removals.size(), 1);
        QCOMPARE(resets.size(), 0);
        QCOMPARE(shown(), fresh());

        // Under a filter a capture joins only when it belongs.
        rows.setFilter(ClipKind::numbers);
        copy(QStringLiteral("Wort"));
        copy(QStringLiteral("-3,5"));
        copy(QStringLiteral("17"));
        QCOMPARE(shown(), QStringList({"17", "-3,5"}));
        QCOMPARE(shown(), fresh());
        rows.setSearch(QStringLiteral("ALP"));
        rows.setFilter(ClipKind::all);
        copy(QStringLiteral("alpine"));
        QCOMPARE(shown(), QStringList({"alpine", "alpha"}));
        QCOMPARE(shown(), fresh());
    }

    // A long history is rebuilt on the worker after a pause in typing; only the newest answer
    // counts, and a capture during a rebuild is not lost.
    void longHistoriesAreRebuiltOffTheMainThread()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        auto copy = [&](const QString& text) {
            fixture.memory.clock.advance(60);
            fixture.memory.pasteboard.copyFromOutside(text);
            model.pollClipboard();
        };
        for (int i = 0; i < 40; ++i)
            copy(QStringLiteral("Eintrag %1").arg(i));
        copy(QStringLiteral("https://example.org"));
        HistoryListModel rows(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                              fixture.memory.scheduler);
        QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
        rows.setBackgroundThreshold(0);
        QSignalSpy settled(&rows, &HistoryListModel::settled);

        rows.setSearch(QStringLiteral("Eintrag 3"));
        rows.setSearch(QStringLiteral("Eintrag 1"));
        fixture.memory.scheduler.advance(HistoryListModel::searchPause / 2);
        QCoreApplication::processEvents();
        // Typing has not paused long enough: the old rows stay, nothing was searched.
        QVERIFY(!rows.isSettled());
        QCOMPARE(rows.rowCount(), 41);
        QVERIFY(settled.isEmpty());
        fixture.memory.scheduler.advance(HistoryListModel::searchPause);
        QTRY_VERIFY(rows.isSettled());
        QCOMPARE(settled.size(), 1);
        QCOMPARE(rows.rowCount(), 11); // "Eintrag 1" and "Eintrag 10" to "Eintrag 19"

        // Two choices in a row: the first answer is overtaken and dropped.
        rows.setFilter(ClipKind::links);
        rows.setFilter(ClipKind::text);
        QTRY_VERIFY(rows.isSettled());
        QTest::qWait(50);
        QCOMPARE(settled.size(), 2);
        QCOMPARE(rows.rowCount(), 11);

        // A copy that arrives while the rows are being worked out is in them.
        rows.setSearch(QStringLiteral("Eintrag"));
        fixture.memory.scheduler.advance(HistoryListModel::searchPause);
        copy(QStringLiteral("Eintrag neu"));
        QTRY_VERIFY(rows.isSettled());
        QCOMPARE(rows.rowCount(), 41);
        QCOMPARE(rows.data(rows.index(0), HistoryListModel::TextRole).toString(),
                 QStringLiteral("Eintrag neu"));
    }
};

int runRowsTests(int argc, char** argv)
{
    RowsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RowsTest.moc"
