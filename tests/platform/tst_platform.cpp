#include "TestSupport.h"

#include "common/SerialQueue.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxSessionEvents.h"
#include "platform/linux/LinuxSound.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// The parts of the Linux services that can be checked without a desktop session.
class PlatformTest : public QObject
{
    Q_OBJECT

private:
    static void touch(const QString& path)
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

private Q_SLOTS:
    void soundsComeFromTheFreedesktopTheme()
    {
        QTemporaryDir user;
        QTemporaryDir system;
        touch(system.filePath(QStringLiteral("sounds/freedesktop/stereo/complete.oga")));
        touch(system.filePath(QStringLiteral("sounds/freedesktop/stereo/bell.wav")));
        const QStringList dirs{user.path(), system.path()};
        QCOMPARE(LinuxSound::soundFile(QStringLiteral("Glass"), dirs),
                 system.filePath(QStringLiteral("sounds/freedesktop/stereo/complete.oga")));
        // An earlier data directory overrides a later one.
        touch(user.filePath(QStringLiteral("sounds/freedesktop/stereo/complete.ogg")));
        QCOMPARE(LinuxSound::soundFile(QStringLiteral("Glass"), dirs),
                 user.filePath(QStringLiteral("sounds/freedesktop/stereo/complete.ogg")));
        QCOMPARE(LinuxSound::soundFile(QStringLiteral("Bell"), dirs),
                 system.filePath(QStringLiteral("sounds/freedesktop/stereo/bell.wav")));
        QVERIFY(LinuxSound::soundFile(QStringLiteral("Submarine"), dirs).isEmpty());
    }

    void manualTimeFiresWorkInOrderAndOnlyOnce()
    {
        ManualClock clock;
        ManualScheduler scheduler(clock);
        QObject context;
        QStringList fired;
        QList<double> firedAt;
        const double start = clock.uptime();
        scheduler.schedule(2.0, &context, [&] {
            fired.append(QStringLiteral("b"));
            firedAt.append(clock.uptime() - start);
        });
        scheduler.schedule(0.5, &context, [&] {
            fired.append(QStringLiteral("a"));
            firedAt.append(clock.uptime() - start);
        });
        const auto cancelled = scheduler.schedule(1.0, &context, [&] { fired.append(QStringLiteral("x")); });
        scheduler.cancel(cancelled);
        scheduler.advance(1.9);
        QCOMPARE(fired, QStringList{QStringLiteral("a")});
        scheduler.advance(5);
        QCOMPARE(fired, QStringList({"a", "b"}));
        // Work runs at its due time, not at the end of the advance.
        QCOMPARE(firedAt, QList<double>({0.5, 2.0}));
        QCOMPARE(clock.uptime() - start, 6.9);
        {
            QObject gone;
            scheduler.schedule(1, &gone, [&] { fired.append(QStringLiteral("late")); });
        }
        scheduler.advance(2);
        QCOMPARE(fired.size(), 2);
    }

    void scheduledWorkReplacesItself()
    {
        ManualClock clock;
        ManualScheduler scheduler(clock);
        QObject context;
        int runs = 0;
        ScheduledWork work(scheduler, &context);
        work.schedule(1, [&] { ++runs; });
        work.schedule(1, [&] { runs += 10; });
        QVERIFY(work.isPending());
        scheduler.advance(1);
        QCOMPARE(runs, 10);
        QVERIFY(!work.isPending());
    }

    void serialQueueRunsInOrderAndHandsBack()
    {
        SerialQueue queue(QStringLiteral("Brenlow.test"));
        QObject receiver;
        QList<int> results;
        QThread* workerThread = nullptr;
        for (int i = 0; i < 5; ++i) {
            queue.run<int>(
                &receiver,
                [i, &workerThread] {
                    workerThread = QThread::currentThread();
                    return i * i;
                },
                [&results](int value) { results.append(value); });
        }
        QTRY_COMPARE(results, QList<int>({0, 1, 4, 9, 16}));
        QVERIFY(workerThread != QThread::currentThread());
        QCOMPARE(workerThread->objectName(), QStringLiteral("Brenlow.test"));
    }

    void aGoneReceiverGetsNoAnswer()
    {
        SerialQueue queue(QStringLiteral("Brenlow.test"));
        bool answered = false;
        QSemaphore started;
        QSemaphore release;
        {
            QObject receiver;
            queue.run<int>(
                &receiver,
                [&] {
                    started.release();
                    release.acquire();
                    return 1;
                },
                [&answered](int) { answered = true; });
            started.acquire();
        }
        release.release();
        QObject later;
        bool laterAnswered = false;
        queue.run<int>(
            &later, [] { return 2; }, [&laterAnswered](int) { laterAnswered = true; });
        QTRY_VERIFY(laterAnswered);
        QVERIFY(!answered);
    }

    void playersAreFoundByTheirBusNames()
    {
        const QString spotify = QStringLiteral("org.mpris.MediaPlayer2.spotify");
        const QString firefox = QStringLiteral("org.mpris.MediaPlayer2.firefox.instance_1_42");
        const QString mpv = QStringLiteral("org.mpris.MediaPlayer2.mpv");
        const QString spotifyId = QStringLiteral("com.spotify.client");
        const QString musicId = QStringLiteral("com.apple.Music");
        QCOMPARE(LinuxPermissions::playerBusName(spotifyId, {firefox, spotify}), spotify);
        QVERIFY(LinuxPermissions::playerBusName(spotifyId, {firefox, mpv}).isEmpty());
        // Music is any other player, but neither Spotify nor a browser tab.
        QVERIFY(LinuxPermissions::playerBusName(musicId, {spotify, firefox}).isEmpty());
        QCOMPARE(LinuxPermissions::playerBusName(musicId, {spotify, firefox, mpv}), mpv);
        QVERIFY(LinuxPermissions::playerBusName(QStringLiteral("org.example"), {mpv}).isEmpty());
    }

    void aPlayerOnTheSessionBusMayBeControlled()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected())
            QSKIP("needs a session bus (scripts/run-tests provides one)");
        const QString name = QStringLiteral("org.mpris.MediaPlayer2.spotify");
        // Another test run on the same bus must not hold the name.
        if (bus.interface()->isServiceRegistered(name))
            QSKIP("a Spotify player is already on this bus");
        LinuxPermissions permissions;
        const QString spotifyId = QStringLiteral("com.spotify.client");
        QCOMPARE(permissions.automationAccess(spotifyId), AutomationAccess::notRunning);
        QVERIFY(bus.registerService(name));
        QCOMPARE(permissions.automationAccess(spotifyId), AutomationAccess::allowed);
        // Asked from a worker thread, as the permission check does.
        SerialQueue queue(QStringLiteral("Brenlow.test"));
        std::optional<AutomationAccess> answer;
        QObject receiver;
        queue.run<AutomationAccess>(
            &receiver, [&permissions, spotifyId] { return permissions.automationAccess(spotifyId); },
            [&answer](AutomationAccess access) { answer = access; });
        QTRY_VERIFY(answer.has_value());
        QCOMPARE(*answer, AutomationAccess::allowed);
        QVERIFY(bus.unregisterService(name));
        QCOMPARE(permissions.automationAccess(spotifyId), AutomationAccess::notRunning);
    }

    // logind's sleep and the screen saver's lock as the desktop sends them; the session bus
    // plays the system bus here (see main). Waking up and unlocking announce nothing.
    void sessionEventsComeFromLogindAndTheScreenSaver()
    {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("needs a session bus (scripts/run-tests provides one)");
        LinuxSessionEvents events;
        QSignalSpy sleeps(&events, &SessionEvents::willSleep);
        QSignalSpy locks(&events, &SessionEvents::screenLocked);
        const auto send = [](const QString& bus, const QString& path, const QString& member, bool value) {
            QProcess::execute(
                QStringLiteral("dbus-send"),
                {bus, QStringLiteral("--type=signal"), path, member,
                 QStringLiteral("boolean:") + (value ? QStringLiteral("true") : QStringLiteral("false"))});
        };
        const QString logind = QStringLiteral("/org/freedesktop/login1");
        const QString prepare = QStringLiteral("org.freedesktop.login1.Manager.PrepareForSleep");
        send(QStringLiteral("--system"), logind, prepare, false);
        send(QStringLiteral("--system"), logind, prepare, true);
        QTRY_COMPARE(sleeps.size(), 1);
        for (const QString& path :
             {QStringLiteral("/org/freedesktop/ScreenSaver"), QStringLiteral("/ScreenSaver")}) {
            send(QStringLiteral("--session"), path,
                 QStringLiteral("org.freedesktop.ScreenSaver.ActiveChanged"), false);
            send(QStringLiteral("--session"), path,
                 QStringLiteral("org.freedesktop.ScreenSaver.ActiveChanged"), true);
        }
        QTRY_COMPARE(locks.size(), 2);
        QTest::qWait(100);
        QCOMPARE(sleeps.size(), 1);
        QCOMPARE(locks.size(), 2);
    }
};

int main(int argc, char** argv)
{
    // The session bus stands in for the system bus, so a test may send logind's signals.
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    QCoreApplication app(argc, argv);
    PlatformTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_platform.moc"
