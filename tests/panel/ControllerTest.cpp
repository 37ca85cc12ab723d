#include "PanelTests.h"
#include "TestSupport.h"

#include "model/Preferences.h"
#include "panel/HistoryHotKey.h"
#include "panel/MemoryPanelWindow.h"
#include "panel/PanelController.h"
#include "setup/OnboardingState.h"

#include <QTest>

namespace {

const QPointF away(5, 500);
const QPointF onNotch(960, 10);
const QRectF closedFrame(880, 0, 160, 24);

// A launched panel on the memory platform: one 1920 × 1080 display without a notch.
struct Rig
{
    Rig()
    {
        controller.reposition();
        window.orderFront();
        controller.startPointerTimer();
        // The first poll finds the pointer at rest and puts the poll to sleep.
        advance(0.1);
    }
    Model& model() { return *fixture.model; }
    MemoryPlatform& memory() { return fixture.memory; }
    void advance(double seconds) { fixture.memory.scheduler.advance(seconds); }
    void moveTo(QPointF point) { fixture.memory.pointer.moveTo(point); }
    void prefer(const std::function<void(PreferenceValues&)>& edit) { model().preferences().update(edit); }
    // Opens by hovering and waits out the resize's quiet time.
    void hoverOpen()
    {
        moveTo(onNotch);
        QVERIFY(model().expanded());
        advance(0.3);
    }

    ModelFixture fixture;
    MemoryPanelWindow window;
    PanelController controller{*fixture.model, window};
};

RunningApp editor()
{
    return RunningApp{QStringLiteral("org.kde.kate"), 77, QStringLiteral("Kate"), false};
}

} // namespace

// The panel rules on the manual clock: hovering, explicit requests, keys, the glow, sleeping polls.
class ControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void launchLeavesTheClosedPanelOverTheNotch()
    {
        Rig rig;
        QCOMPARE(rig.window.frame(), closedFrame);
        QVERIFY(!rig.window.lastChangeAnimated());
        QCOMPARE(rig.controller.activationRect(), QRectF(876, 0, 168, 30));
        QCOMPARE(rig.model().notchWidth(), 160.0);
        QCOMPARE(rig.model().notchHeight(), 24.0);
        QVERIFY(!rig.model().expanded());
    }

    void hoverOpensAnywhereInTheActivationArea_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<bool>("opens");
        QTest::newRow("top edge above the notch") << QPointF(960, 0) << true;
        QTest::newRow("4 left") << QPointF(876, 12) << true;
        QTest::newRow("4 right") << QPointF(1044, 12) << true;
        QTest::newRow("6 below") << QPointF(960, 30) << true;
        QTest::newRow("5 left") << QPointF(875, 12) << false;
        QTest::newRow("7 below") << QPointF(960, 31) << false;
    }

    void hoverOpensAnywhereInTheActivationArea()
    {
        QFETCH(QPointF, point);
        QFETCH(bool, opens);
        Rig rig;
        rig.moveTo(point);
        rig.advance(1);
        QCOMPARE(rig.model().expanded(), opens);
        if (!opens)
            return;
        QCOMPARE(rig.model().page(), Page::home);
        QCOMPARE(rig.window.frame(), QRectF(650, 0, 620, 378));
        QVERIFY(rig.window.lastChangeAnimated());
        // Hovering leaves the keyboard where it was.
        QVERIFY(!rig.window.isKey());
    }

    void openDelayMustBeWaitedOutInOneStay()
    {
        Rig rig;
        rig.prefer([](PreferenceValues& v) { v.openDelay = 0.3; });
        rig.moveTo(onNotch);
        rig.advance(0.25);
        rig.moveTo(QPointF(960, 200));
        rig.advance(0.1);
        rig.moveTo(onNotch);
        rig.advance(0.26);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.08);
        QVERIFY(rig.model().expanded());
    }

    void leavingClosesAfterTheDelayAndComingBackCancels()
    {
        Rig rig;
        rig.hoverOpen();
        rig.moveTo(away);
        rig.advance(0.45);
        QVERIFY(rig.model().expanded());
        // Polled at 30 Hz: due at 0.5 s, seen within two polls.
        rig.advance(0.15);
        QVERIFY(!rig.model().expanded());
        QCOMPARE(rig.window.frame(), closedFrame);

        rig.hoverOpen();
        rig.moveTo(away);
        rig.advance(0.3);
        rig.moveTo(QPointF(700, 300)); // inside the open panel, off the notch
        rig.advance(2);
        QVERIFY(rig.model().expanded());
    }

    void theResizeQuietTimeDelaysTheCloseTimer()
    {
        Rig rig;
        rig.moveTo(onNotch);
        QVERIFY(rig.model().expanded());
        rig.moveTo(away);
        rig.advance(0.65);
        QVERIFY(rig.model().expanded());
        rig.advance(0.15);
        QVERIFY(!rig.model().expanded());
    }

    void escapeKeepsThePanelClosedUntilThePointerLeaves()
    {
        Rig rig;
        rig.hoverOpen();
        QVERIFY(rig.controller.handleLocalKey(KeyCode::Escape, {}));
        QVERIFY(!rig.model().expanded());
        QVERIFY(rig.controller.hover().suppressed);
        rig.advance(2);
        QVERIFY(!rig.model().expanded());
        rig.moveTo(QPointF(960, 100));
        rig.advance(0.1);
        rig.moveTo(onNotch);
        rig.advance(0.1);
        QVERIFY(rig.model().expanded());
    }

    void whatHoldsThePanelOpen_data()
    {
        QTest::addColumn<QString>("lock");
        QTest::newRow("pin") << "pin";
        QTest::newRow("menu") << "menu";
        QTest::newRow("file dialog") << "dialog";
        QTest::newRow("mouse button") << "button";
    }

    void whatHoldsThePanelOpen()
    {
        QFETCH(QString, lock);
        Rig rig;
        rig.hoverOpen();
        if (lock == "pin")
            rig.model().setPanelPinned(true);
        else if (lock == "menu")
            rig.controller.menuBegan();
        else if (lock == "dialog")
            rig.model().addInteractionLock();
        else
            rig.memory().pointer.pressed = true;
        rig.moveTo(away);
        rig.advance(3);
        QVERIFY(rig.model().expanded());

        if (lock == "pin") {
            // Closing by any means takes the pin out.
            rig.controller.collapse();
            QVERIFY(!rig.model().panelPinned());
            return;
        }
        if (lock == "menu")
            rig.controller.menuEnded();
        else if (lock == "dialog")
            rig.model().releaseInteractionLock();
        else
            rig.memory().pointer.pressed = false;
        // The close delay starts when the lock ends.
        rig.advance(0.45);
        QVERIFY(rig.model().expanded());
        rig.advance(0.15);
        QVERIFY(!rig.model().expanded());
    }

    void withoutHoverOnlyExplicitRequestsOpenAndClose()
    {
        Rig rig;
        rig.prefer([](PreferenceValues& v) { v.hover = false; });
        rig.moveTo(onNotch);
        rig.advance(1);
        QVERIFY(!rig.model().expanded());
        rig.controller.toggle();
        QVERIFY(rig.model().expanded());
        QVERIFY(rig.window.isKey());
        rig.moveTo(away);
        rig.advance(2);
        QVERIFY(rig.model().expanded());
        rig.controller.toggle();
        QVERIFY(!rig.model().expanded());
        QVERIFY(!rig.window.isKey());
        QVERIFY(!rig.controller.polling());
    }

    void aCaptureKeepsThePanelClosed()
    {
        Rig rig;
        rig.model().setCaptureBusy(true);
        rig.moveTo(onNotch);
        rig.advance(1);
        rig.controller.expand(Page::settings, false);
        rig.controller.welcome(true);
        QVERIFY(!rig.model().expanded());
        QVERIFY(!rig.model().introActive());
    }

    void aPanelOpenedByTheIconStaysUntilThePointerHasBeenInIt()
    {
        Rig rig;
        rig.controller.toggle();
        rig.advance(3);
        QVERIFY(rig.model().expanded());
        rig.moveTo(QPointF(700, 300));
        rig.advance(0.1);
        rig.moveTo(away);
        rig.advance(0.6);
        QVERIFY(!rig.model().expanded());
    }

    void openingChoosesThePageAndNotesTheTarget()
    {
        Rig rig;
        rig.memory().workspace.frontmost = editor();
        rig.model().setPage(Page::notes);
        rig.controller.expand(std::nullopt, false);
        QCOMPARE(rig.model().page(), Page::notes);
        QCOMPARE(rig.model().commandTarget()->pid, qint64(77));
        QCOMPARE(rig.controller.previousApp()->pid, qint64(77));
        QCOMPARE(rig.window.frame().size(), QSizeF(620, 466));
        rig.controller.collapse();

        rig.prefer([](PreferenceValues& v) { v.rememberPage = false; });
        rig.memory().workspace.frontmost = RunningApp{QStringLiteral("brenlow"), 4242, QStringLiteral("Brenlow")};
        rig.controller.expand(std::nullopt, false);
        QCOMPARE(rig.model().page(), Page::home);
        // Our own process is never the target of the commands page.
        QCOMPARE(rig.model().commandTarget()->pid, qint64(77));
        rig.controller.expand(Page::weather, false);
        QCOMPARE(rig.model().page(), Page::weather);
        rig.controller.collapse();

        rig.model().onboarding().begin(false);
        rig.controller.expand(Page::clipboard, false);
        QCOMPARE(rig.model().page(), Page::onboarding);
        QCOMPARE(rig.window.frame(), QRectF(640, 0, 640, 528));
    }

    void holdingCommandOpensTheCommandsPage()
    {
        Rig rig;
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
        Rig rig;
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
        Rig rig;
        MemoryHotKeys& keys = rig.memory().hotKeys;
        rig.controller.configureShortcut();
        QCOMPARE(keys.registered, std::optional<KeyModifiers>(KeyModifier::Control));
        QCOMPARE(rig.model().hotkeyStatus(), QStringLiteral("⌃ V ist aktiv. Eintrag wählen, dann mit ⌘ V einfügen."));

        rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::optionV; });
        rig.controller.configureShortcut();
        QCOMPARE(keys.registered, std::optional<KeyModifiers>(KeyModifier::Option));
        QCOMPARE(rig.model().hotkeyStatus(), QStringLiteral("⌥ V ist aktiv. Eintrag wählen, dann mit ⌘ V einfügen."));

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
        Rig rig;
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
        Rig rig;
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
        Rig rig;
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
        Rig rig;
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

    void aRestingPointerCostsNoPolls()
    {
        Rig rig;
        QVERIFY(!rig.controller.polling());
        QVERIFY(rig.memory().pointer.watching);
        const qint64 polls = rig.controller.polls();
        rig.advance(60);
        QCOMPARE(rig.controller.polls(), polls);

        // A movement outside polls until the pointer rests again.
        rig.moveTo(QPointF(300, 600));
        QCOMPARE(rig.controller.polls(), polls + 1);
        QVERIFY(rig.controller.polling());
        QVERIFY(!rig.memory().pointer.watching);
        rig.memory().pointer.moveTo(QPointF(320, 590));
        rig.advance(1.0 / 30);
        rig.advance(1.0 / 30);
        QVERIFY(!rig.controller.polling());
        QVERIFY(rig.memory().pointer.watching);
        const qint64 settled = rig.controller.polls();
        rig.advance(10);
        QCOMPARE(rig.controller.polls(), settled);
    }

    void everyDelayFiresOnTimeAroundSleeping()
    {
        Rig rig;
        rig.prefer([](PreferenceValues& v) {
            v.openDelay = 0.3;
            v.closeDelay = 0.8;
        });
        rig.advance(1);
        QVERIFY(!rig.controller.polling());
        // The pointer arrives and rests: the open delay still runs out.
        rig.moveTo(onNotch);
        rig.advance(0.29);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.05);
        QVERIFY(rig.model().expanded());
        rig.advance(0.3);
        // It leaves and rests far away: the close delay still runs out, then the poll sleeps.
        rig.moveTo(away);
        rig.advance(0.79);
        QVERIFY(rig.model().expanded());
        rig.advance(0.1);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.2);
        QVERIFY(!rig.controller.polling());
        QVERIFY(rig.memory().pointer.watching);

        // Turning hover off stops watching altogether.
        rig.prefer([](PreferenceValues& v) { v.hover = false; });
        rig.advance(0.1);
        QVERIFY(!rig.memory().pointer.watching);
        QVERIFY(!rig.controller.polling());
    }
};

int runControllerTests(int argc, char** argv)
{
    ControllerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ControllerTest.moc"
