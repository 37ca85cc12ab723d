#include "TestSupport.h"

#include "capture/ScreenCapture.h"
#include "common/Clock.h"
#include "common/Scheduler.h"
#include "model/PanelState.h"
#include "platform/linux/LinuxCaptureTool.h"
#include "platform/linux/LinuxDialogs.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The capture flow with the real X11 programs and the real save-dialog service, on the test's
// display; the model supplies the panel, status line, activity list and shelf.
struct Rig
{
    Rig()
        : capture(ScreenCapture::Services{tool, dialogs, scheduler, clock, fixture.memory.statusBar},
                  fixture.model->statusMessage(), fixture.model->activity(), fixture.model->shelf())
    {}

    // Runs one capture into `destination` until its flow has finished.
    bool run(CaptureKind kind, const QString& destination, const QString& geometry)
    {
        qputenv("BRENLOW_CAPTURE_DESTINATION", destination.toUtf8());
        if (geometry.isEmpty())
            qunsetenv("BRENLOW_CAPTURE_GEOMETRY");
        else
            qputenv("BRENLOW_CAPTURE_GEOMETRY", geometry.toUtf8());
        capture.capture(kind);
        return capture.captureBusy();
    }
    bool finished()
    {
        return QTest::qWaitFor([this] { return !capture.captureBusy() && !capture.recordingActive(); },
                               30000);
    }

    ModelFixture fixture;
    LinuxCaptureTool tool;
    LinuxDialogs dialogs;
    TimerScheduler scheduler;
    SystemClock clock;
    ScreenCapture capture;
};

double probeDuration(const QString& path, QString* codec)
{
    QProcess probe;
    probe.start(QStringLiteral("ffprobe"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
                 QStringLiteral("format=duration:stream=codec_name"), QStringLiteral("-of"),
                 QStringLiteral("default=nw=1"), path});
    if (!probe.waitForFinished(20000) || probe.exitCode() != 0)
        return -1;
    double duration = -1;
    for (const QByteArray& line : probe.readAllStandardOutput().split('\n')) {
        if (line.startsWith("duration="))
            duration = line.mid(9).toDouble();
        else if (line.startsWith("codec_name="))
            *codec = QString::fromUtf8(line.mid(11));
    }
    return duration;
}

// What the recording in progress has written so far (the hidden files of the folder).
qint64 writtenBytes(const QString& folder)
{
    qint64 total = 0;
    for (const QFileInfo& file :
         QDir(folder).entryInfoList({QStringLiteral(".brenlow-capture-*")}, QDir::Files | QDir::Hidden))
        total += file.size();
    return total;
}

bool writeProgram(const QString& path, const QByteArray& script)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(script) != script.size())
        return false;
    file.close();
    return file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

class CaptureX11Test : public QObject
{
    Q_OBJECT

    QTemporaryDir m_root;

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        QVERIFY(m_root.isValid());
        if (qEnvironmentVariableIsEmpty("DISPLAY"))
            QSKIP("needs an X display (run under xvfb-run)");
        for (const char* program : {"maim", "slop", "ffmpeg", "ffprobe", "xdotool"})
            QVERIFY2(!QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty(), program);
    }
    void cleanup()
    {
        qunsetenv("BRENLOW_CAPTURE_DESTINATION");
        qunsetenv("BRENLOW_CAPTURE_GEOMETRY");
    }

    void screenshotOfAnAreaLandsOnTheShelfAndReplacesAnOldFile()
    {
        Rig rig;
        const QString folder = m_root.filePath(QStringLiteral("Spaces and 'quotes'"));
        QVERIFY(QDir().mkpath(folder));
        const QString destination = folder + QStringLiteral("/shot \"one\".png");
        for (const QString& geometry : {QStringLiteral("200x100+10+20"), QStringLiteral("64x48+0+0")}) {
            QVERIFY(rig.run(CaptureKind::screenshot, destination, geometry));
            QVERIFY(rig.finished());
            QCOMPARE(rig.capture.captureStatus(),
                     QStringLiteral("Screenshot gespeichert und zur Ablage hinzugefügt."));
        }
        // The second shot replaced the first under the same name.
        QImage image(destination, "PNG");
        QCOMPARE(image.size(), QSize(64, 48));
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), 1);
        QCOMPARE(rig.fixture.model->files(), QList<QUrl>{QUrl::fromLocalFile(destination)});
        QCOMPARE(rig.fixture.model->notices().first().detail, QStringLiteral("shot \"one\".png"));
    }

    void recordingStoppedFromTheTrayIsPlayable()
    {
        Rig rig;
        const QString destination = m_root.filePath(QStringLiteral("rec ording.mp4"));
        QVERIFY(rig.run(CaptureKind::video, destination, QStringLiteral("161x121+0+0")));
        QVERIFY(QTest::qWaitFor([&] { return rig.capture.recordingActive(); }, 5000));
        // Two seconds from the first frame written (ffmpeg takes a while to start on a busy machine).
        QVERIFY(QTest::qWaitFor([&] { return writtenBytes(m_root.path()) > 0; }, 20000));
        QTest::qWait(2000);
        QVERIFY(rig.fixture.memory.statusBar.clickStop());
        QVERIFY(rig.finished());
        QCOMPARE(rig.capture.captureStatus(),
                 QStringLiteral("Bildschirmaufnahme gespeichert und zur Ablage hinzugefügt."));
        QString codec;
        const double duration = probeDuration(destination, &codec);
        QVERIFY2(duration > 1.0 && duration < 6.0, qPrintable(QString::number(duration)));
        QCOMPARE(codec, QStringLiteral("h264"));
    }

    void quittingDuringARecordingKeepsTheFile()
    {
        const QString destination = m_root.filePath(QStringLiteral("quit.mp4"));
        {
            Rig rig;
            QVERIFY(rig.run(CaptureKind::video, destination, QStringLiteral("120x80+5+5")));
            QVERIFY(QTest::qWaitFor([&] { return writtenBytes(m_root.path()) > 0; }, 20000));
            QTest::qWait(500);
            rig.capture.finishBeforeQuit();
            QVERIFY(!rig.capture.recordingActive());
            QCOMPARE(rig.fixture.model->files().size(), 1);
        }
        QString codec;
        QVERIFY(probeDuration(destination, &codec) > 0);
    }

    void escapeDuringTheSelectionLeavesNoFile()
    {
        Rig rig;
        QTemporaryDir folder;
        QVERIFY(rig.run(CaptureKind::screenshot, folder.filePath(QStringLiteral("never.png")), QString()));
        // The real slop is waiting for a drag; Escape until it has grabbed the keyboard and gone.
        const bool ended = QTest::qWaitFor(
            [&] {
                if (rig.tool.running())
                    QProcess::execute(QStringLiteral("xdotool"),
                                      {QStringLiteral("key"), QStringLiteral("Escape")});
                return !rig.capture.captureBusy();
            },
            20000);
        QVERIFY(ended);
        QCOMPARE(rig.capture.captureStatus(),
                 QStringLiteral("Keine Aufnahme erstellt. Auswahl abgebrochen oder keine Datei erstellt."));
        QVERIFY(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
        QVERIFY(rig.fixture.model->files().isEmpty());
    }

    void missingProgramAndNoisyCrashAreExplained()
    {
        // A PATH of our own: first without maim, then with a maim that floods standard error.
        const QByteArray path = qgetenv("PATH");
        const auto restore = qScopeGuard([path] { qputenv("PATH", path); });
        QTemporaryDir bin;
        qputenv("PATH", bin.path().toUtf8());
        Rig rig;
        QTemporaryDir folder;
        // Not on the PATH at all, then found but impossible to start (told once the start failed).
        for (const QByteArray& maim : {QByteArray(), QByteArray("#!/nonexistent/sh\n")}) {
            QVERIFY(maim.isEmpty() || writeProgram(bin.filePath(QStringLiteral("maim")), maim));
            QVERIFY(rig.run(CaptureKind::screenshot, folder.filePath(QStringLiteral("a.png")),
                            QStringLiteral("10x10+0+0")));
            QVERIFY(rig.finished());
            QCOMPARE(
                rig.capture.captureStatus(),
                QStringLiteral("Bildschirmaufnahme konnte nicht gestartet werden: Das Programm „maim“ fehlt. "
                               "Installiere das Debian-Paket „maim“."));
        }

        QVERIFY(
            writeProgram(bin.filePath(QStringLiteral("maim")),
                         "#!/bin/sh\nfor a in \"$@\"; do last=\"$a\"; done\nprintf x > \"$last\"\n"
                         "/usr/bin/head -c 1048576 /dev/zero | /usr/bin/tr '\\0' 'e' >&2\nkill -SEGV $$\n"));
        QVERIFY(rig.run(CaptureKind::screenshot, folder.filePath(QStringLiteral("b.png")),
                        QStringLiteral("10x10+0+0")));
        QVERIFY(rig.finished());
        QCOMPARE(rig.capture.captureStatus(),
                 QStringLiteral("Keine Aufnahme erstellt. ") + QString(240, QLatin1Char('e')));
        QVERIFY(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
    }

    void aRecordingStoppedWhileTheEncodersAreAskedNeverStarts()
    {
        // An ffmpeg whose encoder list never comes: the recording waits for it, and is stopped.
        const QByteArray path = qgetenv("PATH");
        const auto restore = qScopeGuard([path] { qputenv("PATH", path); });
        QTemporaryDir bin;
        QVERIFY(writeProgram(bin.filePath(QStringLiteral("ffmpeg")),
                             "#!/bin/sh\ncase \"$*\" in *-encoders*) exec /bin/sleep 30;; esac\n"
                             "exec /usr/bin/ffmpeg \"$@\"\n"));
        qputenv("PATH", bin.path().toUtf8());
        Rig rig;
        QTemporaryDir folder;
        QVERIFY(rig.run(CaptureKind::video, folder.filePath(QStringLiteral("never.mp4")),
                        QStringLiteral("64x64+0+0")));
        QVERIFY(QTest::qWaitFor([&] { return rig.capture.recordingActive(); }, 5000));
        QVERIFY(rig.tool.running());
        QVERIFY(rig.fixture.memory.statusBar.clickStop());
        QVERIFY(!rig.tool.running());
        QCOMPARE(rig.capture.captureStatus(),
                 QStringLiteral("Keine Aufnahme erstellt. Auswahl abgebrochen oder keine Datei erstellt."));
        // Past the time the wait gives the probe: the stopped recording must not start after all.
        QTest::qWait(2500);
        QVERIFY(!rig.tool.running());
        QVERIFY(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
    }
};

QTEST_MAIN(CaptureX11Test)
#include "CaptureX11Test.moc"
