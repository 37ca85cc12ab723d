// Idle cost and hover latency of the running program on the current X display.
//
// Starts build/brenlow with scratch settings (tour done), parks the pointer away from the notch
// and reads the child's CPU time and resident memory from /proc over a quiet minute. Then warps
// the pointer onto the notch from rest, again and again, and times how long the panel takes to
// reach its full open frame. Run it on a display of its own, for example:
//   xvfb-run -a -s "-screen 0 1920x1080x24" dbus-run-session build/bench/idle_bench [seconds] [rounds]

#include "settings/Defaults.h"

#include "PanelDisplay.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRect>
#include <QTemporaryDir>
#include <QThread>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <unistd.h>
#include <vector>

namespace {

struct Cpu
{
    double statMs = 0;      // utime + stime, in clock ticks converted to ms
    double scheduledMs = 0; // sum of the threads' run time, nanosecond resolution
};

Cpu cpuOf(qint64 pid)
{
    Cpu cpu;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (stat.open(QIODevice::ReadOnly)) {
        const QByteArray line = stat.readAll();
        // Fields after the command name, which may contain spaces, start after the last ')'.
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        const double tick = 1000.0 / double(sysconf(_SC_CLK_TCK));
        cpu.statMs = (fields.value(11).toDouble() + fields.value(12).toDouble()) * tick;
    }
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile schedstat(tasks.filePath(task + QStringLiteral("/schedstat")));
        if (schedstat.open(QIODevice::ReadOnly))
            cpu.scheduledMs += schedstat.readAll().split(' ').value(0).toDouble() / 1e6;
    }
    return cpu;
}

QByteArray statusField(qint64 pid, const char* name)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(int(std::strlen(name))).trimmed();
    }
    return {};
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 10;
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/../brenlow");

    PanelDisplay display;
    display.c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(display.c)) {
        std::fprintf(stderr, "idle_bench: needs an X display\n");
        return 2;
    }
    display.root = xcb_setup_roots_iterator(xcb_get_setup(display.c)).data->root;

    // Scratch settings with the tour done, so the first start does not play the welcome.
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    Defaults(QString::fromLatin1(Defaults::standardDomain))
        .setBool(QStringLiteral("welcome.completed"), true);
    // Optionally a stored history to start over (clipboard_bench --write-history N FILE makes one).
    if (argc > 3) {
        const QString folder = home.filePath(QStringLiteral("data/Brenlow"));
        QDir().mkpath(folder);
        if (!QFile::copy(QString::fromLocal8Bit(argv[3]), folder + QStringLiteral("/clipboard.sqlite"))) {
            std::fprintf(stderr, "idle_bench: cannot copy the history %s\n", argv[3]);
            return 2;
        }
        std::printf("history: %s\n", argv[3]);
    }

    display.warp(300, 800);
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.setStandardOutputFile(QProcess::nullDevice());
    child.start(program, {});
    if (!child.waitForStarted(10000)) {
        std::fprintf(stderr, "idle_bench: cannot start %s\n", qPrintable(program));
        return 2;
    }
    const qint64 pid = child.processId();

    std::optional<xcb_window_t> panel;
    for (int i = 0; i < 200 && !panel; ++i) {
        QThread::msleep(50);
        panel = display.findPanel();
    }
    if (!panel) {
        std::fprintf(stderr, "idle_bench: the panel window did not appear\n");
        child.kill();
        return 2;
    }
    // Idle: panel closed, pointer resting away from it. The window may still be placed and a long
    // history loaded during the first seconds, so its closed frame is read after them.
    QThread::sleep(5);
    const QRect closed = display.geometry(*panel);
    std::printf("panel window 0x%x, closed frame %dx%d+%d+%d\n", *panel, closed.width(), closed.height(),
                closed.x(), closed.y());
    const Cpu before = cpuOf(pid);
    QThread::sleep(ulong(seconds));
    const Cpu after = cpuOf(pid);
    const double perMinute = 60.0 / seconds;
    std::printf("idle %d s: CPU %.1f ms per minute (threads' run time), %.0f ms per minute (utime+stime, "
                "10 ms ticks)\n",
                seconds, (after.scheduledMs - before.scheduledMs) * perMinute,
                (after.statMs - before.statMs) * perMinute);
    std::printf("resident memory: VmRSS %s, peak VmHWM %s, threads %s\n",
                statusField(pid, "VmRSS:").constData(), statusField(pid, "VmHWM:").constData(),
                statusField(pid, "Threads:").constData());

    // Latency: from the pointer arriving on the notch to the full open frame (620 x 378).
    std::vector<double> firstChange;
    std::vector<double> fullFrame;
    for (int round = 0; round < rounds; ++round) {
        display.warp(300, 800);
        QElapsedTimer settle;
        settle.start();
        while (display.geometry(*panel).size() != closed.size() && settle.elapsed() < 5000)
            QThread::msleep(5);
        // Let the poll fall asleep again.
        QThread::msleep(1000);
        QElapsedTimer clock;
        clock.start();
        display.warp(closed.center().x(), 2);
        std::optional<double> first;
        double full = -1;
        while (clock.elapsed() < 3000) {
            const QSize size = display.geometry(*panel).size();
            const double ms = double(clock.nsecsElapsed()) / 1e6;
            if (!first && size != closed.size())
                first = ms;
            if (size == QSize(620, 378)) {
                full = ms;
                break;
            }
            QThread::usleep(500);
        }
        if (full < 0) {
            const QRect seen = display.geometry(*panel);
            std::printf(
                "round %d: the panel did not reach its open frame (last seen %dx%d+%d+%d, first change %s)\n",
                round + 1, seen.width(), seen.height(), seen.x(), seen.y(),
                first ? qPrintable(QString::number(*first, 'f', 1) + QStringLiteral(" ms")) : "none");
            continue;
        }
        firstChange.push_back(first.value_or(full));
        fullFrame.push_back(full);
    }
    if (!fullFrame.empty()) {
        std::printf("hover to first frame change: median %.1f ms, min %.1f, max %.1f (%zu rounds)\n",
                    median(firstChange), *std::min_element(firstChange.begin(), firstChange.end()),
                    *std::max_element(firstChange.begin(), firstChange.end()), firstChange.size());
        std::printf("hover to full frame: median %.1f ms, min %.1f, max %.1f (animation 160 ms)\n",
                    median(fullFrame), *std::min_element(fullFrame.begin(), fullFrame.end()),
                    *std::max_element(fullFrame.begin(), fullFrame.end()));
    }

    display.warp(300, 800);
    child.terminate();
    if (!child.waitForFinished(5000))
        child.kill();
    xcb_disconnect(display.c);
    return 0;
}
