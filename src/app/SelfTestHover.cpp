#include "app/SelfTest.h"

#include "model/Model.h"
#include "model/PanelState.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"
#include "settings/Preferences.h"
#include "shell/HistoryHotKey.h"
#include "shell/MemoryPanelWindow.h"
#include "shell/PanelController.h"

#include <QUuid>

#include <memory>

namespace {

const QPointF away(5, 500);
const QPointF onNotch(960, 10);

// A launched panel on private state: memory services, manual time, a throw-away settings domain.
struct HoverRig
{
    HoverRig()
        : domainName(QStringLiteral("Brenlow.SelfTest.") +
                     QUuid::createUuid().toString(QUuid::WithoutBraces)),
          defaults(std::make_unique<Defaults>(domainName)),
          model(std::make_unique<Model>(*defaults, memory.platform(), false, memory.pasteboard)),
          controller(std::make_unique<PanelController>(*model, window))
    {
        controller->reposition();
        window.orderFront();
        controller->startPointerTimer();
        advance(0.1);
    }
    ~HoverRig()
    {
        controller.reset();
        model.reset();
        defaults->removeDomain();
    }
    void advance(double seconds) { memory.scheduler.advance(seconds); }
    void moveTo(QPointF point) { memory.pointer.moveTo(point); }
    bool expanded() const { return model->expanded(); }
    void prefer(const std::function<void(PreferenceValues&)>& edit) { model->preferences().update(edit); }

    QString domainName;
    MemoryPlatform memory;
    std::unique_ptr<Defaults> defaults;
    MemoryPanelWindow window;
    std::unique_ptr<Model> model;
    std::unique_ptr<PanelController> controller;
};

void checkOpening()
{
    for (const QPointF point : {QPointF(960, 0), QPointF(876, 12), QPointF(1044, 12), QPointF(960, 30)}) {
        HoverRig rig;
        selfCheck(rig.window.frame() == QRectF(880, 0, 160, 24),
                  "the closed panel covers the fallback notch");
        rig.moveTo(point);
        selfCheck(rig.expanded(), "the first poll in the activation area opens the panel");
        selfCheck(!rig.window.isKey(), "hovering leaves the keyboard alone");
        selfCheck(rig.window.frame() == QRectF(650, 0, 620, 378), "the balanced overview is 620 x 378");
    }
    {
        HoverRig rig;
        rig.moveTo(QPointF(875, 12));
        rig.advance(0.5);
        selfCheck(!rig.expanded(), "5 points beside the notch is outside");
    }
    HoverRig rig;
    rig.prefer([](PreferenceValues& v) { v.openDelay = 0.3; });
    rig.moveTo(onNotch);
    rig.advance(0.2);
    rig.moveTo(QPointF(960, 200));
    rig.advance(0.1);
    rig.moveTo(onNotch);
    rig.advance(0.25);
    selfCheck(!rig.expanded(), "leaving before the open delay restarts it");
    rig.advance(0.1);
    selfCheck(rig.expanded(), "the panel opens once the open delay has passed");
}

void checkClosing()
{
    HoverRig rig;
    rig.moveTo(onNotch);
    rig.advance(0.3);
    rig.moveTo(away);
    rig.advance(0.45);
    selfCheck(rig.expanded(), "the panel does not close before the close delay");
    rig.advance(0.15);
    selfCheck(!rig.expanded(), "the panel closes after the close delay");

    rig.moveTo(onNotch);
    rig.advance(0.3);
    rig.moveTo(away);
    rig.advance(0.3);
    rig.moveTo(QPointF(700, 300));
    rig.advance(1);
    selfCheck(rig.expanded(), "coming back cancels the close");

    rig.moveTo(onNotch);
    rig.advance(0.1);
    rig.controller->handleLocalKey(KeyCode::Escape, {});
    rig.advance(1);
    selfCheck(!rig.expanded(), "after Escape the panel stays closed under the pointer");
    rig.moveTo(QPointF(960, 200));
    rig.advance(0.1);
    rig.moveTo(onNotch);
    selfCheck(rig.expanded(), "leaving and coming back opens it again");
}

void checkLocks()
{
    for (int lock = 0; lock < 4; ++lock) {
        HoverRig rig;
        rig.moveTo(onNotch);
        rig.advance(0.3);
        if (lock == 0)
            rig.model->setPanelPinned(true);
        if (lock == 1)
            rig.controller->menuBegan();
        if (lock == 2)
            rig.model->panel().addInteractionLock();
        if (lock == 3)
            rig.memory.pointer.pressed = true;
        rig.moveTo(away);
        rig.advance(2);
        selfCheck(rig.expanded(), "pin, menu, dialog and a held button keep the panel open");
        if (lock == 0) {
            rig.controller->collapse();
            selfCheck(!rig.model->panelPinned(), "closing removes the pin");
            continue;
        }
        rig.controller->menuEnded();
        rig.model->panel().releaseInteractionLock();
        rig.memory.pointer.pressed = false;
        rig.advance(0.45);
        selfCheck(rig.expanded(), "the close delay starts only when the lock ends");
        rig.advance(0.15);
        selfCheck(!rig.expanded(), "after the lock the panel closes");
    }
    HoverRig rig;
    rig.prefer([](PreferenceValues& v) { v.hover = false; });
    rig.moveTo(onNotch);
    rig.advance(0.5);
    selfCheck(!rig.expanded(), "without hover the pointer does not open the panel");
    rig.controller->toggle();
    selfCheck(rig.expanded() && rig.window.isKey(), "the icon opens the panel with the keyboard");
    rig.controller->toggle();
    rig.model->setCaptureBusy(true);
    rig.controller->expand(std::nullopt, false);
    selfCheck(!rig.expanded(), "nothing opens the panel during a capture");
}

void checkKeys()
{
    HoverRig rig;
    rig.memory.workspace.frontmost = RunningApp{QStringLiteral("editor"), 77, QStringLiteral("Editor")};
    rig.controller->handleModifiers(KeyModifier::Command);
    rig.advance(0.7);
    rig.controller->handleKeyDown();
    rig.advance(1);
    selfCheck(!rig.expanded(), "a key pressed during the Command hold cancels it");
    rig.controller->handleModifiers(KeyModifier::Command);
    rig.advance(0.85);
    selfCheck(rig.expanded() && rig.model->page() == Page::commands, "holding Command opens the commands");
    rig.controller->handleModifiers({});
    selfCheck(!rig.expanded(), "releasing Command closes the commands");

    rig.controller->configureShortcut();
    selfCheck(rig.model->hotkeyStatus() == HistoryHotKey::activeText(HistoryShortcut::controlV),
              "the history shortcut is registered");
    rig.memory.hotKeys.taken = {KeyModifier::Option};
    rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::optionV; });
    rig.controller->configureShortcut();
    selfCheck(rig.model->hotkeyStatus() ==
                  QStringLiteral("⌥ V ist bereits belegt. Bitte eine andere Kombination wählen."),
              "a taken shortcut is reported");
    rig.controller->expand(Page::notes, false);
    rig.prefer([](PreferenceValues& v) { v.shortcut = HistoryShortcut::controlV; });
    selfCheck(rig.controller->handleLocalKey(KeyCode::V, KeyModifier::Control) &&
                  rig.model->page() == Page::clipboard,
              "the history shortcut inside the panel opens the history");
}

void checkSleeping()
{
    HoverRig rig;
    const qint64 polls = rig.controller->polls();
    rig.advance(30);
    selfCheck(rig.controller->polls() == polls && rig.memory.pointer.watching,
              "a resting pointer outside costs no polls");
    rig.moveTo(onNotch);
    selfCheck(rig.expanded(), "the first movement wakes the poll");
}

} // namespace

namespace SelfTestGroups {

void hoverBehaviour()
{
    checkOpening();
    checkClosing();
    checkLocks();
    checkKeys();
    checkSleeping();
}

} // namespace SelfTestGroups
