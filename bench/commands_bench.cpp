// Figures for the menu commands and the menu-bar apps on the real desktop services: reading a
// 100-item menu bar over AT-SPI, the main thread's share of applying it, a scan of ten tray
// items, and the idle CPU while counters are watched. Prints figures; asserts nothing.
// `--menu-of <program> [arguments]` reads the menus of another program instead.
#include "../tests/support/DesktopFixtures.h"

#include "commands/MenuBarApps.h"
#include "commands/MenuCommands.h"
#include "commands/MenuWalk.h"
#include "commands/widgets/CommandsPage.h"
#include "common/Clock.h"
#include "common/Scheduler.h"
#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SniHost.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"
#include "setup/PermissionStore.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <QUuid>

#include <algorithm>
#include <sys/resource.h>

namespace {
// Lets the event loop run for a while.
void wait(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

void enableAccessibility()
{
    QDBusMessage set = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    set << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled")
        << QVariant::fromValue(QDBusVariant(true));
    QDBusConnection::sessionBus().call(set, QDBus::Block, 2000);
}

// Seven reads of a process's menu bar once it is on the accessibility bus; prints the first items.
void benchReads(LinuxAccessibility& a11y, qint64 pid, qsizetype shown)
{
    SystemClock clock;
    QDeadlineTimer ready(15000);
    while (!ready.hasExpired() && a11y.applicationElement(pid).isNull())
        wait(100);
    wait(500);
    const int before = a11y.callCount();
    QVariant bar;
    a11y.copyAttribute(a11y.applicationElement(pid), QStringLiteral("AXMenuBar"), bar);
    std::printf("finding the application and its menu bar: %d AT-SPI calls\n", a11y.callCount() - before);
    QList<double> walls;
    for (int run = 0; run < 7; ++run) {
        const int calls = a11y.callCount();
        QElapsedTimer timer;
        timer.start();
        const MenuRead read = MenuWalk(a11y, clock).read(pid);
        walls.append(timer.nsecsElapsed() / 1e6);
        if (run == 0) {
            std::printf("menu read: %lld items, %d AT-SPI calls, error %d\n", qlonglong(read.items.size()),
                        a11y.callCount() - calls, read.error);
            for (qsizetype i = 0; i < qMin(shown, read.items.size()); ++i)
                std::printf("  %s  %s\n", qPrintable(read.items.at(i).name),
                            qPrintable(read.items.at(i).keys));
        }
    }
    std::printf("menu read over AT-SPI (worker thread, wall): median %.1f ms, min %.1f ms (goal < 150 ms)\n",
                median(walls), *std::min_element(walls.cbegin(), walls.cend()));
}

// The menus of another program started in the private session, e.g. a GTK editor.
void benchMenuOf(const QStringList& command)
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(command.first(), command.mid(1));
    if (!program.waitForStarted(5000)) {
        std::fprintf(stderr, "cannot start %s\n", qPrintable(command.first()));
        return;
    }
    LinuxAccessibility a11y;
    benchReads(a11y, program.processId(), 400);
    program.terminate();
    if (!program.waitForFinished(3000))
        program.kill();
    program.waitForFinished();
}

void benchMenuRead()
{
    MenuFixtureProcess fixture(95);
    LinuxAccessibility a11y;
    SystemClock clock;
    benchReads(a11y, fixture.pid(), 3);

    // The main thread's share: the result applied to the store and the visible page.
    LinuxWorkspace workspace;
    LinuxPermissions permissions;
    TimerScheduler scheduler;
    PermissionStore store(permissions, clock);
    MenuCommands commands({a11y, workspace, permissions, scheduler, clock}, store);
    CommandsPage page(commands, store);
    page.resize(560, 300);
    page.show();
    QList<double> applies;
    QElapsedTimer apply;
    QObject::connect(&commands, &MenuCommands::commandLoadingChanged, &page, [&] {
        if (!commands.commandLoading())
            apply.start();
    });
    QObject::connect(&commands, &MenuCommands::commandStatusChanged, &page, [&] {
        if (!commands.commandLoading() && apply.isValid()) {
            applies.append(apply.nsecsElapsed() / 1e6);
            apply.invalidate();
        }
    });
    for (int run = 0; run < 7; ++run) {
        commands.readCommands(workspace.runningApp(fixture.pid()));
        QDeadlineTimer done(5000);
        while (commands.commandLoading() && !done.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    std::printf("applying %lld commands on the main thread (store + page): median %.2f ms (goal < 2 ms)\n",
                qlonglong(commands.commands().size()), median(applies));
}

void benchTray()
{
    LinuxStatusBar bar;
    bar.startHost();
    std::vector<std::unique_ptr<MenuFixtureProcess>> fixtures;
    for (int i = 0; i < 10; ++i)
        fixtures.push_back(std::make_unique<MenuFixtureProcess>(0, true));
    QDeadlineTimer ready(15000);
    while (!ready.hasExpired() && bar.host().registered().size() < 10)
        wait(100);
    QList<double> scans;
    qsizetype count = 0;
    for (int run = 0; run < 7; ++run) {
        QElapsedTimer timer;
        timer.start();
        count = bar.trayItems().size();
        scans.append(timer.nsecsElapsed() / 1e6);
    }
    std::printf("tray scan of %lld items (worker thread, wall): median %.1f ms (goal < 50 ms)\n",
                qlonglong(count), median(scans));

    // Idle with every item watched: the 10-second poll and the items' change signals only.
    MemoryPlatform memory;
    const QString domainName =
        QStringLiteral("Brenlow.Bench.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        Defaults defaults(domainName);
        SystemClock clock;
        TimerScheduler scheduler;
        LinuxPermissions permissions;
        PermissionStore store(permissions, clock);
        MenuBarApps apps(defaults, bar, memory.displays, scheduler, store);
        apps.setStarted(true);
        apps.setEnabled(true);
        QDeadlineTimer scanned(10000);
        while (!scanned.hasExpired() && apps.entries().size() < 10)
            wait(50);
        for (const MenuBarEntry& entry : apps.entries()) {
            apps.setSelected(entry.id, true);
            apps.setNotifications(entry.id, true);
        }
        apps.setNotificationsEnabled(true);
        wait(1000);
        const double seconds = 30;
        const double before = cpuSeconds();
        wait(int(seconds * 1000));
        const double used = cpuSeconds() - before;
        std::printf(
            "idle CPU with %lld counters watched: %.1f ms per minute (measured over %.0f s; goal <= 80)\n",
            qlonglong(apps.entries().size()), used * 1000 * 60 / seconds, seconds);
        apps.setEnabled(false);
    }
    Defaults(domainName).removeDomain();
}
} // namespace

int main(int argc, char** argv)
{
    if (argc >= 2 && std::strcmp(argv[1], "--menu-app") == 0)
        return runMenuFixture(argc, argv);
    PrivateDesktopSession session;
    if (!session.ready()) {
        std::fprintf(stderr, "no private session bus with an accessibility bus\n");
        return 1;
    }
    QApplication app(argc, argv);
    enableAccessibility();
    if (argc >= 3 && std::strcmp(argv[1], "--menu-of") == 0) {
        benchMenuOf(QCoreApplication::arguments().mid(2));
        return 0;
    }
    benchMenuRead();
    benchTray();
    return 0;
}
