#include "shell/PanelController.h"

#include "capture/ScreenCapture.h"
#include "common/Clock.h"
#include "model/Model.h"
#include "model/PanelState.h"
#include "platform/Displays.h"
#include "platform/Pointer.h"
#include "productivity/Productivity.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"
#include "shell/NotchGeometry.h"
#include "shell/PanelWindow.h"

PanelController::PanelController(Model& model, PanelWindow& window, QObject* parent)
    : QObject(parent), m_model(model), m_window(window), m_hotKey(model.platform().hotKeys),
      m_introWork(model.platform().scheduler, this), m_commandWork(model.platform().scheduler, this),
      m_pollWork(model.platform().scheduler, this)
{
    // Whatever changes what a poll would decide wakes the poll; it goes back to sleep by itself.
    connect(&model.preferences(), &Preferences::valuesChanged, this, &PanelController::wake);
    connect(&model.screenCapture(), &ScreenCapture::captureBusyChanged, this, &PanelController::wake);
    connect(&model.panel(), &PanelState::introActiveChanged, this, &PanelController::wake);
    connect(&model.panel(), &PanelState::panelPinnedChanged, this, &PanelController::wake);
    // A dialog that ends starts the close delay if the pointer is already elsewhere.
    connect(&model.panel(), &PanelState::interactionLocksChanged, this, &PanelController::wake);
    connect(&model.platform().pointer, &Pointer::moved, this, &PanelController::pointerMoved);
}

PanelController::~PanelController()
{
    stopPointerTimer();
}

bool PanelController::pointerInside() const
{
    return insideAt(m_model.platform().pointer.position());
}

bool PanelController::insideAt(QPointF position) const
{
    if (NotchGeometry::contains(m_activationRect, position))
        return true;
    return m_model.expanded() && NotchGeometry::contains(m_window.frame(), position);
}

bool PanelController::hoverActive() const
{
    return m_model.preferences().values().hover && !m_model.captureBusy();
}

void PanelController::pollPointer()
{
    ++m_polls;
    const QPointF position = m_model.platform().pointer.position();
    m_pointerMoving = m_lastPosition && *m_lastPosition != position;
    m_lastPosition = position;
    m_lastInside = insideAt(position);
    if (!hoverActive())
        return;

    const double now = m_model.platform().clock.uptime();
    HoverLocks locks;
    locks.introActive = m_model.introActive();
    locks.onboardingActive = m_model.onboarding().active();
    locks.expanded = m_model.expanded();
    locks.pinned = m_model.panelPinned();
    locks.commandVisible = m_commandVisible;
    locks.interactionLocks = m_model.interactionLocks();
    locks.menuDepth = m_menuDepth;
    locks.now = now;
    locks.repositioningUntil = m_repositioningUntil;
    // Asking for the buttons costs a round trip to the display server; only when it decides.
    if (!HoverPolicy::locked(locks))
        locks.buttonsPressed = m_model.platform().pointer.buttonsPressed();

    const PreferenceValues& values = m_model.preferences().values();
    switch (m_hover.step(now, m_lastInside, m_model.expanded(), HoverPolicy::locked(locks), values.openDelay,
                         values.closeDelay)) {
    case HoverPolicy::Action::open:
        expand(std::nullopt, true);
        break;
    case HoverPolicy::Action::close:
        collapse();
        break;
    case HoverPolicy::Action::none:
        break;
    }
}

void PanelController::expand(std::optional<Page> page, bool fromHover)
{
    if (m_model.captureBusy() || m_model.introActive())
        return;
    Workspace& workspace = m_model.platform().workspace;
    if (!m_model.expanded()) {
        m_previousApp = workspace.frontmostApp();
        if (m_previousApp && m_previousApp->pid != workspace.currentPid())
            m_model.setCommandTarget(m_previousApp);
    }
    Page chosen = Page::home;
    if (m_model.onboarding().active())
        chosen = Page::onboarding;
    else if (page)
        chosen = *page;
    else if (m_model.preferences().values().rememberPage)
        chosen = m_model.page();
    m_model.setPage(chosen);

    m_model.setExpanded(true);
    reposition();
    m_window.orderFront();
    m_hover.opened(pointerInside());
    // Hovering never takes the keyboard from the application the user is typing in.
    if (!fromHover)
        m_window.makeKey();
    Model* model = &m_model;
    m_model.platform().scheduler.schedule(0, &m_model, [model] { model->refreshPermissions(); });
    wake();
}

void PanelController::collapse()
{
    m_introWork.cancel();
    m_model.setIntroActive(false);
    m_commandWork.cancel();
    m_commandVisible = false;
    m_model.setExpanded(false);
    m_model.setPanelPinned(false);
    reposition();
    m_window.resignKey();
    m_hover.closed(pointerInside());
    wake();
}

void PanelController::toggle()
{
    if (m_model.expanded())
        collapse();
    else
        expand(std::nullopt, false);
}

void PanelController::reposition()
{
    const Displays& displays = m_model.platform().displays;
    const QList<DisplayInfo> list = displays.displays();
    const PreferenceValues& values = m_model.preferences().values();
    const auto index = NotchGeometry::chooseDisplay(list, displays.focusedDisplay(), values.screenMain);
    if (!index)
        return;
    const DisplayInfo& display = list[*index];
    const QRectF notch = NotchGeometry::notchRect(display);
    m_activationRect = NotchGeometry::activationRect(notch);
    m_model.setNotchWidth(notch.width());
    m_model.setNotchHeight(notch.height());

    PanelSizeInputs state;
    state.introActive = m_model.introActive();
    state.expanded = m_model.expanded();
    state.page = m_model.page();
    state.mini = m_model.productivity().mini();
    state.layout = values.layout;
    const QRectF frame =
        NotchGeometry::panelFrame(notch, display.frame, NotchGeometry::panelSize(state, notch.size()));
    // A display change can also move the notch under a resting pointer.
    wake();
    if (m_window.frame() == frame)
        return;
    m_repositioningUntil = m_model.platform().clock.uptime() + NotchGeometry::repositionQuietTime;
    const bool animate = m_window.isShown() && values.animate && !displays.reduceMotion();
    m_window.setFrame(frame, animate);
}

void PanelController::configureShortcut()
{
    if (const auto status = m_hotKey.configure(m_model.preferences().values().shortcut))
        m_model.setHotkeyStatus(*status);
}

void PanelController::unregisterShortcut()
{
    m_hotKey.unregister();
}

void PanelController::welcome(bool replay)
{
    if (m_model.captureBusy())
        return;
    m_introWork.cancel();
    m_commandWork.cancel();
    m_commandVisible = false;
    m_model.onboarding().begin(replay);
    m_model.setExpanded(false);
    m_model.setPanelPinned(false);
    m_model.setIntroActive(true);
    reposition();
    m_window.orderFront();
    const bool reduced = m_model.platform().displays.reduceMotion();
    m_introWork.schedule(reduced ? welcomeDurationReduced : welcomeDuration, [this] {
        m_model.setIntroActive(false);
        expand(Page::onboarding, false);
    });
}

bool PanelController::handleLocalKey(int keyCode, KeyModifiers modifiers)
{
    const HistoryShortcut shortcut = m_model.preferences().values().shortcut;
    const auto wanted = HistoryShortcuts::modifiers(shortcut);
    if (wanted && keyCode == KeyCode::V && modifiers == *wanted) {
        expand(Page::clipboard, false);
        return true;
    }
    if (keyCode == KeyCode::Escape) {
        collapse();
        return true;
    }
    handleKeyDown();
    return false;
}

void PanelController::handleKeyDown()
{
    if (m_model.onboarding().active())
        return;
    // Typing a shortcut such as Command-C is not a hold.
    m_commandWork.cancel();
}

void PanelController::handleModifiers(KeyModifiers modifiers)
{
    if (m_model.onboarding().active())
        return;
    const PreferenceValues& values = m_model.preferences().values();
    if (modifiers == KeyModifier::Command && values.commands && !m_window.isKey()) {
        m_commandWork.cancel();
        const Workspace& workspace = m_model.platform().workspace;
        const auto front = workspace.frontmostApp();
        if (front && front->pid == workspace.currentPid())
            return;
        m_commandWork.schedule(values.commandDelay, [this] {
            if (!m_model.preferences().values().commands)
                return;
            // The menus of the target application are read by the commands page's own store.
            m_commandVisible = true;
            expand(Page::commands, false);
        });
        return;
    }
    m_commandWork.cancel();
    if (m_commandVisible)
        collapse();
}

void PanelController::hotKeyPressed()
{
    m_commandWork.cancel();
    m_commandVisible = false;
    expand(Page::clipboard, false);
}

void PanelController::menuBegan()
{
    ++m_menuDepth;
}

void PanelController::menuEnded()
{
    m_menuDepth = std::max(0, m_menuDepth - 1);
    // The close delay starts only now that the lock is gone.
    wake();
}

void PanelController::startPointerTimer()
{
    m_timerStarted = true;
    wake();
}

void PanelController::stopPointerTimer()
{
    m_timerStarted = false;
    m_pollWork.cancel();
    setWatching(false);
}

void PanelController::pointerMoved()
{
    if (!m_timerStarted || m_pollWork.isPending())
        return;
    // Poll at once: the wake-up is the pointer arriving, and opening must not wait a period.
    pollPointer();
    schedulePolling();
}

void PanelController::wake()
{
    if (!m_timerStarted || m_pollWork.isPending())
        return;
    if (!hoverActive()) {
        // Nothing to decide until hovering is back; schedulePolling() also stops watching.
        schedulePolling();
        return;
    }
    setWatching(false);
    m_pollWork.schedule(pollInterval, [this] { pollTimerFired(); });
}

void PanelController::pollTimerFired()
{
    pollPointer();
    schedulePolling();
}

void PanelController::schedulePolling()
{
    if (!m_timerStarted)
        return;
    const bool keep =
        hoverActive() &&
        (HoverPolicy::needsPolling(m_model.expanded(), m_lastInside, m_hover) || m_pointerMoving);
    if (keep) {
        setWatching(false);
        if (!m_pollWork.isPending())
            m_pollWork.schedule(pollInterval, [this] { pollTimerFired(); });
        return;
    }
    m_pollWork.cancel();
    setWatching(hoverActive());
}

void PanelController::setWatching(bool on)
{
    if (m_watching == on)
        return;
    m_watching = on;
    m_model.platform().pointer.setWatching(on);
}
