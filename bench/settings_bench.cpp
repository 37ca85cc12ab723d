// Figures of the settings domain with a long activity list: start-up (model creation) and resident
// memory, then the time and the bytes written for one small change ("lastPage"), for writing a
// value that is already stored, and for adding one notice. Bytes come from /proc/self/io:
// `wchar` is what the process handed to write(), `write_bytes` what it sent towards the disk.
// Each start runs in a fresh process so memory figures are its own. Prints a table; asserts
// nothing.
//   build/bench/settings_bench [notices]
#include "focus/Notice.h"
#include "model/Model.h"
#include "model/Page.h"
#include "platform/memory/MemoryPlatform.h"
#include "productivity/Productivity.h"
#include "settings/Defaults.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

struct Io
{
    double wchar = 0;
    double writeBytes = 0;
};

Io io()
{
    Io result;
    QFile file(QStringLiteral("/proc/self/io"));
    if (!file.open(QIODevice::ReadOnly))
        return result;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QList<QByteArray> parts = line.split(':');
        if (parts.size() != 2)
            continue;
        if (parts.at(0) == "wchar")
            result.wchar = parts.at(1).trimmed().toDouble();
        else if (parts.at(0) == "write_bytes")
            result.writeBytes = parts.at(1).trimmed().toDouble();
    }
    return result;
}

double residentMiB(const char* field)
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

double processCpuSeconds()
{
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

void row(const char* what, const QString& value)
{
    std::printf("  %s %s\n", QString::fromUtf8(what).leftJustified(58).toUtf8().constData(),
                value.toUtf8().constData());
    std::fflush(stdout);
}

// Notices as the program makes them: focus ends, captures, devices, workspaces.
QList<Notice> makeNotices(int count)
{
    static const QList<std::pair<QString, QString>> kinds = {
        {QStringLiteral("Fokus geschafft"), QStringLiteral("Zeit für eine Pause.")},
        {QStringLiteral("Screenshot"), QStringLiteral("Bildschirmfoto 2024-05-%1 um 10.%2.png")},
        {QStringLiteral("Akku wird knapp"), QStringLiteral("Noch %1 %")},
        {QStringLiteral("Arbeitsbereich: Entwicklung"), QStringLiteral("Entwicklung geöffnet")},
        {QStringLiteral("Kopfhörer verbunden"), QStringLiteral("WH-1000XM4 (%1)")},
    };
    QList<Notice> notices;
    notices.reserve(count);
    QDateTime date = QDateTime::currentDateTimeUtc();
    for (int i = 0; i < count; ++i) {
        const auto& [title, detail] = kinds.at(i % kinds.size());
        QString text = detail;
        if (text.contains(u"%2"))
            text = text.arg(i % 28).arg(i % 60);
        else if (text.contains(u"%1"))
            text = text.arg(i % 100);
        notices.append(Notice{QUuid::createUuid(), title, text, date});
        date = date.addSecs(-97);
    }
    return notices;
}

// In a fresh process: start the model over the prepared domain, then change things.
int measure(const QString& domain)
{
    MemoryPlatform memory;
    const double cpuBefore = processCpuSeconds();
    QElapsedTimer wall;
    wall.start();
    auto defaults = std::make_unique<Defaults>(domain);
    auto model = std::make_unique<Model>(*defaults, memory.platform(), false, memory.pasteboard);
    const double startWall = wall.nsecsElapsed() / 1e6;
    const double startCpu = (processCpuSeconds() - cpuBefore) * 1000.0;
    const double rss = residentMiB("VmRSS:");
    const double peak = residentMiB("VmHWM:");
    const qsizetype notices = model->notices().size();

    // One small key: the tab bar stores the page on every click.
    const QList<Page> pages = {Page::clipboard, Page::notes, Page::events, Page::home};
    QList<double> pageTimes;
    const int pageChanges = 40;
    const Io pageBefore = io();
    for (int i = 0; i < pageChanges; ++i) {
        wall.restart();
        model->setPage(pages.at(i % pages.size()));
        pageTimes.append(wall.nsecsElapsed() / 1e6);
    }
    const Io pageAfter = io();

    // The same page again: nothing new to store.
    QList<double> sameTimes;
    const Io sameBefore = io();
    for (int i = 0; i < pageChanges; ++i) {
        wall.restart();
        model->setPage(Page::home);
        sameTimes.append(wall.nsecsElapsed() / 1e6);
    }
    const Io sameAfter = io();

    QList<double> noticeTimes;
    const int noticeAdds = 5;
    const Io noticeBefore = io();
    for (int i = 0; i < noticeAdds; ++i) {
        wall.restart();
        model->addNotice(QStringLiteral("Fokus geschafft"), QStringLiteral("Zeit für eine Pause."));
        noticeTimes.append(wall.nsecsElapsed() / 1e6);
    }
    const Io noticeAfter = io();

    std::printf("%lld %.3f %.3f %.2f %.2f %.4f %.0f %.0f %.4f %.0f %.0f %.3f %.0f %.0f\n", qlonglong(notices),
                startWall, startCpu, rss, peak, median(pageTimes),
                (pageAfter.wchar - pageBefore.wchar) / pageChanges,
                (pageAfter.writeBytes - pageBefore.writeBytes) / pageChanges, median(sameTimes),
                (sameAfter.wchar - sameBefore.wchar) / pageChanges,
                (sameAfter.writeBytes - sameBefore.writeBytes) / pageChanges, median(noticeTimes),
                (noticeAfter.wchar - noticeBefore.wchar) / noticeAdds,
                (noticeAfter.writeBytes - noticeBefore.writeBytes) / noticeAdds);
    return 0;
}

QString bytes(double value)
{
    if (value >= 1024.0 * 1024.0)
        return QStringLiteral("%1 MiB").arg(value / 1048576.0, 0, 'f', 1);
    if (value >= 1024.0)
        return QStringLiteral("%1 KiB").arg(value / 1024.0, 0, 'f', 1);
    return QStringLiteral("%1 B").arg(value, 0, 'f', 0);
}

QString ms(double value)
{
    return QStringLiteral("%1 ms").arg(value, 0, 'f', value < 1 ? 3 : 1);
}

// Every file of the domain's folder that belongs to `domain`, summed.
qint64 domainBytes(const QString& folder, const QString& domain)
{
    qint64 total = 0;
    const QDir dir(folder);
    for (const QFileInfo& info : dir.entryInfoList(QDir::Files)) {
        if (info.fileName().startsWith(domain + u'.'))
            total += info.size();
    }
    return total;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QStringList arguments = app.arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("--measure"))
        return measure(arguments.at(2));

    const int count = arguments.size() > 1 ? std::max(1, arguments.at(1).toInt()) : 100'000;
    const QString domain =
        QStringLiteral("Brenlow.Bench.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        Defaults defaults(domain);
        defaults.setData(QStringLiteral("notices.v1"), Notice::encodeList(makeNotices(count)));
        MemoryPlatform memory;
        Model model(defaults, memory.platform(), false, memory.pasteboard);
        for (const char* text :
             {"Einkaufen: Milch, Brot", "Anruf bei Frau Weber um 15 Uhr", "Idee für den Vortrag"})
            model.productivity().addNote(QString::fromUtf8(text));
    }
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Brenlow");
    std::printf("Brenlow settings benchmark (Qt %s), %d notices, domain on disk %s\n", qVersion(), count,
                qPrintable(bytes(double(domainBytes(folder, domain)))));

    QList<QList<double>> runs;
    for (int i = 0; i < 3; ++i) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--measure"), domain});
        child.waitForFinished(600'000);
        QList<double> fields;
        for (const QByteArray& field : child.readAllStandardOutput().trimmed().split(' '))
            fields.append(field.toDouble());
        if (fields.size() != 14) {
            row("measurement", QStringLiteral("failed: ") + QString::fromUtf8(child.readAllStandardError()));
            Defaults(domain).removeDomain();
            return 1;
        }
        runs.append(fields);
    }
    auto field = [&runs](int index) {
        QList<double> values;
        for (const QList<double>& run : runs)
            values.append(run.at(index));
        return median(values);
    };
    std::printf("  (medians of three fresh processes; notices loaded: %.0f)\n", field(0));
    row("start-up (settings + model creation), wall", ms(field(1)));
    row("start-up, CPU", ms(field(2)));
    row("resident memory after start", QStringLiteral("%1 MiB").arg(field(3), 0, 'f', 1));
    row("peak resident memory during start", QStringLiteral("%1 MiB").arg(field(4), 0, 'f', 1));
    row("one \"lastPage\" change, wall (median)", ms(field(5)));
    row("  written per change: wchar / write_bytes",
        bytes(field(6)) + QStringLiteral(" / ") + bytes(field(7)));
    row("the same page again, wall (median)", ms(field(8)));
    row("  written per repeat: wchar / write_bytes",
        bytes(field(9)) + QStringLiteral(" / ") + bytes(field(10)));
    row("one notice added, wall (median)", ms(field(11)));
    row("  written per notice: wchar / write_bytes",
        bytes(field(12)) + QStringLiteral(" / ") + bytes(field(13)));
    std::printf("  domain on disk afterwards: %s\n", qPrintable(bytes(double(domainBytes(folder, domain)))));
    Defaults(domain).removeDomain();
    return 0;
}
