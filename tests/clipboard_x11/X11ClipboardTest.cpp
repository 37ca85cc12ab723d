#include "X11ClipboardTest.h"

#include "TestSupport.h"

#include "clipboard/ClipboardArchive.h"
#include "platform/linux/LinuxPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

namespace {

constexpr int captureTimeout = 5000;

} // namespace

// The real X11 clipboard: xclip copies as an outside program, and the model captures through
// LinuxPasteboard with its services running (heartbeat stopped, so only the change signal can
// capture).
class X11ClipboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("needs an X display (run under Xvfb)");
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("xclip")).isEmpty(),
                 "xclip is not installed");
    }

    void cleanupTestCase()
    {
        // Taking the selection ends the last xclip, which serves until another owner appears.
        if (QGuiApplication::platformName() == QLatin1String("xcb"))
            QGuiApplication::clipboard()->setText(QStringLiteral("Ende"));
        for (auto& process : m_processes) {
            if (process->state() != QProcess::NotRunning) {
                process->kill();
                process->waitForFinished();
            }
        }
    }

    void outsideCopiesReachTheHistoryFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Brenlow/clipboard.sqlite"));
        ScratchDomain domain;
        MemoryPlatform memory;
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        const Platform platform = memory.platform(pasteboard);
        Model model(*domain.defaults, platform, true, pasteboard, path);
        model.stopHeartbeat();
        QVERIFY(model.historyStorageError().isEmpty());

        const QString a = QStringLiteral("Erster Text A ") + QUuid::createUuid().toString();
        const QString b = QStringLiteral("Zweiter Text B ") + QUuid::createUuid().toString();
        copyWithXclip(memory, a);
        QTRY_COMPARE_WITH_TIMEOUT(firstText(model), a, captureTimeout);
        const QUuid firstId = model.clips().first().id;
        copyWithXclip(memory, b);
        QTRY_COMPARE_WITH_TIMEOUT(firstText(model), b, captureTimeout);
        copyWithXclip(memory, a);
        QTRY_COMPARE_WITH_TIMEOUT(firstText(model), a, captureTimeout);
        QCOMPARE(model.clips().first().id, firstId);

        // A password manager's copy: seen as a change, never read, never stored.
        qint64 count = pasteboard.changeCount();
        QProcess* secret =
            startProcess(QCoreApplication::applicationFilePath(),
                         {QStringLiteral("--serve-concealed"), QStringLiteral("geheimes Passwort")});
        QByteArray secretOutput;
        QTRY_VERIFY_WITH_TIMEOUT((secretOutput += secret->readAllStandardOutput()).contains("serving"),
                                 captureTimeout);
        QTRY_VERIFY_WITH_TIMEOUT(pasteboard.changeCount() > count, captureTimeout);
        QTest::qWait(200);
        QVERIFY(pasteboard.types().contains(Pasteboard::concealedType()));
        QCOMPARE(pasteboard.string(), std::nullopt);
        secretOutput += secret->readAllStandardOutput();
        QVERIFY2(!secretOutput.contains("asked:"), secretOutput.constData());

        // A blank copy: a change, nothing stored.
        count = pasteboard.changeCount();
        copyWithXclip(memory, QStringLiteral(" \n\t \n"));
        QTRY_VERIFY_WITH_TIMEOUT(pasteboard.changeCount() > count, captureTimeout);
        QTest::qWait(200);
        QCOMPARE(pasteboard.string(), std::optional<QString>(QStringLiteral(" \n\t \n")));

        const QList<Clip> stored = ClipboardArchive(path).load();
        QCOMPARE(stored.size(), 2);
        QCOMPARE(stored.at(0).text, a);
        QCOMPARE(stored.at(0).id, firstId);
        QCOMPARE(stored.at(1).text, b);
        QCOMPARE(model.clips(), stored);

        // Copy-back: our own write, and the X server's echo of it, are not captured again,
        // and an outside reader gets the text from us.
        count = pasteboard.changeCount();
        model.copyBack(model.clips().at(1));
        QCOMPARE(pasteboard.changeCount(), count + 1);
        QTest::qWait(300);
        QCOMPARE(pasteboard.changeCount(), count + 1);
        QCOMPARE(model.clips(), stored);
        QProcess* reader =
            startProcess(QStringLiteral("xclip"),
                         {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
        QTRY_COMPARE_WITH_TIMEOUT(reader->state(), QProcess::NotRunning, captureTimeout);
        QCOMPARE(QString::fromUtf8(reader->readAllStandardOutput()), b);
        QCOMPARE(ClipboardArchive(path).load(), stored);

        // The next outside copy after ours is captured again.
        const QString c = QStringLiteral("Dritter Text C");
        copyWithXclip(memory, c);
        QTRY_COMPARE_WITH_TIMEOUT(firstText(model), c, captureTimeout);
        QCOMPARE(model.clips().size(), 3);
    }

private:
    static bool watching(LinuxPasteboard& pasteboard)
    {
        QSignalSpy started(&pasteboard, &LinuxPasteboard::watching);
        return started.wait(captureTimeout);
    }

    static QString firstText(const Model& model)
    {
        return model.clips().isEmpty() ? QString() : model.clips().first().text;
    }

    QProcess* startProcess(const QString& program, const QStringList& arguments)
    {
        m_processes.push_back(std::make_unique<QProcess>());
        QProcess* process = m_processes.back().get();
        process->start(program, arguments);
        process->waitForStarted();
        return process;
    }

    // xclip stays in the foreground (-quiet) and serves the text until another owner takes
    // the selection; the copy gets a later date than the one before.
    void copyWithXclip(MemoryPlatform& memory, const QString& text)
    {
        memory.clock.advance(1.0);
        QProcess* xclip =
            startProcess(QStringLiteral("xclip"), {QStringLiteral("-quiet"), QStringLiteral("-selection"),
                                                   QStringLiteral("clipboard"), QStringLiteral("-i")});
        xclip->write(text.toUtf8());
        xclip->closeWriteChannel();
    }

    std::vector<std::unique_ptr<QProcess>> m_processes;
};

int runX11ClipboardTests(int argc, char** argv)
{
    X11ClipboardTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "X11ClipboardTest.moc"
