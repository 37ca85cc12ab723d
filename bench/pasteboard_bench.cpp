// What a clipboard owner that does not answer costs the rest of the program, on the current X
// display. Prints figures; asserts nothing.
//
//   1. hover -> open panel of the real program (build/brenlow) right after an owner that never
//      answers took the clipboard;
//   2. copy -> snapshot: from a well-behaved owner taking the clipboard to the pasteboard of this
//      process reporting the change with its text;
//   3. the main thread's longest stall while the model captures from an owner that never
//      answers (once, and re-taking the clipboard every 4 s).
//
// Run it on a display of its own, for example:
//   xvfb-run -a -s "-screen 0 1920x1080x24" dbus-run-session build/bench/pasteboard_bench [rounds]

#include "model/Model.h"
#include "platform/linux/LinuxPasteboard.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"

#include "PanelDisplay.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QRect>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QUuid>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>
#include <poll.h>
#include <unistd.h>

namespace {

qint64 monotonicNanoseconds()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return qint64(ts.tv_sec) * 1'000'000'000 + ts.tv_nsec;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

QString spread(QList<double> values)
{
    if (values.isEmpty())
        return QStringLiteral("no samples");
    std::sort(values.begin(), values.end());
    return QStringLiteral("median %1 ms, min %2, max %3 (%4 samples)")
        .arg(median(values), 0, 'f', 1)
        .arg(values.first(), 0, 'f', 1)
        .arg(values.last(), 0, 'f', 1)
        .arg(values.size());
}

void row(const char* what, const QString& value)
{
    std::printf("  %s %s\n", QString::fromUtf8(what).leftJustified(58).toUtf8().constData(),
                value.toUtf8().constData());
    std::fflush(stdout);
}

xcb_atom_t intern(xcb_connection_t* c, const char* name)
{
    auto* reply = xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name), nullptr);
    const xcb_atom_t atom = reply ? reply->atom : XCB_NONE;
    std::free(reply);
    return atom;
}

// ---- the owner: a child process on its own X connection --------------------------------

// Reads lines from stdin: "take <text>" takes the CLIPBOARD with that text and prints
// "taken <monotonic ns>" once the server has made it the owner. `answers`: whether it hands its
// content over at all ("good") or leaves every request unanswered ("hung").
int runOwner(bool answers)
{
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c))
        return 2;
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    const xcb_window_t window = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t clipboard = intern(c, "CLIPBOARD");
    const xcb_atom_t targets = intern(c, "TARGETS");
    const xcb_atom_t utf8 = intern(c, "UTF8_STRING");
    QByteArray text;
    QByteArray input;
    pollfd fds[2] = {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(c), POLLIN, 0}};
    for (;;) {
        while (xcb_generic_event_t* event = xcb_poll_for_event(c)) {
            if ((event->response_type & 0x7f) == XCB_SELECTION_REQUEST && answers) {
                auto* request = reinterpret_cast<xcb_selection_request_event_t*>(event);
                xcb_selection_notify_event_t notify{};
                notify.response_type = XCB_SELECTION_NOTIFY;
                notify.time = request->time;
                notify.requestor = request->requestor;
                notify.selection = request->selection;
                notify.target = request->target;
                notify.property = request->property;
                if (request->target == targets) {
                    const xcb_atom_t offered[] = {targets, utf8};
                    xcb_change_property(c, XCB_PROP_MODE_REPLACE, request->requestor, request->property,
                                        XCB_ATOM_ATOM, 32, 2, offered);
                } else if (request->target == utf8) {
                    xcb_change_property(c, XCB_PROP_MODE_REPLACE, request->requestor, request->property, utf8,
                                        8, uint32_t(text.size()), text.constData());
                } else {
                    notify.property = XCB_NONE;
                }
                xcb_send_event(c, 0, request->requestor, XCB_EVENT_MASK_NO_EVENT,
                               reinterpret_cast<const char*>(&notify));
            }
            std::free(event);
        }
        xcb_flush(c);
        if (xcb_connection_has_error(c))
            return 1;
        if (poll(fds, 2, -1) < 0)
            continue;
        if (!(fds[0].revents & (POLLIN | POLLHUP)))
            continue;
        char buffer[4096];
        const ssize_t got = read(STDIN_FILENO, buffer, sizeof buffer);
        if (got <= 0)
            return 0;
        input.append(buffer, int(got));
        for (qsizetype end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
            const QByteArray line = input.left(end);
            input.remove(0, end + 1);
            if (!line.startsWith("take "))
                continue;
            text = line.mid(5);
            xcb_set_selection_owner(c, window, clipboard, XCB_CURRENT_TIME);
            std::free(xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, clipboard), nullptr));
            std::printf("taken %lld\n", static_cast<long long>(monotonicNanoseconds()));
            std::fflush(stdout);
        }
    }
}

class Owner
{
public:
    explicit Owner(const char* mode)
    {
        m_process.start(QCoreApplication::applicationFilePath(),
                        {QStringLiteral("--owner"), QString::fromLatin1(mode)});
        m_process.waitForStarted();
    }
    ~Owner()
    {
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished(2000))
            m_process.kill();
        m_process.waitForFinished();
    }
    // Takes the clipboard; answers the moment the server made it the owner.
    std::optional<qint64> take(const QString& text)
    {
        m_process.write("take " + text.toUtf8() + '\n');
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(5000))
                return std::nullopt;
        }
        const QByteArray line = m_process.readLine().trimmed();
        return line.startsWith("taken ") ? std::optional<qint64>(line.mid(6).toLongLong()) : std::nullopt;
    }

private:
    QProcess m_process;
};

// ---- 1. hover latency of the real program ------------------------------------------------

void measureHover(int rounds)
{
    std::printf("\nHover -> open panel of build/brenlow, 100 ms after an owner that never answers took "
                "the clipboard\n");
    PanelDisplay display;
    display.c = xcb_connect(nullptr, nullptr);
    display.root = xcb_setup_roots_iterator(xcb_get_setup(display.c)).data->root;

    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    Defaults(QString::fromLatin1(Defaults::standardDomain))
        .setBool(QStringLiteral("welcome.completed"), true);

    display.warp(300, 800);
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.setStandardOutputFile(QProcess::nullDevice());
    program.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../brenlow"), {});
    std::optional<xcb_window_t> panel;
    for (int i = 0; i < 200 && !panel && program.waitForStarted(); ++i) {
        QThread::msleep(50);
        panel = display.findPanel();
    }
    if (!panel) {
        row("hover latency", QStringLiteral("skipped: the panel did not appear"));
        program.kill();
        program.waitForFinished();
        xcb_disconnect(display.c);
        return;
    }
    const QRect closed = display.geometry(*panel);
    QThread::sleep(2);

    Owner hung("hung");
    QList<double> firstChange, fullFrame;
    int missed = 0;
    for (int round = 0; round < rounds; ++round) {
        display.warp(300, 800);
        QElapsedTimer settle;
        settle.start();
        while (display.geometry(*panel).size() != closed.size() && settle.elapsed() < 60000)
            QThread::msleep(5);
        QThread::msleep(1000);
        if (!hung.take(QStringLiteral("hängt %1").arg(round)))
            break;
        QThread::msleep(100);
        QElapsedTimer clock;
        clock.start();
        display.warp(closed.center().x(), 2);
        std::optional<double> first;
        while (clock.elapsed() < 60000) {
            const QSize size = display.geometry(*panel).size();
            const double ms = double(clock.nsecsElapsed()) / 1e6;
            if (!first && size != closed.size())
                first = ms;
            if (size == QSize(620, 378)) {
                firstChange.append(*first);
                fullFrame.append(ms);
                break;
            }
            QThread::usleep(500);
        }
        if (clock.elapsed() >= 60000)
            ++missed;
    }
    row("hover -> first frame change", spread(firstChange));
    row("hover -> full frame (animation 160 ms)", spread(fullFrame));
    if (missed > 0)
        row("rounds without an open panel within 60 s", QString::number(missed));

    display.warp(300, 800);
    program.terminate();
    if (!program.waitForFinished(30000))
        program.kill();
    program.waitForFinished();
    xcb_disconnect(display.c);
}

// ---- 2. copy -> snapshot -----------------------------------------------------------------

void measureCopyToSnapshot(int copies)
{
    std::printf("\nCopy -> snapshot: a well-behaved owner takes the clipboard; this process's pasteboard "
                "reports the change and its text\n");
    LinuxPasteboard pasteboard(QGuiApplication::clipboard());
    Owner owner("good");
    // Let the pasteboard settle in before the first copy.
    QEventLoop settle;
    QTimer::singleShot(500, &settle, &QEventLoop::quit);
    settle.exec();
    QList<double> latencies;
    int missed = 0;
    for (int i = 0; i < copies; ++i) {
        const QString text = QStringLiteral("Latenz %1 %2").arg(i).arg(QUuid::createUuid().toString());
        qint64 seenAt = 0;
        QEventLoop loop;
        // The text is read where the change is reported, as the capture step would.
        const auto connection = QObject::connect(&pasteboard, &Pasteboard::changed, &loop, [&] {
            if (pasteboard.string() == text) {
                seenAt = monotonicNanoseconds();
                loop.quit();
            }
        });
        QTimer::singleShot(10000, &loop, &QEventLoop::quit);
        const std::optional<qint64> takenAt = owner.take(text);
        if (seenAt == 0 && takenAt)
            loop.exec();
        QObject::disconnect(connection);
        if (seenAt == 0 || !takenAt)
            ++missed;
        else
            latencies.append(double(seenAt - *takenAt) / 1e6);
        QThread::msleep(50);
    }
    row("owner took the clipboard -> change with its text", spread(latencies));
    if (missed > 0)
        row("copies not seen within 10 s", QString::number(missed));
}

// ---- 3. main-thread stalls -----------------------------------------------------------------

// Runs the event loop for `seconds` with a 2 ms timer and reports the longest gap between its
// ticks, the time spent in gaps over 50 ms, and how often the clipboard was reported changed.
void measureStalls(const char* what, const char* mode, double seconds, int retakeEveryMs)
{
    QTemporaryDir folder;
    Defaults defaults(QStringLiteral("Brenlow.Bench.") + QUuid::createUuid().toString(QUuid::WithoutBraces));
    MemoryPlatform memory;
    LinuxPasteboard pasteboard(QGuiApplication::clipboard());
    const Platform platform = memory.platform(pasteboard);
    {
        Model model(defaults, platform, true, pasteboard,
                    folder.filePath(QStringLiteral("h/clipboard.sqlite")));
        Owner owner(mode);
        int changes = 0;
        QObject::connect(&pasteboard, &Pasteboard::changed, &model, [&] { ++changes; });

        qint64 last = monotonicNanoseconds();
        double longest = 0;
        double stalled = 0;
        QTimer ticker;
        ticker.setTimerType(Qt::PreciseTimer);
        QObject::connect(&ticker, &QTimer::timeout, &model, [&] {
            const qint64 now = monotonicNanoseconds();
            const double gap = double(now - last) / 1e6;
            last = now;
            longest = std::max(longest, gap);
            if (gap > 50)
                stalled += gap;
        });
        int takes = 0;
        QTimer retake;
        QObject::connect(&retake, &QTimer::timeout, &model,
                         [&] { owner.take(QStringLiteral("hängt %1").arg(++takes)); });
        owner.take(QStringLiteral("hängt 0"));
        last = monotonicNanoseconds();
        ticker.start(2);
        if (retakeEveryMs > 0)
            retake.start(retakeEveryMs);
        QEventLoop loop;
        QTimer::singleShot(int(seconds * 1000), &loop, &QEventLoop::quit);
        QElapsedTimer wall;
        wall.start();
        loop.exec();
        const double ran = double(wall.nsecsElapsed()) / 1e9;
        std::printf("\n%s\n", what);
        row("observed for",
            QStringLiteral("%1 s (asked for %2 s)").arg(ran, 0, 'f', 1).arg(seconds, 0, 'f', 0));
        row("longest main-thread stall", QStringLiteral("%1 ms").arg(longest, 0, 'f', 1));
        row("time in stalls over 50 ms", QStringLiteral("%1 ms").arg(stalled, 0, 'f', 0));
        row("owner's takes / changes reported", QStringLiteral("%1 / %2").arg(takes + 1).arg(changes));
    }
    defaults.removeDomain();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--owner") == 0)
        return runOwner(std::strcmp(argv[2], "good") == 0);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        std::fprintf(stderr, "pasteboard_bench: needs an X display\n");
        return 2;
    }
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
    measureCopyToSnapshot(30);
    // The same loop with an owner that answers: what the machine's load alone costs.
    measureStalls("Main thread while the model captures from an owner that answers (taken once)", "good", 10,
                  0);
    measureStalls("Main thread while the model captures from an owner that never answers (taken once)",
                  "hung", 25, 0);
    measureStalls("Main thread while an owner that never answers re-takes the clipboard every 4 s", "hung",
                  30, 4000);
    measureHover(rounds);
    return 0;
}
