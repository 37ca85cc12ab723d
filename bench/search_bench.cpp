// Figures of the search: scanning 500 desktop entries, matching one keystroke against the
// installed applications, and from the end of the pause after typing to results in the page.
// The last figure uses the desktop's file index when Tracker runs on the session bus, else the
// memory index over 5,000 paths. Prints medians; asserts nothing.
//   build/bench/search_bench
#include "common/Scheduler.h"
#include "platform/linux/LinuxFileSearch.h"
#include "platform/memory/MemoryPlatform.h"
#include "productivity/AppCatalog.h"
#include "productivity/DesktopEntry.h"
#include "productivity/DeviceSearch.h"
#include "productivity/widgets/SearchPage.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

const char* words[] = {"Terminal", "Editor", "Browser", "Rechner", "Kalender", "Musik", "Bilder", "Notizen"};

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QTemporaryDir root;
    const QString apps = root.filePath(QStringLiteral("applications"));
    QDir().mkpath(apps);
    for (int i = 0; i < 500; ++i) {
        QFile file(QStringLiteral("%1/app%2.desktop").arg(apps).arg(i));
        file.open(QIODevice::WriteOnly);
        file.write(
            QStringLiteral("[Desktop Entry]\nType=Application\nName=%1 %2\nName[de]=%1 %2\nExec=sh %3\n"
                           "Categories=Utility;\nComment=Ein Programm\n")
                .arg(QString::fromLatin1(words[i % 8]))
                .arg(i)
                .arg(i % 7 == 0 ? QStringLiteral("/bin/true") : QStringLiteral("-c x"))
                .toUtf8());
    }
    const QStringList languages = DesktopEntry::userLanguages();

    QList<double> scans;
    QList<InstalledApp> installed;
    for (int run = 0; run < 15; ++run) {
        QElapsedTimer timer;
        timer.start();
        installed = AppCatalog::scan({apps}, languages);
        scans.append(timer.nsecsElapsed() / 1e6);
    }
    std::printf("scan of 500 desktop entries:        %.2f ms (median of 15, %d offered)\n", median(scans),
                int(installed.size()));
    // The same on this machine's own folders, where nearly every entry starts another program.
    const QStringList system = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    QList<double> systemScans;
    int systemCount = 0;
    for (int run = 0; run < 15; ++run) {
        QElapsedTimer timer;
        timer.start();
        systemCount = int(AppCatalog::scan(system, languages).size());
        systemScans.append(timer.nsecsElapsed() / 1e6);
    }
    std::printf("scan of this machine's applications: %.2f ms (median of 15, %d offered)\n",
                median(systemScans), systemCount);

    QList<double> matches;
    for (int run = 0; run < 200; ++run) {
        QElapsedTimer timer;
        timer.start();
        const auto found =
            AppCatalog::matching(installed, QString::fromLatin1(words[run % 8]).left(1 + run % 4));
        matches.append(timer.nsecsElapsed() / 1e6);
        Q_UNUSED(found);
    }
    std::printf("one keystroke against the apps:     %.3f ms (median of 200)\n", median(matches));

    // From the end of the pause to the page showing the index's answer.
    MemoryPlatform memory;
    std::unique_ptr<LinuxFileSearch> tracker;
    FileSearch* index = &memory.fileSearch;
    QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
    if (bus && bus->isServiceRegistered(QString::fromLatin1(LinuxFileSearch::minerService)).value()) {
        tracker = std::make_unique<LinuxFileSearch>();
        index = tracker.get();
    } else {
        for (int i = 0; i < 5000; ++i)
            memory.fileSearch.files.append(
                QStringLiteral("/srv/daten/%1 bericht %2.txt").arg(QString::fromLatin1(words[i % 8])).arg(i));
    }
    memory.fileSearch.applications = {apps};
    DeviceSearch search(*index, memory.scheduler);
    while (!search.appsReady())
        app.processEvents(QEventLoop::AllEvents, 10);
    SearchPage page(search);
    page.resize(580, 300);
    page.show();
    QList<double> answers;
    for (int run = 0; run < 20; ++run) {
        search.setText(QString::fromLatin1(words[run % 8]).left(3 + run % 3) + QString::number(run % 10));
        QElapsedTimer timer;
        timer.start();
        memory.scheduler.advance(DeviceSearch::debounce);
        while (search.searching())
            app.processEvents(QEventLoop::AllEvents, 5);
        app.processEvents();
        answers.append(timer.nsecsElapsed() / 1e6);
    }
    std::printf("pause end to results on the page:   %.2f ms (median of 20, %s)\n", median(answers),
                tracker ? "Tracker 3 index" : "memory index of 5,000 paths; Tracker not running");
    return 0;
}
