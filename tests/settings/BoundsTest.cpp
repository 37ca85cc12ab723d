#include "SettingsTests.h"
#include "TestSupport.h"

#include "settings/Preferences.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <limits>

// Numbers nobody chose (1e308 s of hover delay, -5 focus minutes, 9.2e18 saved seconds) count as
// the wrong type and fall back by the rules of their owner.
class BoundsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void preferencesBeyondTheirBoundsAreUnreadable_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<double>("value");
        QTest::addColumn<bool>("readable");
        QTest::newRow("open delay 1e308") << u"openDelay"_qs << 1e308 << false;
        QTest::newRow("open delay 60 s") << u"openDelay"_qs << 60.0 << true;
        QTest::newRow("close delay below 0") << u"closeDelay"_qs << -0.5 << false;
        QTest::newRow("command delay 61 s") << u"commandDelay"_qs << 61.0 << false;
        QTest::newRow("focus -5 min") << u"focusMinutes"_qs << -5.0 << false;
        QTest::newRow("focus 0 min") << u"focusMinutes"_qs << 0.0 << false;
        QTest::newRow("focus 1 min") << u"focusMinutes"_qs << 1.0 << true;
        QTest::newRow("focus 120 min") << u"focusMinutes"_qs << 120.0 << true;
        QTest::newRow("focus 121 min") << u"focusMinutes"_qs << 121.0 << false;
        QTest::newRow("history limit -1") << u"historyLimit"_qs << -1.0 << false;
        QTest::newRow("history limit 1e10") << u"historyLimit"_qs << 1e10 << false;
    }

    void preferencesBeyondTheirBoundsAreUnreadable()
    {
        QFETCH(QString, field);
        QFETCH(double, value);
        QFETCH(bool, readable);
        PreferenceValues chosen;
        chosen.layout = PanelLayout::wide;
        QJsonObject object = QJsonDocument::fromJson(chosen.encode()).object();
        object[field] = value;
        const QByteArray document = QJsonDocument(object).toJson(QJsonDocument::Compact);
        ScratchDomain domain;
        domain.defaults->setData(QString::fromLatin1(Preferences::storageKey), document);
        const Preferences preferences(*domain.defaults);
        QCOMPARE(preferences.values().layout, readable ? PanelLayout::wide : PanelLayout::balanced);
        if (!readable)
            QCOMPARE(preferences.values(), PreferenceValues{});
        QCOMPARE(domain.defaults->takeDamage().size(), readable ? 0 : 1);
    }

    void assignedPreferencesStayReadable()
    {
        ScratchDomain domain;
        Preferences preferences(*domain.defaults);
        preferences.update([](PreferenceValues& values) {
            values.focusMinutes = 500;
            values.openDelay = std::numeric_limits<double>::quiet_NaN();
            values.closeDelay = std::numeric_limits<double>::infinity();
            values.historyLimit = -3;
        });
        QCOMPARE(preferences.values().focusMinutes, 120);
        QCOMPARE(preferences.values().openDelay, 0.0);
        QCOMPARE(preferences.values().closeDelay, 60.0);
        QCOMPARE(preferences.values().historyLimit, 0);
        const Preferences restarted(domain.reopen());
        QCOMPARE(restarted.values(), preferences.values());
        QVERIFY(domain.defaults->takeDamage().isEmpty());
    }

    void absurdFocusValuesFallBack_data()
    {
        QTest::addColumn<QVariant>("savedDuration");
        QTest::addColumn<QVariant>("savedSeconds");
        QTest::addColumn<double>("deadlineIn");
        QTest::addColumn<qint64>("duration");
        QTest::addColumn<QString>("timeText");
        QTest::addColumn<bool>("running");
        const QVariant full = qint64(1500);
        const double none = qQNaN();
        QTest::newRow("seconds 9.2e18") << full << QVariant(qint64(9'200'000'000'000'000'000)) << none
                                        << qint64(1500) << u"00:00"_qs << false;
        QTest::newRow("seconds 1e308 as a double")
            << full << QVariant(1e308) << none << qint64(1500) << u"00:00"_qs << false;
        QTest::newRow("seconds -5") << full << QVariant(qint64(-5)) << none << qint64(1500) << u"00:00"_qs
                                    << false;
        QTest::newRow("seconds as text")
            << full << QVariant(u"900"_qs) << none << qint64(1500) << u"00:00"_qs << false;
        QTest::newRow("seconds 7200")
            << full << QVariant(qint64(7200)) << none << qint64(1500) << u"120:00"_qs << false;
        QTest::newRow("whole seconds as a double")
            << full << QVariant(600.0) << none << qint64(1500) << u"10:00"_qs << false;
        QTest::newRow("duration 1e308")
            << QVariant(1e308) << QVariant(qint64(30)) << none << qint64(60) << u"00:30"_qs << false;
        QTest::newRow("duration 10 s")
            << QVariant(qint64(10)) << QVariant(qint64(30)) << none << qint64(60) << u"00:30"_qs << false;
        QTest::newRow("duration 7201 s")
            << QVariant(qint64(7201)) << QVariant(qint64(30)) << none << qint64(60) << u"00:30"_qs << false;
        QTest::newRow("deadline in an hour")
            << full << QVariant(qint64(30)) << 3600.0 << qint64(1500) << u"60:00"_qs << true;
        QTest::newRow("deadline in a thousand years")
            << full << QVariant(qint64(30)) << 3.2e10 << qint64(1500) << u"00:30"_qs << false;
    }

    void absurdFocusValuesFallBack()
    {
        QFETCH(QVariant, savedDuration);
        QFETCH(QVariant, savedSeconds);
        QFETCH(double, deadlineIn);
        QFETCH(qint64, duration);
        QFETCH(QString, timeText);
        QFETCH(bool, running);
        ModelFixture fixture;
        Defaults& defaults = *fixture.domain.defaults;
        const auto store = [&defaults](const QString& key, const QVariant& value) {
            if (value.typeId() == QMetaType::Double)
                defaults.setDouble(key, value.toDouble());
            else if (value.typeId() == QMetaType::QString)
                defaults.setString(key, value.toString());
            else
                defaults.setInteger(key, value.toLongLong());
        };
        store(u"focus.savedDuration"_qs, savedDuration);
        store(u"focus.savedSeconds"_qs, savedSeconds);
        if (!qIsNaN(deadlineIn))
            defaults.setDate(u"focus.savedDeadline"_qs,
                             fixture.memory.clock.now().addSecs(qint64(deadlineIn)));
        Model& model = fixture.restart();
        QCOMPARE(model.duration(), duration);
        QCOMPARE(model.timeText(), timeText);
        QCOMPARE(model.timerRunning(), running);
    }

    void farResumeDeadlinesAreIgnored()
    {
        ModelFixture fixture;
        fixture.domain.defaults->setDate(u"focus.resumeDeadline"_qs,
                                         fixture.memory.clock.now().addSecs(7201));
        fixture.domain.defaults->setInteger(u"focus.resumeDuration"_qs, 1200);
        QVERIFY(!fixture.restart().timerRunning());
        fixture.domain.defaults->setDate(u"focus.resumeDeadline"_qs,
                                         fixture.memory.clock.now().addSecs(7200));
        QVERIFY(fixture.restart().timerRunning());
        QCOMPARE(fixture.model->timeText(), u"120:00"_qs);
    }
};

int runBoundsTests(int argc, char** argv)
{
    BoundsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "BoundsTest.moc"
