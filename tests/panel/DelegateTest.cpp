#include "PanelTests.h"
#include "TestSupport.h"

#include "app/AppDelegate.h"
#include "app/NotchPanel.h"
#include "productivity/Productivity.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"
#include "shell/HistoryHotKey.h"
#include "shell/PanelController.h"

#include "shell/widgets/LayoutButton.h"
#include "ui/ToggleRow.h"
#include "ui/ToggleSwitch.h"

#include <QMenu>
#include <QTest>
#include <QWindow>

namespace {

// The delegate on the memory platform with a real panel widget (offscreen).
struct Launched
{
    explicit Launched(bool tourDone = true)
    {
        if (tourDone)
            domain.defaults->setBool(QStringLiteral("welcome.completed"), true);
        delegate = std::make_unique<AppDelegate>(*domain.defaults, memory.platform());
        delegate->launch();
        advance(0.1);
    }
    Model& model() { return delegate->model(); }
    NotchPanel& panel() { return *delegate->panel(); }
    PanelController& controller() { return *delegate->controller(); }
    void advance(double seconds) { memory.scheduler.advance(seconds); }

    MemoryPlatform memory;
    ScratchDomain domain;
    std::unique_ptr<AppDelegate> delegate;
};

const QRect closedFrame(880, 0, 160, 24);

} // namespace

// Launch, shutdown and the wiring between the model, the panel window and the platform services.
class DelegateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void launchBringsEverythingUp()
    {
        Launched app;
        QVERIFY(app.memory.statusBar.visible);
        QCOMPARE(app.memory.statusBar.title, QStringLiteral("Brenlow"));
        QVERIFY(app.memory.keyMonitor.running);
        QCOMPARE(app.memory.hotKeys.registered, std::optional<KeyModifiers>(KeyModifier::Control));
        QCOMPARE(app.model().hotkeyStatus(), HistoryHotKey::activeText(HistoryShortcut::controlV));
        QVERIFY(app.memory.pointer.watching);
        QVERIFY(!app.model().introActive());

        NotchPanel& panel = app.panel();
        QVERIFY(panel.isVisible());
        QCOMPARE(panel.geometry(), closedFrame);
        QCOMPARE(panel.windowTitle(), QStringLiteral("Brenlow"));
        const Qt::WindowFlags flags = panel.windowHandle()->flags();
        QCOMPARE(flags & Qt::WindowType_Mask, Qt::Tool);
        QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
        QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(flags.testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(panel.testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(!panel.isKey());
    }

    void aFirstLaunchGlowsAndOpensTheTour()
    {
        Launched app(false);
        QVERIFY(app.model().introActive());
        QTRY_COMPARE(app.panel().geometry(), QRect(868, 0, 184, 40));
        app.advance(2.2);
        QVERIFY(app.model().expanded());
        QCOMPARE(app.model().page(), Page::onboarding);
        QTRY_COMPARE(app.panel().geometry(), QRect(640, 0, 640, 528));
        QTRY_VERIFY(app.panel().isKey());
    }

    void theModelsSlotsDriveThePanel()
    {
        Launched app;
        app.model().show(Page::notes);
        QVERIFY(app.model().expanded());
        QCOMPARE(app.model().page(), Page::notes);
        QCOMPARE(app.panel().frame(), QRectF(650, 0, 620, 466));
        QVERIFY(!app.panel().windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QTRY_VERIFY(app.panel().isKey());

        // A page change resizes at once.
        app.model().setPage(Page::home);
        QCOMPARE(app.panel().frame(), QRectF(650, 0, 620, 378));
        app.model().productivity().setMini(true);
        QCOMPARE(app.panel().frame(), QRectF(740, 0, 440, 112));

        // A preferences change re-checks the shortcut and resizes.
        app.model().preferences().update([](PreferenceValues& v) {
            v.shortcut = HistoryShortcut::optionV;
            v.layout = PanelLayout::tall;
        });
        QCOMPARE(app.memory.hotKeys.registered, std::optional<KeyModifiers>(KeyModifier::Option));
        QCOMPARE(app.model().hotkeyStatus(),
                 QStringLiteral("⌥ V ist aktiv. Eintrag wählen, dann mit ⌘ V einfügen."));

        app.model().close();
        QVERIFY(!app.model().expanded());
        QCOMPARE(app.panel().frame(), QRectF(closedFrame));
        QTRY_VERIFY(app.panel().windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));

        app.model().captureVisibility(true);
        QVERIFY(!app.panel().isVisible());
        app.model().captureVisibility(false);
        QVERIFY(app.panel().isVisible());

        app.model().startWelcome();
        QVERIFY(app.model().introActive());
        QVERIFY(app.model().onboarding().active());
    }

    void theTrayIconAndTheHotKeyOpenThePanel()
    {
        Launched app;
        app.memory.statusBar.click();
        QVERIFY(app.model().expanded());
        app.memory.statusBar.click();
        QVERIFY(!app.model().expanded());

        app.memory.hotKeys.press();
        QVERIFY(app.model().expanded());
        QCOMPARE(app.model().page(), Page::clipboard);

        app.model().close();
        app.memory.workspace.frontmost =
            RunningApp{QStringLiteral("org.kde.kate"), 77, QStringLiteral("Kate")};
        app.memory.keyMonitor.emitModifiers(KeyModifier::Command);
        app.advance(0.9);
        QCOMPARE(app.model().page(), Page::commands);
        app.memory.keyMonitor.emitModifiers({});
        QVERIFY(!app.model().expanded());
    }

    void keysInThePanelGoThroughTheLocalMonitor()
    {
        Launched app;
        app.delegate->reopen();
        QTRY_VERIFY(app.panel().isKey());
        app.model().setPage(Page::notes);
        QWindow* window = app.panel().windowHandle();
        // Ctrl-V is Command-V, the paste of a text field: not the history shortcut.
        QTest::keyClick(window, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(app.model().page(), Page::notes);
        // Super is Control on this desktop.
        QTest::keyClick(window, Qt::Key_V, Qt::MetaModifier);
        QCOMPARE(app.model().page(), Page::clipboard);
        QTest::keyClick(window, Qt::Key_Escape);
        QVERIFY(!app.model().expanded());
    }

    void openMenusHoldThePanel()
    {
        Launched app;
        app.delegate->reopen();
        QMenu menu;
        menu.addAction(QStringLiteral("Eintrag"));
        menu.popup(QPoint(700, 100));
        QTRY_COMPARE(app.controller().menuDepth(), 1);
        menu.hide();
        QCOMPARE(app.controller().menuDepth(), 0);
        menu.hide();
        QCOMPARE(app.controller().menuDepth(), 0);
    }

    void aNewDisplayArrangementMovesThePanel()
    {
        Launched app;
        app.memory.displays.list = {DisplayInfo{QStringLiteral("big"), QRectF(0, 0, 2560, 1440), 0, {}, {}}};
        app.memory.displays.change();
        QCOMPARE(app.panel().frame(), QRectF(1200, 0, 160, 24));
        QTRY_COMPARE(app.panel().geometry(), QRect(1200, 0, 160, 24));
    }

    void animationFollowsTheSettings()
    {
        Launched app;
        app.delegate->reopen();
        QTRY_COMPARE(app.panel().geometry(), QRect(650, 0, 620, 378));
        // Animated: the window is still on its way right after the change.
        app.model().preferences().update([](PreferenceValues& v) { v.layout = PanelLayout::wide; });
        QVERIFY(app.panel().geometry() != QRect(560, 0, 800, 378));
        QTRY_COMPARE(app.panel().geometry(), QRect(560, 0, 800, 378));
        app.memory.displays.reduceMotionOn = true;
        app.model().preferences().update([](PreferenceValues& v) { v.layout = PanelLayout::tall; });
        QCOMPARE(app.panel().geometry(), QRect(700, 0, 520, 556));
    }

    void settingsControlsChangeTheRecordAndTheFrame()
    {
        Launched app;
        app.model().show(Page::settings);
        QTRY_COMPARE(app.panel().geometry(), QRect(650, 0, 620, 466));
        LayoutButton* wide = nullptr;
        for (LayoutButton* button : app.panel().findChildren<LayoutButton*>())
            wide = button->layout() == PanelLayout::wide ? button : wide;
        QVERIFY(wide);
        wide->click();
        QCOMPARE(app.model().preferences().values().layout, PanelLayout::wide);
        QTRY_COMPARE(app.panel().geometry(), QRect(560, 0, 800, 426));

        ToggleRow* animate = nullptr;
        for (ToggleRow* row : app.panel().findChildren<ToggleRow*>())
            animate = row->label() == QStringLiteral("Sanfte Größenwechsel") ? row : animate;
        QVERIFY(animate);
        animate->toggleSwitch()->click();
        QVERIFY(!app.model().preferences().values().animate);
        // Without animation the next size is there at once.
        for (LayoutButton* button : app.panel().findChildren<LayoutButton*>()) {
            if (button->layout() == PanelLayout::tall)
                button->click();
        }
        QCOMPARE(app.panel().geometry(), QRect(700, 0, 520, 556));
    }

    void terminateTakesItAllDown()
    {
        Launched app;
        app.delegate->terminate();
        QVERIFY(!app.memory.keyMonitor.running);
        QCOMPARE(app.memory.hotKeys.registered, std::nullopt);
        QVERIFY(!app.model().heartbeatRunning());
        QVERIFY(!app.memory.pointer.watching);
        QVERIFY(!app.controller().polling());
        // Nothing reaches the panel any more.
        app.memory.hotKeys.press();
        app.memory.statusBar.click();
        app.memory.pointer.moveTo(QPointF(960, 5));
        app.advance(1);
        QVERIFY(!app.model().expanded());
    }
};

int runDelegateTests(int argc, char** argv)
{
    DelegateTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DelegateTest.moc"
