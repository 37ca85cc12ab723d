#include "TestSupport.h"

#include "app/SingleInstance.h"
#include "model/Defaults.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// The real program's run modes, started as a user would start it.
class ProgramTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_home;

    QProcessEnvironment scratchEnvironment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        return environment;
    }

    struct Result
    {
        int exitCode;
        QByteArray out;
        QByteArray err;
    };

    Result run(const QStringList& arguments, int timeoutMs = 60000) const
    {
        QProcess process;
        process.setProcessEnvironment(scratchEnvironment());
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

    static bool instanceRunning()
    {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(
            QString::fromLatin1(SingleInstance::serviceName));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("needs a session bus (the suite runs under dbus-run-session)");
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
        QVERIFY(!instanceRunning());
        // A user who finished the tour: the panel starts closed over the notch.
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.filePath(QStringLiteral("config"))));
        Defaults(QString::fromLatin1(Defaults::standardDomain))
            .setBool(QStringLiteral("welcome.completed"), true);
        QProcess first;
        first.setProcessEnvironment(scratchEnvironment());
        // A switch with a value appended is no switch: this is a normal start.
        first.start(QStringLiteral(BRENLOW_BINARY), {QStringLiteral("--self-test=yes")});
        QVERIFY(first.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(instanceRunning(), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(panelSize(), QSize(160, 24), 10000);

        const Result second = run({}, 20000);
        QCOMPARE(second.exitCode, 0);
        QCOMPARE(first.state(), QProcess::Running);
        // The running instance opened its panel for the second start.
        QTRY_COMPARE_WITH_TIMEOUT(panelSize(), QSize(620, 378), 10000);

        first.terminate();
        QVERIFY(first.waitForFinished(10000));
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
        QCOMPARE(first.exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!instanceRunning(), 5000);
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
