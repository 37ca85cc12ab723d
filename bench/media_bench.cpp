// Cost of the player connection. Run it on a display and a session bus of its own:
//   xvfb-run -a -s "-screen 0 1920x1080x24" dbus-run-session build/bench/media_bench [seconds] [rounds]
//
// 1. In this process, against the test player on the session bus: the main thread's run time per
//    poll (the D-Bus work happens on the media queue).
// 2. In this process, on the memory bridge: resident memory while 1,000 tracks with their own
//    covers come and go (the cover cache keeps 24).
// 3. build/brenlow with the connection on and the test player playing, panel closed: CPU per minute,
//    and the time from a track change in the player to the wing window being mapped.

#include "common/Clock.h"
#include "common/Scheduler.h"
#include "common/StatusMessage.h"
#include "media/ArtworkStore.h"
#include "media/NowPlaying.h"
#include "platform/linux/LinuxPlayerBridge.h"
#include "platform/memory/MemoryPlayerBridge.h"
#include "settings/Defaults.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QUuid>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// Run time of one thread (or the whole process with tid 0), in ms, from the scheduler's statistics.
double runMs(qint64 pid, qint64 tid = 0)
{
    const QString path = tid ? QStringLiteral("/proc/%1/task/%2/schedstat").arg(pid).arg(tid)
                             : QStringLiteral("/proc/%1/schedstat").arg(pid);
    if (tid == 0) {
        double total = 0;
        const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
        for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            total += runMs(pid, task.toLongLong());
        return total;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(0).toDouble() / 1e6;
}

QByteArray rss(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed();
    return {};
}

QString playerScript()
{
    // __FILE__ may be relative to the build folder, which holds bench/.
    const QDir build(QCoreApplication::applicationDirPath() + QStringLiteral("/.."));
    return QFileInfo(build, QStringLiteral(__FILE__))
        .dir()
        .absoluteFilePath(QStringLiteral("../tests/media_x11/mpris_player.py"));
}

void spin(int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
}

bool waitUntil(const std::function<bool()>& condition, int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > ms)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::usleep(200);
    }
    return true;
}

bool wingMapped()
{
    QProcess search;
    search.start(QStringLiteral("xdotool"),
                 {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                  QStringLiteral("Brenlow Einblendung")});
    search.waitForFinished(3000);
    return !search.readAllStandardOutput().trimmed().isEmpty();
}

void pollCost(Defaults& defaults, int polls)
{
    LinuxPlayerBridge bridge;
    SystemClock clock;
    TimerScheduler scheduler;
    StatusMessage message(scheduler);
    NowPlaying media(defaults, bridge, clock, scheduler, message);
    media.setMediaEnabled(true);
    if (!waitUntil([&] { return media.media().has_value(); }, 10000)) {
        std::printf("poll cost: the test player gave no track (%s)\n", qPrintable(media.mediaStatus()));
        return;
    }
    const qint64 tid = qint64(syscall(SYS_gettid));
    const double before = runMs(getpid(), tid);
    QElapsedTimer wall;
    wall.start();
    for (int i = 0; i < polls; ++i) {
        media.refreshMedia();
        waitUntil([&] { return !media.mediaBusy(); }, 5000);
    }
    const double mainMs = runMs(getpid(), tid) - before;
    std::printf("poll: main thread %.3f ms per poll (incl. event loop), wall %.2f ms per poll, %d polls\n",
                mainMs / polls, double(wall.elapsed()) / polls, polls);
}

void coverMemory(Defaults& defaults, int tracks)
{
    MemoryPlayerBridge bridge;
    SystemClock clock;
    TimerScheduler scheduler;
    StatusMessage message(scheduler);
    NowPlaying media(defaults, bridge, clock, scheduler, message);
    media.setMediaEnabled(true);
    std::printf("covers: RSS before %s\n", rss(getpid()).constData());
    for (int i = 1; i <= tracks; ++i) {
        const QString id = QString::number(i);
        QImage image(600, 600, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(i % 360, 200, 200));
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPG");
        bridge.setCover(QStringLiteral("Music"), id, png);
        bridge.setPlayer(QStringLiteral("Music"),
                         PlayerReply::list(MemoryPlayerBridge::track(id, {}, true, 100, 0, id)));
        media.refreshMedia();
        waitUntil([&] { return !media.mediaBusy() && media.media() && media.media()->trackID == id; }, 5000);
        waitUntil([&] { return media.artwork().hasImage(); }, 5000);
        if (i == 100 || i == 500 || i == tracks)
            std::printf("covers: RSS after %d tracks %s (cached %d)\n", i, rss(getpid()).constData(),
                        media.artwork().cachedCount());
    }
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 10;
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());

    QProcess player;
    player.start(QStringLiteral("/usr/bin/python3"), {playerScript(), QStringLiteral("brenlowbench")});
    if (!player.waitForReadyRead(10000)) {
        std::fprintf(stderr, "media_bench: the test player did not start (%s)\n", qPrintable(playerScript()));
        return 2;
    }
    {
        Defaults scratch(QStringLiteral("Brenlow.Bench.") +
                         QUuid::createUuid().toString(QUuid::WithoutBraces));
        pollCost(scratch, 200);
        coverMemory(scratch, 1000);
        scratch.removeDomain();
    }

    Defaults defaults(QString::fromLatin1(Defaults::standardDomain));
    defaults.setBool(QStringLiteral("welcome.completed"), true);
    defaults.setBool(QStringLiteral("mediaEnabled"), true);
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.setStandardOutputFile(QProcess::nullDevice());
    child.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../brenlow"), {});
    if (!child.waitForStarted(10000))
        return 2;
    const qint64 pid = child.processId();
    QThread::sleep(5);
    const double before = runMs(pid);
    QThread::sleep(ulong(seconds));
    std::printf("brenlow with a playing player, panel closed: CPU %.1f ms per minute, RSS %s\n",
                (runMs(pid) - before) * 60.0 / seconds, rss(pid).constData());

    std::vector<double> latencies;
    for (int round = 0; round < rounds; ++round) {
        waitUntil([] { return !wingMapped(); }, 8000);
        QElapsedTimer timer;
        timer.start();
        player.write("next\n");
        if (waitUntil(wingMapped, 5000))
            latencies.push_back(double(timer.nsecsElapsed()) / 1e6);
        else
            std::printf("round %d: no wing within 5 s\n", round + 1);
    }
    std::sort(latencies.begin(), latencies.end());
    if (!latencies.empty())
        std::printf("track change to wing mapped: median %.0f ms, min %.0f, max %.0f (%zu rounds, xdotool "
                    "polling adds a few ms)\n",
                    latencies[latencies.size() / 2], latencies.front(), latencies.back(), latencies.size());
    child.terminate();
    child.waitForFinished(5000);
    player.kill();
    player.waitForFinished(3000);
    return 0;
}
