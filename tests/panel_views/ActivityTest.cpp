#include "PanelViewsTests.h"
#include "ViewRig.h"

#include "focus/NoticeListModel.h"
#include "focus/widgets/ActivityPage.h"
#include "shell/widgets/FullLayout.h"

#include <QAbstractItemModelTester>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

// The activity list as rows: follows the model's notices, newest first.
class ActivityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void rowsFollowTheNotices()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        NoticeListModel rows(model.activity());
        QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(rows.rowCount(), 1);
        QCOMPARE(rows.index(0).data(NoticeListModel::TitleRole).toString(),
                 QStringLiteral("Willkommen bei Brenlow"));

        QSignalSpy inserted(&rows, &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(&rows, &QAbstractItemModel::modelReset);
        fixture.memory.clock.advance(90);
        model.addNotice(QStringLiteral("Fokus geschafft"), QStringLiteral("Zeit für eine Pause."));
        // A new notice is one inserted row at the top, not a rebuilt list.
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted.first().at(1).toInt(), 0);
        QCOMPARE(reset.size(), 0);
        QCOMPARE(rows.rowCount(), 2);
        QCOMPARE(rows.index(0).data(NoticeListModel::TitleRole).toString(),
                 QStringLiteral("Fokus geschafft"));
        QCOMPARE(rows.index(0).data(NoticeListModel::DetailRole).toString(),
                 QStringLiteral("Zeit für eine Pause."));
        QCOMPARE(rows.index(1).data(NoticeListModel::TitleRole).toString(),
                 QStringLiteral("Willkommen bei Brenlow"));
        QCOMPARE(rows.index(0).data(NoticeListModel::DateRole).toDateTime(), fixture.memory.clock.now());
    }

    void timeOfDayUsesTheShortLocaleStyle()
    {
        const QLocale previous;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const QDateTime date = QDateTime(QDate(2026, 3, 7), QTime(14, 5, 33));
        QCOMPARE(NoticeListModel::timeText(date.toUTC()), QStringLiteral("14:05"));
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        const QString english = NoticeListModel::timeText(date.toUTC());
        QVERIFY2(english.startsWith(QStringLiteral("2:05")) && english.endsWith(QStringLiteral("PM")),
                 qPrintable(english));
        QLocale::setDefault(previous);
    }

    void pageShowsTheSentenceAndTheRows()
    {
        ViewRig rig;
        rig.model().setPage(Page::events);
        RootView& root = rig.open({620, 466});
        auto* page = qobject_cast<ActivityPage*>(root.fullLayout()->currentPage());
        QVERIFY(page);
        QVERIFY(labelTexts(page).contains(NoticeListModel::introduction()));
        QCOMPARE(page->list()->model()->rowCount(), 1);
        for (int i = 0; i < 70; ++i)
            rig.model().addNotice(QStringLiteral("Ereignis %1").arg(i), QString());
        QCOMPARE(page->list()->model()->rowCount(), 71);
        QCOMPARE(page->list()->model()->index(0, 0).data().toString(), QStringLiteral("Ereignis 69"));
    }
};

int runActivityTests(int argc, char** argv)
{
    ActivityTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ActivityTest.moc"
