#include "DesktopFixtures.h"
#include "TestSupport.h"

#include "commands/CommandPolicy.h"
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

AXElementList childrenOf(LinuxAccessibility& a11y, const AXElement& element)
{
    QVariant value;
    a11y.copyAttribute(element, QStringLiteral("AXChildren"), value);
    return value.value<AXElementList>();
}

AXElement childTitled(LinuxAccessibility& a11y, const AXElement& element, const QString& title)
{
    for (const AXElement& child : childrenOf(a11y, element)) {
        QVariant value;
        if (a11y.copyAttribute(child, QStringLiteral("AXTitle"), value) == 0 && value.toString() == title)
            return child;
    }
    return {};
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

    void anItemThatGoesAwayBetweenListingAndReadingIsSkipped()
    {
        MenuFixtureProcess fixture;
        LinuxAccessibility a11y;
        QVERIFY(waitForMenus(a11y, fixture.pid()));
        QVariant bar;
        QCOMPARE(a11y.copyAttribute(a11y.applicationElement(fixture.pid()), QStringLiteral("AXMenuBar"), bar),
                 0);
        const AXElement file = childTitled(a11y, bar.value<AXElement>(), QStringLiteral("File"));
        // Qt puts a menu's items below a popup menu element.
        const AXElementList popups = childrenOf(a11y, file);
        QCOMPARE(popups.size(), 1);
        const AXElementList items = childrenOf(a11y, popups.first());
        QCOMPARE(items.size(), 4);

        fixture.send("drop Save &As...");
        QVERIFY(fixture.waitFor("DROPPED", 5000));
        const QStringList attributes{QStringLiteral("AXTitle"), QStringLiteral("AXMenuItemCmdChar"),
                                     QStringLiteral("AXMenuItemCmdModifiers"), QStringLiteral("AXChildren"),
                                     QStringLiteral("AXEnabled")};
        const QList<QVariantMap> values = a11y.copyAttributes(items, attributes, [] { return false; });
        QCOMPARE(values.size(), 4);
        QVERIFY2(values.at(1).isEmpty(), qPrintable(values.at(1).keys().join(u',')));
        QStringList rows;
        for (qsizetype i : {0, 2, 3}) {
            const QVariantMap& value = values.at(i);
            const QString keys =
                value.contains(QStringLiteral("AXMenuItemCmdChar"))
                    ? CommandPolicy::keys(value.value(QStringLiteral("AXMenuItemCmdChar")).toString(),
                                          value.value(QStringLiteral("AXMenuItemCmdModifiers")).toInt())
                    : QString();
            const qsizetype childCount =
                value.value(QStringLiteral("AXChildren")).value<AXElementList>().size();
            rows.append(value.value(QStringLiteral("AXTitle")).toString() + u'|' + keys + u'|' +
                        QString::number(childCount) +
                        (value.value(QStringLiteral("AXEnabled")).toBool() ? "" : "|off"));
            // One call at a time gives the same answers.
            for (const QString& attribute : attributes) {
                QVariant single;
                const bool read = a11y.copyAttribute(items.at(i), attribute, single) == 0;
                QCOMPARE(read, value.contains(attribute));
                if (read && attribute != u"AXChildren")
                    QCOMPARE(single, value.value(attribute));
            }
        }
        QCOMPARE(rows, QStringList({QStringLiteral("New|⌘N|0"), QStringLiteral("Open Recent||1"),
                                    QStringLiteral("Print|⌘P|0|off")}));
    }
};

int runAtspiTests(int argc, char** argv)
{
    AtspiTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "AtspiTest.moc"
