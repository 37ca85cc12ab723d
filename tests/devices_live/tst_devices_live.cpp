#include "TestSupport.h"
#include "UPowerFixture.h"

#include "common/StatusMessage.h"
#include "devices/DeviceStatus.h"
#include "focus/ActivityLog.h"
#include "platform/linux/LinuxAudioDevices.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxWorkspace.h"
#include "setup/PermissionActions.h"
#include "setup/PermissionStore.h"
#include "setup/widgets/PermissionSettings.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {
// Waits for a short command to succeed, for a daemon that is still starting.
bool waitFor(const QString& program, const QStringList& arguments, int attempts = 100)
{
    for (int i = 0; i < attempts; ++i) {
        QProcess probe;
        probe.start(program, arguments);
        if (probe.waitForFinished(5000) && probe.exitStatus() == QProcess::NormalExit &&
            probe.exitCode() == 0)
            return true;
        QTest::qWait(50);
    }
    return false;
}

QString run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void stop(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(5000)) {
        process.kill();
        process.waitForFinished(2000);
    }
}
} // namespace

// The device status, the accessibility switch and the restart on the real services, each
// started privately here: a session bus, PulseAudio with a null sink and source, upowerd on a
// private system bus with a umockdev battery, and the AT-SPI bus launcher.
class DevicesLiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        for (const char* program : {"dbus-daemon", "pulseaudio", "pactl", "parecord", "umockdev-wrapper"}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
                QFAIL(qPrintable(
                    QStringLiteral("%1 is missing: run scripts/bootstrap").arg(QLatin1String(program))));
        }
        QVERIFY(m_home.isValid());
        QFile::setPermissions(m_home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_home.path()));
        qputenv("HOME", QFile::encodeName(m_home.path()));
        qputenv("GSETTINGS_BACKEND", "memory");
        qunsetenv("PULSE_SERVER");

        // Everything below must reach these buses, never the machine's own.
        m_sessionBus.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        QVERIFY(m_sessionBus.waitForReadyRead(10000));
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_sessionBus.readLine().trimmed());

        const QString script = m_home.filePath(QStringLiteral("upower_fixture.py"));
        const QString config = m_home.filePath(QStringLiteral("system-bus.conf"));
        for (const auto& [path, text] :
             {std::pair{script, upowerFixtureScript}, std::pair{config, privateSystemBusConfig}}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text);
        }
        // Debian's python, which has the GObject bindings for umockdev.
        m_upower.start(QStringLiteral("umockdev-wrapper"),
                       {QStringLiteral("/usr/bin/python3"), script, config});
        QElapsedTimer started;
        started.start();
        while (!m_upower.canReadLine() && started.elapsed() < 30000)
            m_upower.waitForReadyRead(500);
        const QByteArray busLine = m_upower.readLine().trimmed();
        QVERIFY2(busLine.startsWith("BUS "), m_upower.readAllStandardError().constData());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", busLine.mid(4));

        startPulse();
    }

    void cleanupTestCase()
    {
        m_upower.closeWriteChannel();
        m_upower.waitForFinished(5000);
        stop(m_upower);
        stop(m_pulse);
        stop(m_atspi);
        stop(m_sessionBus);
    }

    void theMicrophoneIsSeenRecordingAndMutedOnTheServer()
    {
        Rig rig;
        QTRY_VERIFY_WITH_TIMEOUT(rig.devices.micAvailable(), 5000);
        QVERIFY(!rig.devices.microphone());
        QVERIFY(!rig.devices.micMuted());

        QProcess recorder;
        recorder.start(QStringLiteral("parecord"),
                       {QStringLiteral("--device=testmic"), QStringLiteral("/dev/null")});
        QVERIFY(recorder.waitForStarted());
        // The server's change event alone brings it, long before the 5-second period.
        QTRY_VERIFY_WITH_TIMEOUT(rig.devices.microphone(), 5000);

        rig.devices.toggleMute();
        QTRY_VERIFY_WITH_TIMEOUT(rig.devices.micMuted(), 5000);
        // What the desktop's own mixer reads.
        QVERIFY(run(QStringLiteral("pactl"), {QStringLiteral("get-source-mute"), QStringLiteral("testmic")})
                    .contains(QStringLiteral("yes")));
        rig.devices.toggleMute();
        QTRY_VERIFY_WITH_TIMEOUT(!rig.devices.micMuted(), 5000);
        QVERIFY(run(QStringLiteral("pactl"), {QStringLiteral("get-source-mute"), QStringLiteral("testmic")})
                    .contains(QStringLiteral("no")));

        stop(recorder);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.devices.microphone(), 5000);
    }

    void aBluetoothSinkAppearsWithItsNotice()
    {
        Rig rig;
        // A reading with the server's answer in it: what is there now was there before us.
        QTRY_VERIFY_WITH_TIMEOUT(rig.devices.micAvailable(), 5000);
        QVERIFY(rig.devices.devices().isEmpty());
        const qsizetype before = rig.activity.notices().size();
        const QString module = run(
            QStringLiteral("pactl"),
            {QStringLiteral("load-module"), QStringLiteral("module-null-sink"),
             QStringLiteral("sink_name=bthead"),
             QStringLiteral("sink_properties='device.bus=bluetooth device.description=\"Test Kopfhörer\"'")});
        QVERIFY(!module.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(rig.devices.devices(), QStringList{QStringLiteral("Test Kopfhörer")}, 5000);
        QCOMPARE(rig.activity.notices().size(), before + 1);
        QCOMPARE(rig.activity.notices().first().title, QStringLiteral("Gerät verbunden"));
        QCOMPARE(rig.activity.notices().first().detail, QStringLiteral("Test Kopfhörer"));
        run(QStringLiteral("pactl"), {QStringLiteral("unload-module"), module});
        QTRY_VERIFY_WITH_TIMEOUT(rig.devices.devices().isEmpty(), 5000);
    }

    void anAudioServerThatRestartsIsFoundAgain()
    {
        Rig rig;
        QTRY_VERIFY_WITH_TIMEOUT(rig.devices.micAvailable(), 5000);
        stop(m_pulse);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.audio.connected(), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.devices.micAvailable(), 5000);
        startPulse();
        QTRY_VERIFY_WITH_TIMEOUT(rig.devices.micAvailable(), 10000);
    }

    void upowerChargeLevelsGiveTheNotices()
    {
        MemoryPlatform memory;
        ScratchDomain domain;
        ActivityLog activity(*domain.defaults, memory.clock);
        StatusMessage message(memory.scheduler);
        LinuxPowerSources power(QStringLiteral("/nonexistent"));
        DeviceStatus devices(power, memory.audioDevices, memory.cameras, activity, message);
        devices.watchServices();
        QTRY_VERIFY_WITH_TIMEOUT(power.upowerAnswered(), 5000);
        devices.refreshHardware();
        QTRY_VERIFY_WITH_TIMEOUT(devices.hasBattery(), 5000);
        QCOMPARE(devices.battery(), 80);
        QVERIFY(devices.charging());
        const qsizetype before = activity.notices().size();

        // UPower's PropertiesChanged brings each step without a heartbeat.
        setBattery(22, false);
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE_WITH_TIMEOUT(devices.battery(), 22, 10000);
        QVERIFY(!devices.charging());
        QCOMPARE(activity.notices().size(), before + 1);
        QCOMPARE(activity.notices().first().title, QStringLiteral("Akkubetrieb"));
        QCOMPARE(activity.notices().first().detail, QStringLiteral("MacBook bei 22 %."));

        setBattery(19, false);
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE_WITH_TIMEOUT(devices.battery(), 19, 10000);
        QCOMPARE(activity.notices().size(), before + 2);
        QCOMPARE(activity.notices().first().title, QStringLiteral("Akku wird knapp"));
        QCOMPARE(activity.notices().first().detail,
                 QStringLiteral("Noch 19 % – bald ein Ladegerät anschließen."));

        setBattery(19, true);
        if (QTest::currentTestFailed())
            return;
        QTRY_VERIFY_WITH_TIMEOUT(devices.charging(), 10000);
        QCOMPARE(activity.notices().first().title, QStringLiteral("Ladegerät verbunden"));
    }

    void accessibilitySwitchedOnByTheActionShowsWithoutARestart()
    {
        m_atspi.start(QStringLiteral("/usr/libexec/at-spi-bus-launcher"), QStringList{});
        QVERIFY(m_atspi.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(
            QDBusConnection::sessionBus().interface()->isServiceRegistered(QStringLiteral("org.a11y.Bus")),
            10000);
        QVERIFY(!LinuxPermissions::queryAccessibilityNow());

        MemoryPlatform memory;
        LinuxPermissions permissions;
        PermissionStore store(permissions, memory.clock);
        StatusMessage message(memory.scheduler);
        PermissionActions actions(store, memory.workspace, memory.systemSettings, message);
        PermissionSettings rows(store);
        QCOMPARE(rows.accessibilityText(), QStringLiteral("Bedienungshilfen nicht freigegeben"));
        QVERIFY(rows.allowButton()->isVisibleTo(&rows));

        // The user's click on "Bedienungshilfen erlauben".
        QObject::connect(&rows, &PermissionSettings::accessibilityRequested, &actions,
                         &PermissionActions::accessibility);
        QTest::mouseClick(rows.allowButton(), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(rows.accessibilityText(), QStringLiteral("Bedienungshilfen freigegeben"),
                                  5000);
        QVERIFY(!rows.allowButton()->isVisibleTo(&rows));
        QCOMPARE(message.text(), QStringLiteral("Bedienungshilfen freigegeben"));
        // Anyone asking the bus now, such as the menu reader, sees it switched on.
        QVERIFY(LinuxPermissions::queryAccessibilityNow());
    }

    void theRestartStartsTheSameProgramOnceTheOldCopyHasGone()
    {
        QTemporaryDir folder;
        const QString marker = folder.filePath(QStringLiteral("started"));
        QProcess oldCopy;
        oldCopy.start(QStringLiteral("sleep"), {QStringLiteral("1")});
        QVERIFY(oldCopy.waitForStarted());
        // The relaunch as LinuxWorkspace starts it, with a program whose arguments carry spaces.
        const QString program = QStringLiteral("/bin/sh");
        QProcess shell;
        shell.start(QStringLiteral("/bin/sh"),
                    {QStringLiteral("-c"), LinuxWorkspace::relaunchScript(),
                     QStringLiteral("Brenlow-restart"), QString::number(oldCopy.processId()), program,
                     QStringLiteral("-c"),
                     QStringLiteral("kill -0 %1 2>/dev/null && echo early > \"$0\" || echo \"$1\" > \"$0\"")
                         .arg(oldCopy.processId()),
                     marker, QStringLiteral("mit Leerzeichen")});
        // The loop runs meanwhile, so the old copy is reaped when it ends and no longer counts.
        QTRY_VERIFY_WITH_TIMEOUT(shell.state() == QProcess::NotRunning, 15000);
        QCOMPARE(oldCopy.state(), QProcess::NotRunning);
        QFile result(marker);
        QVERIFY(result.open(QIODevice::ReadOnly));
        QCOMPARE(result.readAll().trimmed(), QByteArray("mit Leerzeichen"));
    }

private:
    struct Rig
    {
        Rig() : devices(memory.powerSources, audio, memory.cameras, activity, message)
        {
            devices.watchServices();
            devices.refreshHardware();
        }
        MemoryPlatform memory;
        ScratchDomain domain;
        ActivityLog activity{*domain.defaults, memory.clock};
        StatusMessage message{memory.scheduler};
        LinuxAudioDevices audio;
        DeviceStatus devices;
    };

    void startPulse()
    {
        m_pulse.start(QStringLiteral("pulseaudio"),
                      {QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
                       QStringLiteral("-n"), QStringLiteral("--use-pid-file=no"), QStringLiteral("-L"),
                       QStringLiteral("module-native-protocol-unix"), QStringLiteral("-L"),
                       QStringLiteral("module-null-sink sink_name=testsink"), QStringLiteral("-L"),
                       QStringLiteral("module-null-source source_name=testmic")});
        QVERIFY(m_pulse.waitForStarted());
        QVERIFY(waitFor(QStringLiteral("pactl"), {QStringLiteral("info")}));
        QVERIFY(waitFor(QStringLiteral("pactl"),
                        {QStringLiteral("set-default-source"), QStringLiteral("testmic")}));
    }

    void setBattery(int percent, bool charging)
    {
        m_upower.write(QStringLiteral("battery %1 %2\n")
                           .arg(percent)
                           .arg(charging ? QStringLiteral("charging") : QStringLiteral("discharging"))
                           .toUtf8());
        QElapsedTimer waited;
        waited.start();
        while (!m_upower.canReadLine() && waited.elapsed() < 10000)
            m_upower.waitForReadyRead(200);
        QCOMPARE(m_upower.readLine().trimmed(), QByteArray("OK"));
    }

    QTemporaryDir m_home;
    QProcess m_sessionBus;
    QProcess m_upower;
    QProcess m_pulse;
    QProcess m_atspi;
};

QTEST_MAIN(DevicesLiveTest)
#include "tst_devices_live.moc"
