// Figures of screen capture on the current X display (run it under xvfb-run): the time from the
// click to the running selection (the 0.3 s pause included), from the chosen area to the
// screenshot on the shelf, Brenlow's own CPU time while ffmpeg records, and, when a camera is
// present, the mirror's time from start to the first picture. Prints figures; asserts nothing.
//   xvfb-run -a build/bench/capture_bench
#include "capture/CameraMirror.h"
#include "capture/ScreenCapture.h"
#include "common/Clock.h"
#include "common/Scheduler.h"
#include "model/Model.h"
#include "platform/linux/LinuxCameraFeed.h"
#include "platform/linux/LinuxCaptureTool.h"
#include "platform/linux/LinuxDialogs.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QUuid>

#include <cstdio>
#include <ctime>

namespace {

// Runs the event loop until `done` holds or `ms` have passed.
template <typename Done> bool waitFor(Done done, int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::usleep(500);
    }
    return done();
}

// The plain event loop, as the running program idles (no polling of our own to measure).
void idle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

double cpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QString domain =
        QStringLiteral("Brenlow.Bench.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        Defaults defaults(domain);
        MemoryPlatform memory;
        Model model(defaults, memory.platform(), false, memory.pasteboard);
        LinuxCaptureTool tool;
        LinuxDialogs dialogs;
        TimerScheduler scheduler;
        SystemClock clock;
        ScreenCapture capture({tool, dialogs, scheduler, clock, memory.statusBar}, model.statusMessage(),
                              model.activity(), model.shelf());
        QTemporaryDir folder;
        tool.extension(CaptureTool::Mode::video); // the encoder probe, as the page does when shown

        // 1. Click to the running selection (slop waiting for the drag).
        qunsetenv("BRENLOW_CAPTURE_GEOMETRY");
        qputenv("BRENLOW_CAPTURE_DESTINATION", folder.filePath(QStringLiteral("a.png")).toUtf8());
        QElapsedTimer timer;
        timer.start();
        capture.capture(CaptureKind::screenshot);
        waitFor([&] { return tool.running(); }, 5000);
        std::printf("click -> selection running:       %6.0f ms (goal < 400, 300 of them the pause)\n",
                    double(timer.elapsed()));
        capture.stopRecording(); // cancels the selection
        waitFor([&] { return !capture.captureBusy(); }, 5000);

        // 2. Chosen area to the file on the shelf: the flow with a fixed area, minus the pause.
        for (int round = 0; round < 5; ++round) {
            qputenv("BRENLOW_CAPTURE_GEOMETRY", "800x600+0+0");
            qputenv("BRENLOW_CAPTURE_DESTINATION",
                    folder.filePath(QStringLiteral("shot%1.png").arg(round)).toUtf8());
            QElapsedTimer shot;
            qint64 launched = -1;
            shot.start();
            capture.capture(CaptureKind::screenshot);
            waitFor(
                [&] {
                    if (launched < 0 && tool.running())
                        launched = shot.elapsed();
                    return !capture.captureBusy();
                },
                10000);
            std::printf("area -> on the shelf (800x600):    %6lld ms (goal < 300)\n",
                        shot.elapsed() - std::max<qint64>(launched, 0));
        }

        // 3. Brenlow's CPU while ffmpeg records 1280x720 for 3 s.
        qputenv("BRENLOW_CAPTURE_GEOMETRY", "1280x720+0+0");
        qputenv("BRENLOW_CAPTURE_DESTINATION", folder.filePath(QStringLiteral("rec.mp4")).toUtf8());
        capture.capture(CaptureKind::video);
        waitFor([&] { return capture.recordingActive(); }, 5000);
        const double cpuBefore = cpuSeconds();
        QElapsedTimer wall;
        wall.start();
        idle(3000);
        const double cpu = cpuSeconds() - cpuBefore;
        std::printf("own CPU while recording:           %6.2f %% of one core (%.0f ms in %.1f s)\n",
                    100.0 * cpu / (wall.elapsed() / 1000.0), cpu * 1000, wall.elapsed() / 1000.0);
        capture.stopRecording();
        waitFor([&] { return !capture.recordingActive(); }, 20000);
        std::printf("recording result: %s\n", qPrintable(capture.captureStatus()));

        // 4. How long launch() itself holds the main thread, for a fresh tool whose encoder probe
        // has only just started (the first recording of a session) and for a screenshot, and the
        // time until the recording writes.
        {
            LinuxCaptureTool fresh;
            fresh.extension(CaptureTool::Mode::video);
            qputenv("BRENLOW_CAPTURE_GEOMETRY", "320x240+0+0");
            QElapsedTimer call;
            call.start();
            const bool started =
                !fresh.launch(CaptureTool::Mode::video, folder.filePath(QStringLiteral("first.mp4")));
            const double launchMs = call.nsecsElapsed() / 1e6;
            waitFor(
                [&] {
                    return QFileInfo(folder.filePath(QStringLiteral("first.mp4"))).size() > 0 ||
                           !fresh.running();
                },
                20000);
            std::printf("first recording: launch() blocks   %8.2f ms, writing after %6lld ms%s\n", launchMs,
                        call.elapsed(), started ? "" : " (did not start)");
            fresh.stop();
            waitFor([&] { return !fresh.running(); }, 20000);

            qputenv("BRENLOW_CAPTURE_GEOMETRY", "320x240+0+0");
            call.start();
            const bool shot =
                !fresh.launch(CaptureTool::Mode::screenshot, folder.filePath(QStringLiteral("b.png")));
            const double shotMs = call.nsecsElapsed() / 1e6;
            waitFor([&] { return !fresh.running(); }, 20000);
            std::printf("screenshot: launch() blocks        %8.2f ms%s\n", shotMs,
                        shot ? "" : " (did not start)");
        }

        // 5. Mirror start to first picture, when there is a camera.
        LinuxCameraFeed feed;
        CameraMirror mirror(feed);
        QElapsedTimer start;
        start.start();
        mirror.start();
        waitFor([&] { return !mirror.frame().isNull() || (!mirror.starting() && !mirror.running()); }, 10000);
        if (mirror.frame().isNull())
            std::printf("mirror: %s\n", qPrintable(mirror.status()));
        else
            std::printf("mirror start -> first picture:     %6lld ms (goal < 1000)\n", start.elapsed());
        mirror.stop();
    }
    Defaults::removeDomain(domain, Defaults::standardFolder());
    return 0;
}
