#include "PanelRig.h"
#include "PanelTests.h"

#include "setup/OnboardingState.h"
#include "shell/HistoryHotKey.h"

// The other ways in and out: the Command hold, the history shortcut, the welcome glow, placement.
class TriggerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void holdingCommandOpensTheCommandsPage()
    {
        PanelRig rig;
        rig.memory().workspace.frontmost = editor();
        rig.controller.handleModifiers(KeyModifier::Command);
        rig.advance(0.79);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.02);
        QVERIFY(rig.model().expanded());
        QCOMPARE(rig.model().page(), Page::commands);
        QVERIFY(rig.controller.commandVisible());
        // Held open against leaving while Command is down; releasing closes.
        rig.moveTo(QPointF(700, 300));
        rig.advance(0.1);
        rig.moveTo(away);
        rig.advance(2);
        QVERIFY(rig.model().expanded());
        rig.controller.handleModifiers({});
        QVERIFY(!rig.model().expanded());
        QVERIFY(!rig.controller.commandVisible());
    }

    void whatStopsTheCommandHold_data()
    {
        QTest::addColumn<QString>("interruption");
        QTest::newRow("a key") << "key";
        QTest::newRow("shift added") << "shift";
        QTest::newRow("our own app in front") << "self";
        QTest::newRow("panel has the keyboard") << "key window";
        QTest::newRow("preference off") << "off";
        QTest::newRow("switched off while held") << "off later";
        QTest::newRow("tour running") << "tour";
    }

    void whatStopsTheCommandHold()
    {
        QFETCH(QString, interruption);
        PanelRig rig;
        rig.memory().workspace.frontmost = editor();
        if (interruption == "self")
            rig.memory().workspace.frontmost->pid = rig.memory().workspace.currentPid();
        if (interruption == "key window")
            rig.window.makeKey();
        if (interruption == "off")
            rig.prefer([](PreferenceValues& v) { v.commands = false; });
        if (interruption == "tour")
            rig.model().onboarding().begin(false);
        rig.controller.handleModifiers(KeyModifier::Command);
        rig.advance(0.5);
        if (interruption == "key")
            rig.controller.handleKeyDown();
        if (interruption == "shift")
            rig.controller.handleModifiers(KeyModifier::Command | KeyModifier::Shift);
        if (interruption == "off later")
            rig.prefer([](PreferenceValues& v) { v.commands = false; });
        rig.advance(1);
        QVERIFY(!rig.model().expanded());
        QVERIFY(!rig.controller.commandVisible());
    }

    void theHistoryShortcutIsRegisteredOncePerChoice()
    {
        PanelRig rig;
        MemoryHotKeys& keys = rig.memory().hotKeys;
        rig.controller.configureShortcut();
        QCOMPARE(keys.registered, std::optional<KeyModifiers>(KeyModifier::Control));
        QCOMPARE(rig.model().hotkeyStatus(),
                 QStringLiteral("⌃ V ist aktiv. Eintrag wählen, dann mit ⌘ V einfügen."));

        rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::optionV; });
        rig.controller.configureShortcut();
        QCOMPARE(keys.registered, std::optional<KeyModifiers>(KeyModifier::Option));
        QCOMPARE(rig.model().hotkeyStatus(),
                 QStringLiteral("⌥ V ist aktiv. Eintrag wählen, dann mit ⌘ V einfügen."));

        // Another setting changes: the registration and its status stay untouched.
        rig.model().setHotkeyStatus(QStringLiteral("unverändert"));
        rig.prefer([](PreferenceValues& v) { v.layout = PanelLayout::tall; });
        rig.controller.configureShortcut();
        QCOMPARE(rig.model().hotkeyStatus(), QStringLiteral("unverändert"));

        rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::off; });
        rig.controller.configureShortcut();
        QCOMPARE(keys.registered, std::nullopt);
        QCOMPARE(rig.model().hotkeyStatus(), QStringLiteral("Globaler Kurzbefehl ausgeschaltet."));

        keys.taken = {KeyModifier::Control | KeyModifier::Shift};
        rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::controlShiftV; });
        rig.controller.configureShortcut();
        QCOMPARE(rig.model().hotkeyStatus(),
                 QStringLiteral("⌃ ⇧ V ist bereits belegt. Bitte eine andere Kombination wählen."));
        // Not retried until the choice changes.
        keys.taken.clear();
        rig.controller.configureShortcut();
        QCOMPARE(keys.registered, std::nullopt);
        rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::controlV; });
        rig.controller.configureShortcut();
        QCOMPARE(keys.registered, std::optional<KeyModifiers>(KeyModifier::Control));
    }

    void shortcutsOpenTheHistory()
    {
        PanelRig rig;
        rig.memory().workspace.frontmost = editor();
        rig.controller.handleModifiers(KeyModifier::Command);
        rig.controller.hotKeyPressed();
        QVERIFY(!rig.controller.commandPending());
        QCOMPARE(rig.model().page(), Page::clipboard);
        QVERIFY(rig.window.isKey());
        rig.controller.collapse();

        // Inside the panel: V with exactly the shortcut's modifiers.
        rig.controller.expand(Page::notes, false);
        QVERIFY(!rig.controller.handleLocalKey(KeyCode::V, KeyModifier::Command));
        QVERIFY(!rig.controller.handleLocalKey(KeyCode::V, KeyModifier::Control | KeyModifier::Shift));
        QCOMPARE(rig.model().page(), Page::notes);
        QVERIFY(rig.controller.handleLocalKey(KeyCode::V, KeyModifier::Control));
        QCOMPARE(rig.model().page(), Page::clipboard);
        rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::off; });
        rig.model().setPage(Page::notes);
        QVERIFY(!rig.controller.handleLocalKey(KeyCode::V, KeyModifier::Control));
        QCOMPARE(rig.model().page(), Page::notes);
    }

    void theWelcomeGlowsThenOpensTheTour_data()
    {
        QTest::addColumn<bool>("reduceMotion");
        QTest::addColumn<double>("duration");
        QTest::newRow("normal") << false << 2.2;
        QTest::newRow("reduced motion") << true << 0.5;
    }

    void theWelcomeGlowsThenOpensTheTour()
    {
        QFETCH(bool, reduceMotion);
        QFETCH(double, duration);
        PanelRig rig;
        rig.memory().displays.reduceMotionOn = reduceMotion;
        rig.controller.welcome(false);
        QVERIFY(rig.model().introActive());
        QVERIFY(rig.model().onboarding().active());
        QCOMPARE(rig.window.frame(), QRectF(868, 0, 184, 40));
        // Hovering is ignored while it glows.
        rig.moveTo(onNotch);
        rig.advance(duration - 0.01);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.02);
        QVERIFY(!rig.model().introActive());
        QVERIFY(rig.model().expanded());
        QCOMPARE(rig.model().page(), Page::onboarding);
        QVERIFY(rig.window.isKey());
    }

    void closingDuringTheGlowCancelsTheTour()
    {
        PanelRig rig;
        rig.model().setPanelPinned(true);
        rig.controller.welcome(true);
        QVERIFY(!rig.model().panelPinned());
        rig.controller.collapse();
        QVERIFY(!rig.model().introActive());
        rig.advance(3);
        QVERIFY(!rig.model().expanded());
        QCOMPARE(rig.window.frame(), closedFrame);
    }

    void repositionChangesOnlyWhatChanged()
    {
        PanelRig rig;
        rig.controller.expand(std::nullopt, false);
        const auto until = rig.controller.repositioningUntil();
        const int changes = rig.window.frameChanges();
        rig.advance(1);
        rig.controller.reposition();
        QCOMPARE(rig.controller.repositioningUntil(), until);
        QCOMPARE(rig.window.frameChanges(), changes);

        rig.prefer([](PreferenceValues& v) { v.layout = PanelLayout::wide; });
        rig.controller.reposition();
        QCOMPARE(rig.window.frame(), QRectF(560, 0, 800, 378));
        QVERIFY(rig.window.lastChangeAnimated());
        QVERIFY(*rig.controller.repositioningUntil() > *until);

        rig.memory().displays.reduceMotionOn = true;
        rig.prefer([](PreferenceValues& v) { v.layout = PanelLayout::tall; });
        rig.controller.reposition();
        QVERIFY(!rig.window.lastChangeAnimated());
        rig.memory().displays.reduceMotionOn = false;
        rig.prefer([](PreferenceValues& v) {
            v.animate = false;
            v.layout = PanelLayout::balanced;
        });
        rig.controller.reposition();
        QVERIFY(!rig.window.lastChangeAnimated());

        // Another display arrangement moves the panel to its top centre.
        rig.controller.collapse();
        rig.memory().displays.list = {DisplayInfo{QStringLiteral("wide"), QRectF(-2560, -360, 2560, 1440), 0,
                                                  std::nullopt, std::nullopt}};
        rig.controller.reposition();
        QCOMPARE(rig.window.frame(), QRectF(-1360, -360, 160, 24));
        QCOMPARE(rig.controller.activationRect(), QRectF(-1364, -360, 168, 30));
    }
};

int runTriggerTests(int argc, char** argv)
{
    TriggerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TriggerTest.moc"
