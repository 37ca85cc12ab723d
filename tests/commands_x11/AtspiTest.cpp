#include "DesktopFixtures.h"
#include "TestSupport.h"

#include "commands/MenuCommands.h"
#include "commands/MenuWalk.h"
#include "common/Clock.h"
#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxWorkspace.h"
#include "setup/PermissionStore.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTest>

namespace {
// Switches the desktop's accessibility on, as its settings would.
void enableAccessibility()
{
    QDBusMessage set = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    set << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled")
        << QVariant::fromValue(QDBusVariant(true));
    QDBusConnection::sessionBus().call(set, QDBus::Block, 2000);
}

// Waits until the application's menu bar is on the accessibility bus.
bool waitForMenus(LinuxAccessibility& a11y, qint64 pid)
{
    QDeadlineTimer deadline(15000);
    while (!deadline.hasExpired()) {
        const AXElement application = a11y.applicationElement(pid);
        QVariant bar;
        if (!application.isNull() && a11y.copyAttribute(application, QStringLiteral("AXMenuBar"), bar) == 0)
            return true;
        QTest::qWait(100);
    }
    return false;
}
} // namespace

// The menus of a real Qt application over AT-SPI: names, keys, limits and a press that runs it.
class AtspiTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        enableAccessibility();
    }

    void readsTheMenuBarOfAQtApplication()
    {
        MenuFixtureProcess fixture;
        LinuxAccessibility a11y;
        SystemClock clock;
        QVERIFY(waitForMenus(a11y, fixture.pid()));
        const MenuRead read = MenuWalk(a11y, clock).read(fixture.pid());
        QCOMPARE(read.error, 0);
        QStringList rows;
        for (const CommandItem& item : read.items)
            rows.append(item.name + QLatin1Char('|') + item.keys + (item.enabled ? "" : "|off"));
        QCOMPARE(rows,
                 QStringList({QStringLiteral("File › New|⌘N"), QStringLiteral("File › Save As...|⇧⌘S"),
                              QStringLiteral("File › Clear List|⌥⌘K"), QStringLiteral("File › Print|⌘P|off"),
                              QStringLiteral("Edit › Copy|⌘C")}));
        // A process without an accessible application has no element.
        QVERIFY(a11y.applicationElement(QCoreApplication::applicationPid() + 100000).isNull());
    }

    void clickingACommandRunsItInTheApplication()
    {
        MenuFixtureProcess fixture;
        LinuxAccessibility a11y;
        QVERIFY(waitForMenus(a11y, fixture.pid()));
        LinuxPermissions permissions;
        QVERIFY(permissions.accessibilityTrustedNow());
        LinuxWorkspace workspace;
        SystemClock clock;
        TimerScheduler scheduler;
        PermissionStore store(permissions, clock);
        MenuCommands commands({a11y, workspace, permissions, scheduler, clock}, store);
        const auto target = workspace.runningApp(fixture.pid());
        QVERIFY(target && !target->terminated);
        commands.readCommands(target);
        QTRY_VERIFY_WITH_TIMEOUT(!commands.commandLoading(), 10000);
        QCOMPARE(commands.commandStatus(), QStringLiteral("5 Menübefehle geladen."));
        const CommandItem saveAs = commands.commands().at(1);
        commands.executeCommand(saveAs);
        QTRY_VERIFY_WITH_TIMEOUT(!commands.commandExecuting(), 10000);
        QCOMPARE(commands.commandStatus(), QStringLiteral("Befehl ausgeführt: File › Save As..."));
        QVERIFY(fixture.waitFor("TRIGGERED Save &As...", 5000));

        // The application quits between the read and the press.
        const CommandItem copy = commands.commands().at(4);
        fixture.send("quit");
        QTRY_VERIFY_WITH_TIMEOUT(
            !workspace.runningApp(fixture.pid()) || workspace.runningApp(fixture.pid())->terminated, 5000);
        commands.executeCommand(copy);
        QCOMPARE(commands.commandStatus(),
                 QStringLiteral("Befehl nicht verfügbar. Bitte die Liste erneut laden."));
    }
};

int runAtspiTests(int argc, char** argv)
{
    AtspiTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "AtspiTest.moc"
