#include "DesktopFixtures.h"
#include "TestSupport.h"

#include "commands/MenuBarApps.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/SniHost.h"
#include "setup/PermissionStore.h"

#include <QSignalSpy>
#include <QTest>

namespace {
// The fixture's item among the registered ones, read off the main thread's back.
std::optional<TrayItem> fixtureItem(StatusBar& bar, qint64 pid)
{
    for (const TrayItem& item : bar.trayItems()) {
        if (item.pid == pid)
            return item;
    }
    return std::nullopt;
}

int findEntry(const QList<TrayMenuEntry>& entries, const QString& label)
{
    for (const TrayMenuEntry& entry : entries) {
        if (entry.label == label)
            return entry.id;
    }
    return -1;
}
} // namespace

// Other applications' tray items over StatusNotifierItem, with Brenlow as the desktop's watcher.
class TrayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void brenlowHostsATrayItemAndOpensItsMenu()
    {
        LinuxStatusBar bar;
        bar.startHost();
        QVERIFY(bar.host().ownsWatcher());
        // A second host finds the watcher taken and follows it instead.
        SniHost follower;
        follower.start();
        QVERIFY(!follower.ownsWatcher());

        MenuFixtureProcess fixture(0, true);
        QTRY_VERIFY_WITH_TIMEOUT(fixtureItem(bar, fixture.pid()).has_value(), 10000);
        QTRY_COMPARE_WITH_TIMEOUT(follower.registered(), bar.host().registered(), 5000);
        const TrayItem item = *fixtureItem(bar, fixture.pid());
        QCOMPARE(item.toolTipTitle, QStringLiteral("Fixture"));
        QVERIFY(item.hasMenu);
        QVERIFY(item.appId.startsWith(QStringLiteral("test_commands_x11")));

        const auto menu = bar.itemMenu(item);
        QVERIFY(menu.has_value());
        const int hello = findEntry(*menu, QStringLiteral("Hello"));
        QVERIFY(hello > 0);
        QVERIFY(bar.clickMenuEntry(item, hello));
        QVERIFY(fixture.waitFor("TRIGGERED Hello", 5000));
        QVERIFY(bar.activateItem(item));
        QVERIFY(fixture.waitFor("ACTIVATED", 5000));

        // The item vanishes: its menu cannot be read and it leaves the list.
        fixture.send("quit");
        QTRY_VERIFY_WITH_TIMEOUT(bar.host().registered().isEmpty(), 5000);
        QVERIFY(!bar.itemMenu(item).has_value());
        bar.stopHost();
    }

    void aRisingTooltipCounterRaisesOneNotice()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        LinuxStatusBar bar;
        LinuxPermissions permissions;
        TimerScheduler scheduler;
        PermissionStore store(permissions, memory.clock);
        QVERIFY(store.accessibility());
        MenuBarApps apps(*domain.defaults, bar, memory.displays, scheduler, store);
        apps.setStarted(true);
        apps.setEnabled(true);
        QVERIFY(bar.groupItemsShown());

        MenuFixtureProcess fixture(0, true);
        QTRY_VERIFY_WITH_TIMEOUT(!apps.entries().isEmpty(), 10000);
        const MenuBarEntry entry = apps.entries().constFirst();
        apps.setSelected(entry.id, true);
        apps.setNotifications(entry.id, true);
        apps.setNotificationsEnabled(true);
        QVERIFY(apps.monitoring());
        QSignalSpy notices(&apps, &MenuBarApps::notification);

        fixture.send("tip 3 neue Nachrichten");
        QVERIFY(fixture.waitFor("TIP", 5000));
        QTRY_COMPARE_WITH_TIMEOUT(apps.noticePolicy().counts.value(entry.id, -1), 3, 5000);
        QCOMPARE(notices.count(), 0);
        fixture.send("tip 4 neue Nachrichten");
        QTRY_COMPARE_WITH_TIMEOUT(notices.count(), 1, 5000);
        QCOMPARE(notices.at(0).at(1).toInt(), 4);
        QTest::qWait(300);
        QCOMPARE(notices.count(), 1);
        apps.setEnabled(false);
        QVERIFY(!bar.groupItemsShown());
    }
};

int runTrayTests(int argc, char** argv)
{
    TrayTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TrayTest.moc"
