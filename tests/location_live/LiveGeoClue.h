#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

// One program this test started. It dies with this object, and with the test program even when
// that crashes (the kernel kills it when its parent goes).
class ChildProcess
{
public:
    ChildProcess() = default;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { stop(); }

    bool start(const QString& program, const QStringList& arguments, const QString& logFile = {})
    {
        stop();
        m_process = std::make_unique<QProcess>();
        m_process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        if (!logFile.isEmpty())
            m_process->setStandardErrorFile(logFile);
        else
            m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_output.clear();
        m_process->start(program, arguments);
        return m_process->waitForStarted(5000);
    }
    void stop()
    {
        if (!m_process)
            return;
        if (m_process->state() != QProcess::NotRunning) {
            m_process->terminate();
            if (!m_process->waitForFinished(3000)) {
                m_process->kill();
                m_process->waitForFinished(3000);
            }
        }
        m_process.reset();
    }
    bool running() const { return m_process && m_process->state() == QProcess::Running; }

    // Everything it printed so far.
    const QByteArray& output()
    {
        if (m_process)
            m_output += m_process->readAllStandardOutput();
        return m_output;
    }
    // Waits, with the event loop running, until it printed a line that starts with `prefix`.
    bool waitForLine(const QByteArray& prefix, int milliseconds = 5000)
    {
        QDeadlineTimer deadline(milliseconds);
        while (!deadline.hasExpired()) {
            for (const QByteArray& line : output().split('\n')) {
                if (line.startsWith(prefix))
                    return true;
            }
            if (!running())
                return false;
            m_process->waitForReadyRead(50);
            QCoreApplication::processEvents();
        }
        return false;
    }
    int count(const QByteArray& prefix)
    {
        int found = 0;
        for (const QByteArray& line : output().split('\n'))
            found += line.startsWith(prefix) ? 1 : 0;
        return found;
    }

private:
    std::unique_ptr<QProcess> m_process;
    QByteArray m_output;
};

// GeoClue 2 as a desktop runs it, privately: a "system" bus of our own, GeoClue in a private
// mount namespace with the test's configuration over /etc/geoclue/geoclue.conf, fed by an NMEA
// socket, and an agent that plays the desktop shell. Needs root for the namespace and the mount.
class LiveGeoClue
{
public:
    static constexpr const char* service = "org.freedesktop.GeoClue2";
    enum class Nmea { berlin, silent };
    enum class Agent { allow, deny };

    // Why this machine cannot run the services; empty when it can.
    static QString missing()
    {
        if (::geteuid() != 0)
            return QStringLiteral("needs root for the private mount namespace GeoClue runs in");
        const QStringList programs{QStringLiteral("/usr/libexec/geoclue"),
                                   QStringLiteral("/usr/bin/python3")};
        for (const QString& program : programs) {
            if (!QFileInfo(program).isExecutable())
                return program + QStringLiteral(" is missing: run scripts/bootstrap");
        }
        for (const char* program : {"dbus-daemon", "unshare", "mount"}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
                return QString::fromLatin1(program) + QStringLiteral(" is missing: run scripts/bootstrap");
        }
        return {};
    }

    // Starts the bus and points this process's system bus at it; call before anything in this
    // process talks to the system bus, which Qt connects to once.
    bool startBus()
    {
        if (!m_scratch.isValid() ||
            !m_bus.start(QStringLiteral("dbus-daemon"),
                         {QStringLiteral("--config-file=") + fixture("privsys.conf"),
                          QStringLiteral("--nofork"), QStringLiteral("--print-address")}))
            return false;
        if (!m_bus.waitForLine("unix:"))
            return false;
        const QByteArray address = m_bus.output().split('\n').first().trimmed();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
        return QDBusConnection::systemBus().isConnected();
    }

    bool startGeoClue(Nmea nmea)
    {
        stopGeoClue();
        const QString socket = m_scratch.filePath(QStringLiteral("nmea.sock"));
        QStringList nmeaArguments{fixture("nmea_server.py"), socket};
        if (nmea == Nmea::silent)
            nmeaArguments.append(QStringLiteral("silent"));
        if (!m_nmea.start(QStringLiteral("/usr/bin/python3"), nmeaArguments) || !m_nmea.waitForLine("ready"))
            return false;
        const QString script = QStringLiteral("mount --bind \"$1\" /etc/geoclue/geoclue.conf && exec "
                                              "/usr/libexec/geoclue -t 0 --nmea-socket \"$2\"");
        if (!m_geoclue.start(QStringLiteral("unshare"),
                             {QStringLiteral("-m"), QStringLiteral("--propagation"),
                              QStringLiteral("private"), QStringLiteral("sh"), QStringLiteral("-c"), script,
                              QStringLiteral("sh"), fixture("geoclue.conf"), socket},
                             m_scratch.filePath(QStringLiteral("geoclue.log"))))
            return false;
        QDeadlineTimer deadline(10000);
        while (!deadline.hasExpired() && m_geoclue.running()) {
            if (onBus())
                return true;
            QTest::qWait(20);
        }
        return false;
    }
    void stopGeoClue()
    {
        stopAgent();
        m_geoclue.stop();
        m_nmea.stop();
        QDeadlineTimer deadline(3000);
        while (onBus() && !deadline.hasExpired())
            QTest::qWait(20);
    }

    bool startAgent(Agent answer)
    {
        m_agent.stop();
        return m_agent.start(QStringLiteral("/usr/bin/python3"),
                             {fixture("geoclue_agent.py"),
                              answer == Agent::allow ? QStringLiteral("allow") : QStringLiteral("deny")}) &&
               m_agent.waitForLine("registered");
    }
    void stopAgent() { m_agent.stop(); }

    static bool onBus()
    {
        const QDBusReply<bool> registered =
            QDBusConnection::systemBus().interface()->isServiceRegistered(QString::fromLatin1(service));
        return registered.isValid() && registered.value();
    }
    ChildProcess& agent() { return m_agent; }
    ChildProcess& nmea() { return m_nmea; }
    // GeoClue's own log, for the failure messages.
    QByteArray geoclueLog() const
    {
        QFile file(m_scratch.filePath(QStringLiteral("geoclue.log")));
        return file.open(QIODevice::ReadOnly) ? file.readAll().right(3000) : QByteArray();
    }

private:
    static QString fixture(const char* name) { return QStringLiteral(TEST_FOLDER "/") + QLatin1String(name); }

    QTemporaryDir m_scratch;
    // Declared first, stopped last.
    ChildProcess m_bus;
    ChildProcess m_nmea;
    ChildProcess m_geoclue;
    ChildProcess m_agent;
};
