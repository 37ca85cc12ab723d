#include "TestSupport.h"

#include "commands/CommandAccess.h"
#include "commands/CommandListModel.h"
#include "commands/CommandPolicy.h"
#include "commands/MenuCommands.h"
#include "commands/MenuWalk.h"
#include "platform/linux/AtspiKeyBinding.h"
#include "setup/PermissionStore.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace {
constexpr qint64 editorPid = 310;
constexpr qint64 otherPid = 320;

RunningApp app(qint64 pid, const QString& name)
{
    return RunningApp{name + QStringLiteral(".desktop"), pid, name, false};
}

// A text editor's menu bar: an Apple menu, File with a submenu and a disabled item, Edit.
void buildEditor(MemoryAccessibility& a11y, qint64 pid = editorPid)
{
    const QString bar = a11y.menuBar(pid);
    const QString apple = a11y.addMenuItem(bar, QStringLiteral("Apple"));
    a11y.addMenuItem(apple, QStringLiteral("Über diesen Mac"), QStringLiteral("q"), 0);
    const QString file = a11y.addMenuItem(bar, QStringLiteral("Ablage"));
    a11y.addMenuItem(file, QStringLiteral("Neu"), QStringLiteral("n"), 0);
    a11y.addMenuItem(file, QStringLiteral("Sichern unter …"), QStringLiteral("s"), 1);
    const QString recent = a11y.addMenuItem(file, QStringLiteral("Zuletzt benutzt"));
    a11y.addMenuItem(recent, QStringLiteral("Alle löschen"), QStringLiteral("k"), 2);
    a11y.addMenuItem(file, QStringLiteral("Drucken"), QStringLiteral("p"), 0, false);
    a11y.addMenuItem(file, QStringLiteral("Ohne Kürzel"));
    const QString edit = a11y.addMenuItem(bar, QStringLiteral("Bearbeiten"));
    a11y.addMenuItem(edit, QStringLiteral("Kopieren"), QStringLiteral("c"), 0);
}

QStringList names(const QList<CommandItem>& items)
{
    QStringList list;
    for (const CommandItem& item : items)
        list.append(item.name + QLatin1Char('|') + item.keys);
    return list;
}

// The store over the memory platform with trust granted and the editor running.
struct Rig
{
    Rig()
    {
        memory.permissions.accessibility = true;
        memory.workspace.running.insert(editorPid, app(editorPid, QStringLiteral("Editor")));
        memory.workspace.running.insert(otherPid, app(otherPid, QStringLiteral("Chat")));
        buildEditor(memory.accessibility);
    }
    MemoryPlatform memory;
    PermissionStore permissions{memory.permissions, memory.clock};
    MenuCommands store{MenuCommands::Services{memory.accessibility, memory.workspace, memory.permissions,
                                              memory.scheduler, memory.clock},
                       permissions};
};
} // namespace

// Menu commands: naming and key rules, the walk's limits, the store's target, tokens and presses.
class CommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void namesKeysAndAppleMenus()
    {
        for (const char* title : {"Apple", "APPLE", " apple \n", "\uF8FF"})
            QVERIFY2(CommandPolicy::isAppleMenu(QString::fromUtf8(title)), title);
        QVERIFY(!CommandPolicy::isAppleMenu(QStringLiteral("Safari")));
        QVERIFY(!CommandPolicy::isAppleMenu(QStringLiteral("Finder")));
        const QList<std::pair<int, QString>> table = {
            {0, QStringLiteral("⌘N")},  {1, QStringLiteral("⇧⌘N")},   {2, QStringLiteral("⌥⌘N")},
            {4, QStringLiteral("⌃⌘N")}, {7, QStringLiteral("⌃⌥⇧⌘N")}, {8, QStringLiteral("N")},
            {12, QStringLiteral("⌃N")}};
        for (const auto& [bits, expected] : table)
            QCOMPARE(CommandPolicy::keys(QStringLiteral("n"), bits), expected);
        QCOMPARE(CommandPolicy::keys(QStringLiteral("n"), std::nullopt), QStringLiteral("⌘N"));
        QCOMPARE(CommandPolicy::name(QString(), QStringLiteral("Neu")), QStringLiteral("Neu"));
        QCOMPARE(CommandPolicy::name(QStringLiteral("Ablage"), QStringLiteral("Neu")),
                 QStringLiteral("Ablage › Neu"));
    }

    void keyBindingsOfBothToolkits()
    {
        struct Case
        {
            const char* binding;
            const char* keys; // empty: not a shortcut
        };
        const Case cases[] = {
            {"Ctrl+N", "⌘N"},
            {"Ctrl+Shift+S", "⇧⌘S"},
            {"Alt+Shift+3", "⌥⇧3"},
            {"Meta+Ctrl+F", "⌃⌘F"},
            {"Ctrl++", "⌘+"},
            {"Ctrl+K, Ctrl+C", "⌘K"},
            {"<Primary><Shift>s", "⇧⌘S"},
            {"<Control>q", "⌘Q"},
            {"a;<Alt>f:a;<Primary><Shift>s", "⇧⌘S"},
            {"n;<Alt>f:n;", ""},
            {"<Primary>plus", "⌘+"},
            {"<Super><Alt>x", "⌃⌥X"},
            {"F11", "F11"},
            {"n", ""},
            {"", ""},
            {"<Hyperdrive>q", ""},
            {"Ctrl+Frobnicate+Q", ""},
            {"<Primary", ""},
        };
        for (const Case& c : cases) {
            const auto shortcut = AtspiKeyBinding::parse(QString::fromUtf8(c.binding));
            const QString rendered =
                shortcut ? CommandPolicy::keys(shortcut->key, shortcut->modifiers) : QString();
            QVERIFY2(rendered == QString::fromUtf8(c.keys), c.binding);
        }
        QVERIFY(!AtspiKeyBinding::parse(QStringLiteral("Ctrl+") + QString(10000, QLatin1Char('x'))));
        // "n;<Alt>f:n" without an accelerator is a mnemonic path only.
        QVERIFY(!AtspiKeyBinding::parse(QStringLiteral("n;<Alt>f:n")));
        QVERIFY(AtspiKeyBinding::isMnemonic(*AtspiKeyBinding::parse(QStringLiteral("Alt+F")),
                                            QStringLiteral("File")));
        QVERIFY(!AtspiKeyBinding::isMnemonic(*AtspiKeyBinding::parse(QStringLiteral("Alt+Q")),
                                             QStringLiteral("File")));
        QVERIFY(!AtspiKeyBinding::isMnemonic(*AtspiKeyBinding::parse(QStringLiteral("Ctrl+F")),
                                             QStringLiteral("File")));
    }

    void statusTexts()
    {
        QVERIFY(CommandAccess::message(-25211, 0).contains(QStringLiteral("(AX -25211)")));
        QCOMPARE(
            CommandAccess::message(-25204, 3),
            QStringLiteral(
                "Die ausgewählte App antwortet gerade nicht. Erneut laden oder eine andere App wählen."));
        QCOMPARE(CommandAccess::message(-25202, 0),
                 QStringLiteral(
                     "Menüleiste momentan nicht lesbar (AX -25202). Andere App wählen oder erneut laden."));
        QCOMPARE(CommandAccess::message(0, 0),
                 QStringLiteral("Diese App stellt keine lesbaren Tastenkürzel bereit."));
        QCOMPARE(CommandAccess::message(0, 12), QStringLiteral("12 Menübefehle geladen."));
    }

    void theWalkNamesItemsAfterTheirTopLevelMenu()
    {
        MemoryPlatform memory;
        buildEditor(memory.accessibility);
        const MenuRead read = MenuWalk(memory.accessibility, memory.clock).read(editorPid);
        QCOMPARE(read.error, 0);
        QCOMPARE(
            names(read.items),
            QStringList({QStringLiteral("Ablage › Neu|⌘N"), QStringLiteral("Ablage › Sichern unter …|⇧⌘S"),
                         QStringLiteral("Ablage › Alle löschen|⌥⌘K"), QStringLiteral("Ablage › Drucken|⌘P"),
                         QStringLiteral("Bearbeiten › Kopieren|⌘C")}));
        QVERIFY(read.items.at(0).enabled);
        QVERIFY(!read.items.at(3).enabled);
        QCOMPARE(read.items.at(0).pid, qint32(editorPid));
        QVERIFY(read.items.at(0).id !=
                MenuWalk(memory.accessibility, memory.clock).read(editorPid).items.at(0).id);
        // An application without a menu bar has nothing to list and no error.
        memory.accessibility.addApplication(otherPid);
        const MenuRead bare = MenuWalk(memory.accessibility, memory.clock).read(otherPid);
        QCOMPARE(bare.error, 0);
        QVERIFY(bare.items.isEmpty());
        // An application nobody answers for is an invalid element.
        QCOMPARE(MenuWalk(memory.accessibility, memory.clock).read(999).error, -25202);

        // A long menu is read in several batches: order, a submenu in its place and each item's
        // own state survive.
        const QString tools =
            memory.accessibility.addMenuItem(memory.accessibility.menuBar(330), QStringLiteral("Werkzeuge"));
        QStringList expected;
        for (int i = 0; i < 120; ++i) {
            if (i == MenuWalk::batchSize - 1) {
                const QString more = memory.accessibility.addMenuItem(tools, QStringLiteral("Mehr"));
                memory.accessibility.addMenuItem(more, QStringLiteral("Tief"), QStringLiteral("t"), 0);
                expected.append(QStringLiteral("Werkzeuge › Tief|⌘T"));
            }
            if (i % 3 == 0) {
                memory.accessibility.addMenuItem(tools, QStringLiteral("Ohne %1").arg(i));
                continue;
            }
            memory.accessibility.addMenuItem(tools, QStringLiteral("W %1").arg(i), QStringLiteral("w"), 0,
                                             i % 5 != 0);
            expected.append(QStringLiteral("Werkzeuge › W %1|⌘W").arg(i) + (i % 5 != 0 ? "" : "|off"));
        }
        QStringList rows;
        for (const CommandItem& item : MenuWalk(memory.accessibility, memory.clock).read(330).items)
            rows.append(item.name + QLatin1Char('|') + item.keys + (item.enabled ? "" : "|off"));
        QCOMPARE(rows, expected);
    }

    void theWalkStopsAtItsLimits()
    {
        MemoryPlatform memory;
        MemoryAccessibility& a11y = memory.accessibility;
        // 5,000 shortcuts: exactly 400 are listed.
        const QString huge = a11y.addMenuItem(a11y.menuBar(1), QStringLiteral("Groß"));
        for (int i = 0; i < 5000; ++i)
            a11y.addMenuItem(huge, QString(10000, QLatin1Char('a' + i % 26)), QStringLiteral("x"), 0);
        QCOMPARE(MenuWalk(a11y, memory.clock).read(1).items.size(), 400);
        QCOMPARE(MenuWalk(a11y, memory.clock).read(1).items.first().name.size(), 10000 + 7);

        // 40 levels: items below depth 6 are never reached.
        QString parent = a11y.menuBar(2);
        for (int depth = 1; depth <= 40; ++depth)
            parent = a11y.addMenuItem(parent, QStringLiteral("Ebene %1").arg(depth), QStringLiteral("e"), 0);
        QCOMPARE(MenuWalk(a11y, memory.clock).read(2).items.size(), 6);

        // Every call takes 50 ms: the walk ends at its 2-second deadline with what it found.
        a11y.setOnCall([&memory] { memory.clock.advance(0.05); });
        const qsizetype partial = MenuWalk(a11y, memory.clock).read(1).items.size();
        QVERIFY2(partial > 0 && partial < 20, qPrintable(QString::number(partial)));
        a11y.setOnCall({});

        // An application that stops answering is reported as such.
        a11y.setUnresponsive(1, true);
        const MenuRead silent = MenuWalk(a11y, memory.clock).read(1);
        QCOMPARE(silent.error, -25204);
        QVERIFY(silent.items.isEmpty());
    }

    void theTargetFallsBackToThePreviousApplication()
    {
        Rig rig;
        // Brenlow itself frontmost with no previous target.
        rig.store.readCommands(app(rig.memory.workspace.currentPid(), QStringLiteral("brenlow")));
        QCOMPARE(rig.store.commandStatus(), QStringLiteral("Andere App aktivieren und Command halten."));
        QVERIFY(!rig.store.commandLoading());

        rig.store.readCommands(app(editorPid, QStringLiteral("Editor")));
        QCOMPARE(rig.store.commandApp(), QStringLiteral("Editor"));
        QVERIFY(rig.store.commandLoading());
        QCOMPARE(rig.store.commandStatus(), QStringLiteral("Menübefehle werden gelesen …"));
        QTRY_VERIFY(!rig.store.commandLoading());
        QCOMPARE(rig.store.commands().size(), 5);
        QCOMPARE(rig.store.commandStatus(), QStringLiteral("5 Menübefehle geladen."));

        // A reload from inside Brenlow reads the editor again.
        rig.store.readCommands(app(rig.memory.workspace.currentPid(), QStringLiteral("brenlow")));
        QCOMPARE(rig.store.commandApp(), QStringLiteral("Editor"));
        QTRY_COMPARE(rig.store.commands().size(), 5);

        // Once the editor has quit there is no target.
        rig.memory.workspace.running[editorPid].terminated = true;
        rig.store.readCommands(std::nullopt);
        QCOMPARE(rig.store.commandStatus(), QStringLiteral("Andere App aktivieren und Command halten."));
        QVERIFY(rig.store.commands().isEmpty());
    }

    void onlyTheNewestReadIsApplied()
    {
        Rig rig;
        const QString chatBar = rig.memory.accessibility.menuBar(otherPid);
        const QString menu = rig.memory.accessibility.addMenuItem(chatBar, QStringLiteral("Chat"));
        rig.memory.accessibility.addMenuItem(menu, QStringLiteral("Senden"), QStringLiteral("e"), 0);
        QSignalSpy changes(&rig.store, &MenuCommands::commandsChanged);
        rig.store.readCommands(app(editorPid, QStringLiteral("Editor")));
        rig.store.readCommands(app(otherPid, QStringLiteral("Chat")));
        QCOMPARE(rig.store.commandGeneration(), quint64(2));
        QTRY_VERIFY(!rig.store.commandLoading());
        QTest::qWait(50);
        QCOMPARE(names(rig.store.commands()), QStringList{QStringLiteral("Chat › Senden|⌘E")});
        // One change empties the list for the first read; the editor's result never arrives.
        QCOMPARE(changes.count(), 1);
    }

    void pressingRunsOnlyWhatIsStillThere()
    {
        Rig rig;
        QSignalSpy closes(&rig.store, &MenuCommands::closeRequested);
        rig.store.readCommands(app(editorPid, QStringLiteral("Editor")));
        QTRY_COMPARE(rig.store.commands().size(), 5);
        const CommandItem saveAs = rig.store.commands().at(1);
        const CommandItem print = rig.store.commands().at(3);

        // A disabled item leaves the panel open.
        rig.store.executeCommand(print);
        QCOMPARE(rig.store.commandStatus(),
                 QStringLiteral("Befehl nicht verfügbar. Bitte die Liste erneut laden."));
        QCOMPARE(closes.count(), 0);

        rig.store.executeCommand(saveAs);
        QVERIFY(rig.store.commandExecuting());
        QCOMPARE(closes.count(), 1);
        QCOMPARE(rig.memory.workspace.frontmost->pid, editorPid);
        // A second click while the first is pending is refused.
        rig.store.executeCommand(saveAs);
        QCOMPARE(rig.store.commandStatus(),
                 QStringLiteral("Befehl nicht verfügbar. Bitte die Liste erneut laden."));
        rig.memory.scheduler.advance(MenuCommands::pressDelay);
        QTRY_VERIFY(!rig.store.commandExecuting());
        QCOMPARE(rig.store.commandStatus(), QStringLiteral("Befehl ausgeführt: Ablage › Sichern unter …"));
        QCOMPARE(rig.memory.accessibility.pressed(), QStringList{saveAs.element.path});

        // The user switches to a third application during the pause: no press.
        rig.store.executeCommand(saveAs);
        rig.memory.workspace.frontmost = app(otherPid, QStringLiteral("Chat"));
        rig.memory.scheduler.advance(MenuCommands::pressDelay);
        QTRY_VERIFY(!rig.store.commandExecuting());
        QCOMPARE(rig.store.commandStatus(),
                 QStringLiteral("Befehl nicht mehr verfügbar. Ziel-App aktivieren und Liste erneut laden."));
        QCOMPARE(rig.memory.accessibility.pressed().size(), 1);

        // The editor quits between the read and the press.
        rig.memory.accessibility.removeApplication(editorPid);
        rig.store.executeCommand(saveAs);
        rig.memory.scheduler.advance(MenuCommands::pressDelay);
        QTRY_VERIFY(!rig.store.commandExecuting());
        QCOMPARE(rig.store.commandStatus(),
                 QStringLiteral("Befehl nicht mehr verfügbar. Ziel-App aktivieren und Liste erneut laden."));

        // Activation refused.
        rig.memory.workspace.refuseActivation = true;
        rig.store.executeCommand(saveAs);
        QVERIFY(!rig.store.commandExecuting());
        QCOMPARE(rig.store.commandStatus(), QStringLiteral("Die Ziel-App konnte nicht aktiviert werden."));
    }

    void theSearchFiltersByName()
    {
        Rig rig;
        CommandListModel rows(rig.store);
        QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
        rig.store.readCommands(app(editorPid, QStringLiteral("Editor")));
        QTRY_COMPARE(rows.rowCount(), 5);
        rows.setSearch(QStringLiteral("ABLAGE"));
        QCOMPARE(rows.rowCount(), 4);
        rows.setSearch(QStringLiteral("kopier"));
        QCOMPARE(rows.rowCount(), 1);
        QCOMPARE(rows.item(0)->name, QStringLiteral("Bearbeiten › Kopieren"));
        QCOMPARE(rows.index(0).data(CommandListModel::KeysRole).toString(), QStringLiteral("⌘C"));
        rows.setSearch(QString());
        QCOMPARE(rows.rowCount(), 5);
    }
};

int runCommandsTests(int argc, char** argv)
{
    CommandsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CommandsTest.moc"
