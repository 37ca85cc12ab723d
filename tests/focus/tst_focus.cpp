#include "TestSupport.h"

#include "settings/Preferences.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// The deadline-based focus timer and the activity list, driven by the manual clock.
class FocusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void durationIsClampedToWholeMinutes_data()
    {
        QTest::addColumn<qint64>("minutes");
        QTest::addColumn<qint64>("duration");
        QTest::newRow("15") << qint64(15) << qint64(900);
        QTest::newRow("0") << qint64(0) << qint64(60);
        QTest::newRow("-3") << qint64(-3) << qint64(60);
        QTest::newRow("500") << qint64(500) << qint64(7200);
    }

    void durationIsClampedToWholeMinutes()
    {
        QFETCH(qint64, minutes);
        QFETCH(qint64, duration);
        ModelFixture fixture;
        Model& model = *fixture.model;
        model.toggleTimer();
        model.setDuration(minutes);
        QCOMPARE(model.duration(), duration);
        QCOMPARE(model.seconds(), duration);
        QVERIFY(!model.timerRunning());
        QVERIFY(!model.deadline());
    }

    void timeTextKeepsLongMinutes()
    {
        ModelFixture fixture;
        fixture.model->setDuration(120);
        QCOMPARE(fixture.model->timeText(), QStringLiteral("120:00"));
        fixture.model->setDuration(5);
        fixture.model->toggleTimer();
        fixture.memory.clock.advance(61.5);
        fixture.model->tick();
        // 238.5 s left round up to 239.
        QCOMPARE(fixture.model->timeText(), QStringLiteral("03:59"));
    }

    void pauseKeepsTheRoundedUpRest()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        model.setDuration(15);
        model.toggleTimer();
        fixture.memory.clock.advance(10.2);
        model.toggleTimer();
        QCOMPARE(model.seconds(), 890);
        QVERIFY(!model.timerRunning());
        QVERIFY(!model.deadline());
        // Resuming counts on from the rest, not from the full length.
        model.toggleTimer();
        fixture.memory.clock.advance(30);
        model.tick();
        QCOMPARE(model.seconds(), 860);
    }

    void expiryNotifiesPlaysAndOpensTheOverview()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        std::optional<Page> shown;
        QObject::connect(&model, &Model::show, &model, [&shown](std::optional<Page> page) { shown = page; });
        model.setDuration(1);
        model.toggleTimer();
        fixture.memory.clock.advance(61);
        model.tick();
        QCOMPARE(model.seconds(), 0);
        QVERIFY(!model.timerRunning());
        QVERIFY(!model.deadline());
        QCOMPARE(model.notices().first().title, QStringLiteral("Fokus geschafft"));
        QCOMPARE(model.notices().first().detail, QStringLiteral("Zeit für eine Pause."));
        QCOMPARE(fixture.memory.sound.played, QStringList{QStringLiteral("Glass")});
        QCOMPARE(shown, std::optional<Page>(Page::home));
        // One end, one notice: further ticks do nothing.
        model.tick();
        QCOMPARE(model.notices().size(), 2);

        model.setDuration(25);
        model.toggleTimer();
        QCOMPARE(model.seconds(), 1500);
        QVERIFY(model.timerRunning());
    }

    void silentExpiryWhenTheSoundIsOff()
    {
        ModelFixture fixture;
        fixture.model->preferences().update([](PreferenceValues& v) { v.focusSound = false; });
        fixture.model->setDuration(1);
        fixture.model->toggleTimer();
        fixture.memory.clock.advance(60);
        fixture.model->tick();
        QVERIFY(!fixture.model->timerRunning());
        QVERIFY(fixture.memory.sound.played.isEmpty());
    }

    void aRunningPeriodSurvivesARestart()
    {
        ModelFixture fixture;
        fixture.model->setDuration(10);
        fixture.model->toggleTimer();
        fixture.memory.clock.advance(100);
        Model& restarted = fixture.restart();
        QVERIFY(restarted.timerRunning());
        QCOMPARE(restarted.seconds(), 500);
        QCOMPARE(restarted.duration(), 600);
    }

    void aPeriodThatEndedWhileClosedComesBackStopped()
    {
        ModelFixture fixture;
        fixture.model->setDuration(1);
        fixture.model->toggleTimer();
        fixture.memory.clock.advance(3600);
        const int notices = int(fixture.model->notices().size());
        Model& restarted = fixture.restart();
        QVERIFY(!restarted.timerRunning());
        QVERIFY(!restarted.deadline());
        QCOMPARE(restarted.timeText(), QStringLiteral("00:00"));
        QCOMPARE(restarted.notices().size(), notices);
        QVERIFY(fixture.memory.sound.played.isEmpty());
        restarted.toggleTimer();
        QCOMPARE(restarted.seconds(), 60);
    }

    void savedValuesAreFloored()
    {
        ModelFixture fixture;
        Defaults& defaults = *fixture.domain.defaults;
        defaults.setInteger(QStringLiteral("focus.savedDuration"), 10);
        defaults.setInteger(QStringLiteral("focus.savedSeconds"), -5);
        // A deadline key holding another type counts as no deadline.
        defaults.setString(QStringLiteral("focus.savedDeadline"), QStringLiteral("morgen"));
        Model& restarted = fixture.restart();
        QCOMPARE(restarted.duration(), 60);
        QCOMPARE(restarted.seconds(), 0);
        QVERIFY(!restarted.timerRunning());
    }

    void aSelfRestartResumesItsPeriod()
    {
        ModelFixture fixture;
        Defaults& defaults = *fixture.domain.defaults;
        defaults.setDate(QStringLiteral("focus.resumeDeadline"), fixture.memory.clock.now().addSecs(90));
        defaults.setInteger(QStringLiteral("focus.resumeDuration"), 1200);
        Model& restarted = fixture.restart();
        QVERIFY(restarted.timerRunning());
        QCOMPARE(restarted.seconds(), 90);
        QCOMPARE(restarted.duration(), 1200);
        // Later starts find the hand-off in the past and ignore it.
        restarted.setDuration(25);
        fixture.memory.clock.advance(120);
        QVERIFY(!fixture.restart().timerRunning());
    }

    void noticesAreNewestFirstAndKeptWhole()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        model.addNotice(QStringLiteral("A"), QString());
        model.addNotice(QStringLiteral("B"), QStringLiteral("Mehr"));
        QCOMPARE(model.notices().at(0).title, QStringLiteral("B"));
        QCOMPARE(model.notices().at(1).title, QStringLiteral("A"));
        for (int i = 0; i < 70; ++i) {
            fixture.memory.clock.advance(1.25);
            model.addNotice(QStringLiteral("Event %1").arg(i), QStringLiteral("Detail %1").arg(i));
        }
        const QList<Notice> before = model.notices();
        QCOMPARE(before.size(), 73);
        QCOMPARE(before.first().title, QStringLiteral("Event 69"));
        QCOMPARE(fixture.restart().notices(), before);
    }

    void unreadableNoticesGiveWayToTheWelcome_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("unreadable");
        QTest::newRow("not json") << QByteArray("[{") << true;
        QTest::newRow("missing key")
            << QByteArray(R"([{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","title":"x","date":1}])") << true;
        QTest::newRow("wrong type")
            << QByteArray(
                   R"([{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","title":"x","detail":"","date":"heute"}])")
            << true;
        QTest::newRow("empty list") << QByteArray("[]") << false;
    }

    // The list starts over with the welcome; an unreadable one is kept aside, which the newest
    // notice says.
    void unreadableNoticesGiveWayToTheWelcome()
    {
        QFETCH(QByteArray, stored);
        QFETCH(bool, unreadable);
        ModelFixture fixture;
        fixture.domain.defaults->setData(QStringLiteral("notices.v1"), stored);
        Model& restarted = fixture.restart();
        QCOMPARE(restarted.notices().size(), unreadable ? 2 : 1);
        QCOMPARE(restarted.notices().last().title, QStringLiteral("Willkommen bei Brenlow"));
        QCOMPARE(restarted.notices().last().detail,
                 QStringLiteral("Dein Platz für Fokus, Dateien und schnelle Aktionen."));
        if (unreadable)
            QCOMPARE(restarted.notices().first().title, QStringLiteral("Gespeicherte Daten nicht lesbar"));
    }

    void storedNoticesUseTheRecordEncoding()
    {
        ModelFixture fixture;
        const QByteArray stored = *fixture.domain.defaults->dataValue(QStringLiteral("notices.v1"));
        const QJsonObject first = QJsonDocument::fromJson(stored).array().first().toObject();
        QCOMPARE(first.keys(), QStringList({"date", "detail", "id", "title"}));
        QVERIFY(first.value(u"date").isDouble());
        QCOMPARE(first.value(u"id").toString(), first.value(u"id").toString().toUpper());
    }
};

QTEST_GUILESS_MAIN(FocusTest)
#include "tst_focus.moc"
