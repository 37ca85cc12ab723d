// Figures of the clipboard history: start-up load, memory, capture cost, filtering and search,
// the idle heartbeat and the time from an outside copy to the history. Prints a table; asserts
// nothing. Run under an X display (Xvfb) for the copy-latency rows.
#include "clipboard/ClipboardArchive.h"
#include "clipboard/ClipboardHistory.h"
#include "clipboard/HistoryListModel.h"
#include "clipboard/VisibleClips.h"
#include "clipboard/widgets/HistoryPage.h"
#include "model/Model.h"
#include "platform/linux/LinuxPasteboard.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/memory/MemoryPlatform.h"
#include "productivity/Productivity.h"
#include "settings/Defaults.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QUuid>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

#include <sys/resource.h>

namespace {

// ---- measuring -------------------------------------------------------------------------

double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// CPU time of this process, every thread, in nanoseconds: waiting for other processes on a
// shared machine does not count.
double processCpuSeconds()
{
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

qint64 monotonicNanoseconds()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return qint64(ts.tv_sec) * 1'000'000'000 + ts.tv_nsec;
}

// Resident memory in MiB, from /proc (VmRSS, or VmHWM for the peak).
double residentMiB(const char* field = "VmRSS:")
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(qstrlen(field)).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return 0;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

void row(const char* what, const QString& value)
{
    std::printf("  %s %s\n", QString::fromUtf8(what).leftJustified(64).toUtf8().constData(),
                value.toUtf8().constData());
    std::fflush(stdout);
}

QString ms(double seconds)
{
    return QStringLiteral("%1 ms").arg(seconds * 1000.0, 0, 'f', 2);
}

// A private settings domain for one measurement, removed when it ends.
struct BenchDomain
{
    BenchDomain()
        : defaults(QStringLiteral("Brenlow.Bench.") + QUuid::createUuid().toString(QUuid::WithoutBraces))
    {}
    ~BenchDomain() { defaults.removeDomain(); }
    Defaults defaults;
};

QString us(double seconds)
{
    return QStringLiteral("%1 µs").arg(seconds * 1e6, 0, 'f', 3);
}

// ---- realistic clipboard texts ---------------------------------------------------------

const QStringList words =
    QStringLiteral(
        "der die das und ist nicht mit auf für von Rechnung Angebot Projekt Termin morgen heute Kunde "
        "Bericht "
        "Meeting Kaffee Straße Größe Übersicht Änderung bitte danke Grüße the and for with this that from "
        "update "
        "release build server client config value error warning Brenlow Notiz Adresse Telefon Liste Entwurf")
        .split(u' ');
const QStringList hosts{"example.com", "docs.qt.io", "github.com", "wikipedia.org",
                        "bahn.de",     "heise.de",   "sqlite.org"};

// A mix of what people copy: words and phrases, links, addresses, numbers, paths, colours,
// paragraphs, code and a few large pastes. `serial` keeps every text distinct without changing
// its kind.
class TextMaker
{
public:
    explicit TextMaker(quint32 seed) : m_random(seed) {}

    QString make(int serial)
    {
        const QString n = QString::number(serial);
        const int pick = m_random.bounded(100);
        if (pick < 28)
            return phrase(1 + m_random.bounded(8)) + u' ' + n;
        if (pick < 43)
            return QStringLiteral("https://%1/%2/%3?id=%4").arg(host(), word(), word(), n);
        if (pick < 47)
            return QStringLiteral("%1.%2%3@%4").arg(word(), word(), n, host());
        if (pick < 50)
            return QStringLiteral("+49 %1 %2")
                .arg(m_random.bounded(30, 999))
                .arg(serial, 7, 10, QLatin1Char('0'));
        if (pick < 53)
            return QStringLiteral("%1,%2").arg(n).arg(m_random.bounded(100), 2, 10, QLatin1Char('0'));
        if (pick < 58)
            return QStringLiteral("/home/anna/%1/%2-%3.txt").arg(word(), word(), n);
        if (pick < 60)
            return QStringLiteral("#%1").arg((quint32(serial) * 4099u) & 0xFFFFFFu, 6, 16, QLatin1Char('0'));
        if (pick < 85)
            return paragraph(12 + m_random.bounded(220)) + QStringLiteral(" (") + n + u')';
        if (pick < 99)
            return code(6 + m_random.bounded(100)) + QStringLiteral("\n// ") + n;
        return paragraph(800 + m_random.bounded(7000)) + QStringLiteral(" (") + n + u')';
    }

private:
    QString word() { return words.at(m_random.bounded(int(words.size()))); }
    QString host() { return hosts.at(m_random.bounded(int(hosts.size()))); }
    QString phrase(int count)
    {
        QStringList parts;
        for (int i = 0; i < count; ++i)
            parts.append(word());
        return parts.join(u' ');
    }
    QString paragraph(int count)
    {
        QString text = phrase(count);
        for (int i = 40; i < text.size(); i += 60 + m_random.bounded(80))
            text[i] = i % 3 ? u'.' : u'\n';
        return text;
    }
    QString code(int lines)
    {
        static const QStringList templates{"    let A = B(C);",
                                           "def A(B):",
                                           "    return A + B",
                                           "const A = B;",
                                           "SELECT A FROM B WHERE id = C",
                                           "if (A > B) {",
                                           "}",
                                           "<div class=\"A\">B</div>",
                                           "    // A B C"};
        QStringList out;
        for (int i = 0; i < lines; ++i) {
            QString line = templates.at(m_random.bounded(int(templates.size())));
            line.replace(u'A', word()).replace(u'B', word()).replace(u'C', word());
            out.append(line);
        }
        return out.join(u'\n');
    }

    QRandomGenerator m_random;
};

// Builds a history file the way the archive writes it, in one transaction (the archive's own
// flushed, one-row-at-a-time writes would take minutes for 100,000 rows).
qint64 buildHistory(const QString& path, int count)
{
    {
        ClipboardArchive schema(path);
    }
    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &db);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(
        db,
        "INSERT INTO clips(id,text,date) VALUES(?,?,?) ON CONFLICT(text) DO UPDATE SET date=excluded.date",
        -1, &insert, nullptr);
    TextMaker maker(42);
    qint64 bytes = 0;
    for (int i = 0; i < count; ++i) {
        const QByteArray text = maker.make(i).toUtf8();
        const QByteArray id = QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper();
        bytes += text.size();
        sqlite3_bind_text(insert, 1, id.constData(), int(id.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 2, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        sqlite3_bind_double(insert, 3, 700'000'000.0 + i * 37.0);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return bytes;
}

// ---- the child that measures one start ------------------------------------------------

// Runs in a fresh process so that its memory figures hold only what the start costs.
int measureStart(const QString& path)
{
    QStandardPaths::setTestModeEnabled(true);
    BenchDomain domain;
    Defaults& defaults = domain.defaults;
    MemoryPlatform memory;
    const double before = residentMiB();
    QElapsedTimer wall;
    const double cpu = cpuSeconds();
    wall.start();
    auto model = std::make_unique<Model>(defaults, memory.platform(), false, memory.pasteboard, path);
    const double elapsed = wall.nsecsElapsed() / 1e9;
    const double cpuUsed = cpuSeconds() - cpu;
    std::printf("%d %.6f %.6f %.2f %.2f %.2f\n", int(model->clipboardHistory().store().size()), elapsed,
                cpuUsed, before, residentMiB(), residentMiB("VmHWM:"));
    model.reset();
    return 0;
}

// ---- the child that copies from outside -----------------------------------------------

// Copies every line read from standard input and prints the moment its copy returned; a warm
// owner, as an editor is when the user copies.
int copyServer()
{
    auto* input = new QSocketNotifier(0, QSocketNotifier::Read, qApp);
    QObject::connect(input, &QSocketNotifier::activated, qApp, [] {
        char line[4096];
        if (!std::fgets(line, sizeof line, stdin)) {
            QCoreApplication::quit();
            return;
        }
        QGuiApplication::clipboard()->setText(QString::fromUtf8(line).trimmed(), QClipboard::Clipboard);
        std::printf("%lld\n", monotonicNanoseconds());
        std::fflush(stdout);
    });
    return QGuiApplication::exec();
}

// ---- the figures ------------------------------------------------------------------------

void measureHistory(int count, const QString& folder)
{
    const QString path = folder + QStringLiteral("/h%1/clipboard.sqlite").arg(count);
    QElapsedTimer build;
    build.start();
    const qint64 bytes = buildHistory(path, count);
    std::printf("\n%d stored clips (%.1f MiB of text, mean %lld bytes; file %.1f MiB, built in %.1f s)\n",
                count, bytes / 1048576.0, bytes / count, QFile(path).size() / 1048576.0,
                build.elapsed() / 1000.0);

    // Start-up: three fresh processes, the median.
    QList<double> walls, cpus, rss, peaks, deltas;
    for (int i = 0; i < 3; ++i) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--measure-start"), path});
        child.waitForFinished(60'000);
        const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
        if (fields.size() != 6 || fields.at(0).toInt() != count) {
            row("start-up", QStringLiteral("failed"));
            return;
        }
        walls.append(fields.at(1).toDouble());
        cpus.append(fields.at(2).toDouble());
        deltas.append(fields.at(4).toDouble() - fields.at(3).toDouble());
        rss.append(fields.at(4).toDouble());
        peaks.append(fields.at(5).toDouble());
    }
    row("start-up load (open + read all, model creation), wall", ms(median(walls)));
    row("start-up load, CPU", ms(median(cpus)));
    row("resident memory after start (whole process)", QStringLiteral("%1 MiB").arg(median(rss), 0, 'f', 1));
    row("  of which the loaded history", QStringLiteral("%1 MiB").arg(median(deltas), 0, 'f', 1));
    row("  peak during start", QStringLiteral("%1 MiB").arg(median(peaks), 0, 'f', 1));

    // The rest runs on one model in this process.
    BenchDomain domain;
    Defaults& defaults = domain.defaults;
    MemoryPlatform memory;
    Model model(defaults, memory.platform(), false, memory.pasteboard, path);
    const ClipStore& store = model.clipboardHistory().store();
    row("history texts in memory, packed", QStringLiteral("%1 MiB of %2 MiB unpacked")
                                               .arg(store.packedTextBytes() / 1048576.0, 0, 'f', 1)
                                               .arg(store.unpackedTextBytes() / 1048576.0, 0, 'f', 1));
    for (int i = 0; i < 5; ++i)
        model.productivity().togglePin(store.at(i * 997 % store.size()).text);

    TextMaker maker(7);
    int serial = 0;
    auto captureRound = [&](int rounds, bool repeat) {
        QList<double> walls;
        const double cpu = cpuSeconds();
        for (int i = 0; i < rounds; ++i) {
            // A repeated copy moves an old entry to the top; a new one is inserted.
            const QString text = repeat ? store.at(store.size() / 2).text : maker.make(1'000'000 + serial++);
            memory.clock.advance(1);
            memory.pasteboard.copyFromOutside(text);
            QElapsedTimer timer;
            timer.start();
            model.pollClipboard();
            walls.append(timer.nsecsElapsed() / 1e9);
        }
        return std::pair{(cpuSeconds() - cpu) / rounds, median(walls)};
    };
    const auto [newCpu, newWall] = captureRound(100, false);
    row("capture of a new text (synchronous=FULL write), CPU", ms(newCpu));
    row("  wall, incl. waiting for the disk", ms(newWall));
    const auto [againCpu, againWall] = captureRound(100, true);
    row("capture of a text copied again (moves to top), CPU", ms(againCpu));
    {
        // A panel that hosts the page but is closed: copies must not rebuild the rows.
        HistoryPage page(model.clipboardHistory(), model.productivity(), model.platform().clock,
                         model.platform().scheduler);
        page.rows()->setFilter(ClipKind::code);
        const auto [hiddenCpu, hiddenWall] = captureRound(50, false);
        row("capture with the history page hidden on a kind filter, CPU", ms(hiddenCpu));
        Q_UNUSED(hiddenWall)
    }

    auto timeRows = [&](ClipKind filter, const QString& search) {
        QList<double> walls, cpus;
        int rows = 0;
        for (int i = 0; i < 9; ++i) {
            QElapsedTimer timer;
            const double cpu = processCpuSeconds();
            timer.start();
            QList<PinnedText> pins;
            for (const QString& pin : model.productivity().pins())
                pins.append(PinnedText{pin, store.slotOf(pin)});
            rows = int(visibleRows(store.snapshot(), pins, search, filter, memory.clock.now()).rows.size());
            walls.append(timer.nsecsElapsed() / 1e9);
            cpus.append(processCpuSeconds() - cpu);
        }
        return QStringLiteral("%1 CPU, %2 wall  (%3 rows)")
            .arg(ms(median(cpus)), ms(median(walls)))
            .arg(rows);
    };
    row("visibleClips, no filter, no search", timeRows(ClipKind::all, {}));
    row("visibleClips, filter Links", timeRows(ClipKind::links, {}));
    row("visibleClips, filter Code", timeRows(ClipKind::code, {}));
    row("visibleClips, filter Text", timeRows(ClipKind::text, {}));
    row("visibleClips, filter Favoriten", timeRows(ClipKind::pinned, {}));
    row("visibleClips, search \"rechnung\"", timeRows(ClipKind::all, QStringLiteral("rechnung")));
    row("visibleClips, search \"Grüße\"", timeRows(ClipKind::all, QStringLiteral("Grüße")));
    row("visibleClips, search \"qzx\" (no hit)", timeRows(ClipKind::all, QStringLiteral("qzx")));
    row("visibleClips, search \"e\" (hits nearly all)", timeRows(ClipKind::all, QStringLiteral("e")));
    row("visibleClips, search \"server\" and filter Code",
        timeRows(ClipKind::code, QStringLiteral("server")));
    {
        // What a search pays before comparing anything: every packed block unpacked once.
        const ClipStore::Snapshot snapshot = store.snapshot();
        QList<double> cpus;
        QByteArray buffer;
        for (int i = 0; i < 9; ++i) {
            const double cpu = processCpuSeconds();
            for (quint32 block = 0; block < snapshot.texts.blockCount(); ++block)
                snapshot.texts.unpack(block, buffer);
            cpus.append(processCpuSeconds() - cpu);
        }
        row("  of a search: unpacking every text block, one thread, CPU", ms(median(cpus)));
    }

    // Idle heartbeat: nothing changed on the clipboard.
    const int ticks = 200'000;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < ticks; ++i)
        model.pollClipboard();
    row("idle clipboard poll (no change)", us(timer.nsecsElapsed() / 1e9 / ticks));
    timer.restart();
    for (int i = 0; i < ticks; ++i)
        model.tick();
    row("idle heartbeat tick (whole tick, memory services)", us(timer.nsecsElapsed() / 1e9 / ticks));
}

// The heartbeat as the running program has it: the Linux services, so every fifth tick asks the
// accessibility bus and the display again.
void measureRealTick(const QString& folder)
{
    std::printf("\nHeartbeat with the Linux services (real clipboard, session bus)\n");
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        row("idle heartbeat tick", QStringLiteral("skipped: no X display"));
        return;
    }
    BenchDomain domain;
    Defaults& defaults = domain.defaults;
    LinuxPlatform linuxPlatform;
    Model model(defaults, linuxPlatform.platform(), false, linuxPlatform.platform().pasteboard,
                folder + QStringLiteral("/tick/clipboard.sqlite"));
    const int ticks = 5'000;
    const double cpu = cpuSeconds();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < ticks; ++i) {
        model.tick();
        // The bus replies are part of the cost; let them arrive as they would between ticks.
        QCoreApplication::processEvents();
    }
    row("idle heartbeat tick, CPU (every 5th refreshes permissions)", us((cpuSeconds() - cpu) / ticks));
    row("idle heartbeat tick, wall", us(timer.nsecsElapsed() / 1e9 / ticks));
}

void measureCopyLatency(const QString& folder)
{
    std::printf(
        "\nOutside copy to history entry (real X11 clipboard, model with services, heartbeat running)\n");
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        row("copy latency", QStringLiteral("skipped: no X display"));
        return;
    }
    BenchDomain domain;
    Defaults& defaults = domain.defaults;
    MemoryPlatform memory;
    LinuxPasteboard pasteboard(QGuiApplication::clipboard());
    const Platform platform = memory.platform(pasteboard);
    Model model(defaults, platform, true, pasteboard, folder + QStringLiteral("/latency/clipboard.sqlite"));

    qint64 capturedAt = 0;
    qint64 signalledAt = 0;
    QObject::connect(&model.clipboardHistory(), &ClipboardHistory::clipsChanged, &model,
                     [&] { capturedAt = monotonicNanoseconds(); });
    QObject::connect(&pasteboard, &Pasteboard::changed, &model,
                     [&] { signalledAt = monotonicNanoseconds(); });
    auto waitForCapture = [&](const QString& text) {
        QEventLoop loop;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
            if (!model.clips().isEmpty() && model.clips().first().text == text)
                loop.quit();
        });
        poll.start(0);
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        loop.exec();
        return !model.clips().isEmpty() && model.clips().first().text == text;
    };

    QList<double> fromOwner, fromXclip, step;
    QList<QProcess*> children;
    auto* owner = new QProcess;
    children.append(owner);
    owner->start(QCoreApplication::applicationFilePath(), {QStringLiteral("--copy-server")});
    owner->waitForStarted();
    for (int i = 0; i < 20; ++i) {
        // The owner prints the moment its copy is done; the capture is timed against it.
        const QString text = QStringLiteral("Latenz %1 %2").arg(i).arg(QUuid::createUuid().toString());
        owner->write(text.toUtf8() + '\n');
        if (!waitForCapture(text)) {
            row("copy latency", QStringLiteral("failed: not captured"));
            break;
        }
        if (owner->bytesAvailable() == 0)
            owner->waitForReadyRead(2000);
        const qint64 copiedAt = owner->readLine().trimmed().toLongLong();
        fromOwner.append((capturedAt - copiedAt) / 1e9);
        step.append((capturedAt - signalledAt) / 1e9);

        const QString other = QStringLiteral("xclip %1 %2").arg(i).arg(QUuid::createUuid().toString());
        auto* xclip = new QProcess;
        children.append(xclip);
        const qint64 started = monotonicNanoseconds();
        xclip->start(QStringLiteral("xclip"),
                     {QStringLiteral("-quiet"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
        xclip->write(other.toUtf8());
        xclip->closeWriteChannel();
        if (!waitForCapture(other))
            break;
        fromXclip.append((capturedAt - started) / 1e9);
    }
    std::sort(step.begin(), step.end());
    if (!step.isEmpty())
        row("change signal -> entry in history: the capture step (median / max)",
            QStringLiteral("%1 / %2").arg(ms(median(step)), ms(step.last())));
    std::sort(fromOwner.begin(), fromOwner.end());
    if (!fromOwner.isEmpty())
        row("owner's copy returned -> entry in history (median / max)",
            QStringLiteral("%1 / %2").arg(ms(median(fromOwner)), ms(fromOwner.last())));
    std::sort(fromXclip.begin(), fromXclip.end());
    if (!fromXclip.isEmpty())
        row("xclip started -> entry in history (median / max)",
            QStringLiteral("%1 / %2").arg(ms(median(fromXclip)), ms(fromXclip.last())));

    // Ending the children: taking the selection lets the last one quit; then stop them.
    QGuiApplication::clipboard()->setText(QStringLiteral("bench done"));
    for (QProcess* child : children) {
        if (child->state() != QProcess::NotRunning) {
            child->kill();
            child->waitForFinished(2000);
        }
        delete child;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("--measure-start"))
        return measureStart(arguments.at(2));
    if (arguments.size() == 2 && arguments.at(1) == QLatin1String("--copy-server"))
        return copyServer();

    if (arguments.size() == 4 && arguments.at(1) == QLatin1String("--write-history")) {
        // A history file for measuring the real program (idle_bench takes it).
        buildHistory(arguments.at(3), arguments.at(2).toInt());
        return 0;
    }

    QStandardPaths::setTestModeEnabled(true);
    QTemporaryDir folder;
    if (arguments.size() >= 3 && arguments.at(1) == QLatin1String("--profile-filter")) {
        // For a profiler: one history, the named filter over and over.
        const QString path = folder.path() + QStringLiteral("/p/clipboard.sqlite");
        buildHistory(path, 100'000);
        ClipStore store;
        ClipboardArchive(path).load([&store](Clip&& clip) { store.append(clip); });
        const ClipKind filter = ClipKinds::fromLabel(arguments.at(2)).value_or(ClipKind::all);
        const QString search = arguments.size() > 3 ? arguments.at(3) : QString();
        const double cpu = cpuSeconds();
        QElapsedTimer wall;
        wall.start();
        qsizetype rows = 0;
        const int runs = 100;
        for (int i = 0; i < runs; ++i)
            rows += visibleRows(store.snapshot(), {}, search, filter, QDateTime::currentDateTimeUtc())
                        .rows.size();
        std::printf("%lld rows, %.2f ms wall, %.2f ms CPU (all threads) per run\n", rows / runs,
                    wall.nsecsElapsed() / 1e6 / runs, (cpuSeconds() - cpu) / runs * 1000);
        return 0;
    }
    std::printf("Brenlow clipboard history benchmark (Qt %s, SQLite %s, platform %s)\n", qVersion(),
                sqlite3_libversion(), qPrintable(QGuiApplication::platformName()));
    for (int count : {10'000, 100'000})
        measureHistory(count, folder.path());
    measureRealTick(folder.path());
    measureCopyLatency(folder.path());
    return 0;
}
