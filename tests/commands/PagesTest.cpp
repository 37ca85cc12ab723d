#include "TestSupport.h"

#include "commands/CommandListModel.h"
#include "commands/MenuBarApps.h"
#include "commands/MenuCommands.h"
#include "commands/widgets/CommandsPage.h"
#include "commands/widgets/MenuBarAppsPane.h"
#include "commands/widgets/MenuBarAppsSettings.h"
#include "setup/PermissionStore.h"
#include "ui/ToggleRow.h"
#include "ui/ToggleSwitch.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

// The commands page and the menu-bar page and settings, driven as the user would.
class PagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        qRegisterMetaType<CommandItem>();
    }

    void theCommandsPageFiltersAndRunsACommand()
    {
        MemoryPlatform memory;
        memory.workspace.running.insert(
            5, RunningApp{QStringLiteral("e.desktop"), 5, QStringLiteral("Editor"), false});
        const QString file =
            memory.accessibility.addMenuItem(memory.accessibility.menuBar(5), QStringLiteral("Ablage"));
        memory.accessibility.addMenuItem(file, QStringLiteral("Neu"), QStringLiteral("n"));
        memory.accessibility.addMenuItem(file, QStringLiteral("Sichern"), QStringLiteral("s"));
        PermissionStore permissions(memory.permissions, memory.clock);
        MenuCommands commands(
            {memory.accessibility, memory.workspace, memory.permissions, memory.scheduler, memory.clock},
            permissions);
        CommandsPage page(commands, permissions);
        page.resize(560, 320);
        page.show();
        QVERIFY(!page.accessButton()->isHidden());
        QVERIFY(page.list()->isHidden());
        QCOMPARE(page.searchField()->placeholderText(), QStringLiteral("Befehl suchen …"));

        commands.readCommands(memory.workspace.running.value(5));
        QTRY_COMPARE(page.rows()->rowCount(), 2);
        QVERIFY(!page.list()->isHidden());
        QCOMPARE(page.statusLabel()->text(), QStringLiteral("2 Menübefehle geladen."));
        QTest::keyClicks(page.searchField(), QStringLiteral("sich"));
        QCOMPARE(page.rows()->rowCount(), 1);
        QSignalSpy runs(&page, &CommandsPage::executeRequested);
        const QRect row = page.list()->visualRect(page.rows()->index(0));
        QTest::mouseClick(page.list()->viewport(), Qt::LeftButton, {}, row.center());
        QCOMPARE(runs.count(), 1);
        QCOMPARE(runs.at(0).at(0).value<CommandItem>().name, QStringLiteral("Ablage › Sichern"));
        QTest::keyClicks(page.searchField(), QStringLiteral("xyz"));
        QVERIFY(page.list()->isHidden());
    }

    void theSettingsSwitchTheIntegrationAndListEntries()
    {
        MemoryPlatform memory;
        memory.permissions.accessibility = true;
        ScratchDomain domain;
        PermissionStore permissions(memory.permissions, memory.clock);
        MenuBarApps apps(*domain.defaults, memory.statusBar, memory.displays, memory.scheduler, permissions);
        apps.setStarted(true);
        TrayItem chat;
        chat.service = QStringLiteral(":1.7");
        chat.appId = QStringLiteral("chat.desktop");
        chat.appName = QStringLiteral("Chat");
        chat.itemId = QStringLiteral("main");
        memory.statusBar.setItems({chat});
        MenuBarAppsSettings settings(apps);
        MenuBarAppsPane pane(apps);
        QVERIFY(!settings.adoptButton()->isEnabled());
        QVERIFY(!pane.entryButtons().size());

        settings.enabledRow()->toggleSwitch()->click();
        QVERIFY(apps.enabled());
        QTRY_COMPARE(settings.entryRows().size(), 2);
        // The entry's own switch selects it; the page then offers it.
        settings.entryRows().at(0)->toggleSwitch()->click();
        QCOMPARE(apps.selected(), QSet<QString>{QStringLiteral("chat.desktop:main")});
        QTRY_COMPARE(pane.entryButtons().size(), 1);
        settings.entryRows().at(1)->toggleSwitch()->click();
        QCOMPARE(apps.notificationSelection(), QSet<QString>{QStringLiteral("chat.desktop:main")});
        settings.notificationsRow()->toggleSwitch()->click();
        QVERIFY(apps.monitoring());
    }
};

int runPagesTests(int argc, char** argv)
{
    PagesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PagesTest.moc"
