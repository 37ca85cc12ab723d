#include "TestSupport.h"

#include "app/SingleInstance.h"
#include "settings/Defaults.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

#include <memory>

#include <csignal>
#include <sys/stat.h>

// The real program's run modes, started as a user would start it.
class ProgramTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_home;
    std::unique_ptr<QProcess> m_program;

    QProcessEnvironment scratchEnvironment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeDir());
        return environment;
    }

    QString runtimeDir() const { return m_home.filePath(QStringLiteral("runtime")); }
    QString lockPath() const { return runtimeDir() + QStringLiteral("/app.brenlow.Brenlow.lock"); }

    // A session without a bus: the address leads nowhere.
    QProcessEnvironment busLessEnvironment() const
    {
        QProcessEnvironment environment = scratchEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                           QStringLiteral("unix:path=") + m_home.filePath(QStringLiteral("no-bus")));
        return environment;
    }

    // The process id written into the lock file, 0 while there is none.
    qint64 lockHolder() const
    {
        QFile file(lockPath());
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        return file.readAll().trimmed().toLongLong();
    }

    struct Result
    {
        int exitCode;
        QByteArray out;
        QByteArray err;
    };

    Result run(const QStringList& arguments, int timeoutMs = 60000) const
    {
        return runIn(scratchEnvironment(), arguments, timeoutMs);
    }

    Result runIn(const QProcessEnvironment& environment, const QStringList& arguments,
                 int timeoutMs = 60000) const
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(BRENLOW_BINARY), arguments);
        if (!process.waitForFinished(timeoutMs)) {
            process.kill();
            process.waitForFinished();
            return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
                process.readAllStandardOutput(), process.readAllStandardError()};
    }

    // The open panel's size as the X server reports it (the window is found by its title).
    static QSize panelSize()
    {
        QProcess search;
        search.start(QStringLiteral("xdotool"),
                     {QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^Brenlow$")});
        search.waitForFinished(5000);
        QSize largest;
        for (const QByteArray& id : search.readAllStandardOutput().trimmed().split('\n')) {
            QProcess geometry;
            geometry.start(QStringLiteral("xdotool"),
                           {QStringLiteral("getwindowgeometry"), QString::fromLatin1(id)});
            geometry.waitForFinished(5000);
            const auto match = QRegularExpression(QStringLiteral("Geometry: (\\d+)x(\\d+)"))
                                   .match(QString::fromUtf8(geometry.readAllStandardOutput()));
            if (match.hasMatch())
                largest = largest.expandedTo(QSize(match.captured(1).toInt(), match.captured(2).toInt()));
        }
        return largest;
    }

    // A user who finished the tour: the panel starts closed over the notch.
    void startProgram() { startProgramIn(scratchEnvironment()); }

    void startProgramIn(const QProcessEnvironment& environment)
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.filePath(QStringLiteral("config"))));
        Defaults(QString::fromLatin1(Defaults::standardDomain))
            .setBool(QStringLiteral("welcome.completed"), true);
        m_program = std::make_unique<QProcess>();
        m_program->setProcessEnvironment(environment);
        // A switch with a value appended is no switch: this is a normal start.
        m_program->start(QStringLiteral(BRENLOW_BINARY), {QStringLiteral("--self-test=yes")});
        QVERIFY(m_program->waitForStarted());
        if (environment.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")) ==
            scratchEnvironment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")))
            QTRY_VERIFY_WITH_TIMEOUT(instanceRunning(), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(lockHolder(), m_program->processId(), 20000);
    }

    void stopProgram()
    {
        m_program->terminate();
        QVERIFY(m_program->waitForFinished(10000));
        QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_program->exitCode(), 0);
        m_program.reset();
        QTRY_VERIFY_WITH_TIMEOUT(!instanceRunning(), 5000);
    }

    // The texts in the program's history file, read the way any other SQLite client would.
    QStringList storedTexts() const
    {
        QProcess sqlite;
        sqlite.start(QStringLiteral("sqlite3"),
                     {QStringLiteral("-readonly"),
                      m_home.filePath(QStringLiteral("data/Brenlow/clipboard.sqlite")),
                      QStringLiteral("SELECT text FROM clips ORDER BY date DESC")});
        sqlite.waitForFinished(5000);
        return QString::fromUtf8(sqlite.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }

    static bool instanceRunning()
    {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(
            QString::fromLatin1(SingleInstance::serviceName));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QVERIFY(QDir(m_home.path()).mkdir(QStringLiteral("runtime")));
        QVERIFY(QFile::setPermissions(runtimeDir(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                        QFileDevice::ExeOwner));
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("needs a session bus (the suite runs under dbus-run-session)");
    }

    void cleanup()
    {
        // A failed check must not leave a running instance behind for the next test.
        if (m_program) {
            ::kill(pid_t(m_program->processId()), SIGCONT);
            m_program->kill();
            m_program->waitForFinished();
            m_program.reset();
        }
    }

    void probePrintsOneSortedLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("alone") << QStringList{QStringLiteral("--permission-probe")};
        QTest::newRow("before the self-test")
            << QStringList{QStringLiteral("--permission-probe"), QStringLiteral("--self-test")};
        QTest::newRow("after the self-test")
            << QStringList{QStringLiteral("--self-test"), QStringLiteral("--permission-probe")};
    }

    void probePrintsOneSortedLine()
    {
        QFETCH(QStringList, arguments);
        const Result result = run(arguments);
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.out.endsWith('\n') && result.out.count('\n') == 1, result.out.constData());
        const QByteArray line = result.out.chopped(1);
        QVERIFY(!line.contains(' '));
        QVERIFY(line.startsWith("{\"accessibility\":"));
        QVERIFY(line.indexOf("\"screenCapture\":") > line.indexOf("\"accessibility\":"));
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        QCOMPARE(object.keys(), QStringList({"accessibility", "screenCapture"}));
        QVERIFY(object.value(u"accessibility").isBool());
        // The probe touches no settings.
        QVERIFY(!QDir(m_home.filePath(QStringLiteral("config/Brenlow"))).exists());
    }

    void selfTestPassesAndCleansUp()
    {
        const Result result = run({QStringLiteral("--self-test")});
        QVERIFY2(result.exitCode == 0, result.err.constData());
        const QList<QByteArray> lines = result.out.trimmed().split('\n');
        QVERIFY(lines.size() >= 3);
        for (const QByteArray& line : lines)
            QVERIFY2(line.startsWith("PASS: "), line.constData());
        QCOMPARE(lines.last(),
                 QByteArray("PASS: timer start/pause/reset/expiration/restart; event retention"));
        // Every private domain is gone afterwards.
        const QDir settings(m_home.filePath(QStringLiteral("config/Brenlow")));
        QVERIFY2(settings.entryList(QDir::Files).isEmpty(),
                 qPrintable(settings.entryList(QDir::Files).join(u' ')));
    }

    void secondStartHandsOverAndEnds()
    {
        startProgram();
        QTRY_COMPARE_WITH_TIMEOUT(panelSize(), QSize(160, 24), 10000);

        const Result second = run({}, 20000);
        QCOMPARE(second.exitCode, 0);
        QCOMPARE(m_program->state(), QProcess::Running);
        // The running instance opened its panel for the second start.
        QTRY_COMPARE_WITH_TIMEOUT(panelSize(), QSize(620, 378), 10000);
        stopProgram();
    }

    void aStoppedFirstInstanceIsReportedNotPretended()
    {
        startProgram();
        QTRY_COMPARE_WITH_TIMEOUT(panelSize(), QSize(160, 24), 10000);
        const qint64 first = m_program->processId();
        QCOMPARE(::kill(pid_t(first), SIGSTOP), 0);

        QElapsedTimer waited;
        waited.start();
        const Result second = run({}, 30000);
        const qint64 elapsed = waited.elapsed();
        QCOMPARE(::kill(pid_t(first), SIGCONT), 0);

        QCOMPARE(second.exitCode, 1);
        const QString said = QString::fromUtf8(second.err);
        QVERIFY2(said.contains(QStringLiteral("Brenlow läuft bereits (Prozess %1), hat aber nicht innerhalb "
                                              "von 5 Sekunden geantwortet")
                                   .arg(first)),
                 second.err.constData());
        QVERIFY2(said.contains(QStringLiteral("Das Panel wurde nicht geöffnet")), second.err.constData());
        // It did wait for the answer instead of giving up at once.
        QVERIFY2(elapsed >= SingleInstance::answerTimeoutMs - 500, QByteArray::number(elapsed).constData());

        // Woken up, the first instance finds the late request and keeps its panel closed, as the
        // second start said; it still runs and still answers.
        QTest::qWait(1500);
        QCOMPARE(m_program->state(), QProcess::Running);
        QCOMPARE(panelSize(), QSize(160, 24));
        const Result third = run({}, 20000);
        QVERIFY2(third.exitCode == 0, third.err.constData());
        QVERIFY2(third.err.isEmpty(), third.err.constData());
        QTRY_COMPARE_WITH_TIMEOUT(panelSize(), QSize(620, 378), 10000);
        stopProgram();
    }

    void withoutABusTheLockFileRefusesASecondInstance()
    {
        const QProcessEnvironment busLess = busLessEnvironment();
        startProgramIn(busLess);
        const qint64 first = m_program->processId();
        // Only its owner may read or lock the file.
        struct stat info = {};
        QCOMPARE(::stat(QFile::encodeName(lockPath()).constData(), &info), 0);
        QCOMPARE(info.st_mode & 0777, mode_t(0600));

        const Result second = runIn(busLess, {}, 20000);
        QCOMPARE(second.exitCode, 1);
        QVERIFY2(QString::fromUtf8(second.err)
                     .contains(QStringLiteral("Brenlow läuft bereits (Prozess %1), ist aber nicht über den "
                                              "Sitzungsbus erreichbar")
                                   .arg(first)),
                 second.err.constData());
        // A start with a bus finds no name there, but the lock tells it about the first one.
        const Result withBus = run({}, 20000);
        QCOMPARE(withBus.exitCode, 1);
        QVERIFY2(withBus.err.contains("nicht über den Sitzungsbus erreichbar"), withBus.err.constData());
        QVERIFY(!instanceRunning());
        QCOMPARE(m_program->state(), QProcess::Running);

        // Killed without a chance to clean up, the first leaves its file behind; it blocks nobody.
        m_program->kill();
        QVERIFY(m_program->waitForFinished(10000));
        QVERIFY(QFile::exists(lockPath()));
        QCOMPARE(lockHolder(), first);
        startProgramIn(busLess);
        QVERIFY(m_program->processId() != first);
        QTest::qWait(500);
        QCOMPARE(m_program->state(), QProcess::Running);
        m_program->terminate();
        QVERIFY(m_program->waitForFinished(10000));
        QCOMPARE(m_program->exitCode(), 0);
        m_program.reset();
    }

    void copiesInOtherApplicationsReachTheHistoryFile()
    {
        startProgram();
        const QString text = QStringLiteral("Kopiert in einer anderen App ") + QUuid::createUuid().toString();
        QProcess xclip;
        xclip.start(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard")});
        QVERIFY(xclip.waitForStarted());
        xclip.write(text.toUtf8());
        xclip.closeWriteChannel();
        QTRY_VERIFY_WITH_TIMEOUT(storedTexts().contains(text), 10000);
        stopProgram();
        // xclip serves the selection until another client takes it; the program is gone now.
        xclip.kill();
        xclip.waitForFinished();
        QVERIFY(storedTexts().contains(text));
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
