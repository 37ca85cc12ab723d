#pragma once

#include "common/Scheduler.h"
#include "model/Page.h"
#include "platform/KeyModifiers.h"
#include "platform/Workspace.h"
#include "shell/HistoryHotKey.h"
#include "shell/HoverPolicy.h"

#include <QObject>
#include <QPointF>
#include <QRectF>

#include <optional>

class Model;
class PanelWindow;

// Opens, closes and places the panel: the hover rules on a 30 Hz pointer poll, the explicit
// requests, the keyboard triggers and the welcome glow. Main thread only.
//
// The poll runs only while a step can change something (panel open, pointer on the notch, a delay
// running, the pointer still moving); otherwise it sleeps until the pointer moves.
class PanelController : public QObject
{
    Q_OBJECT
public:
    static constexpr double pollInterval = 1.0 / 30.0;
    static constexpr double welcomeDuration = 2.2;
    static constexpr double welcomeDurationReduced = 0.5;

    PanelController(Model& model, PanelWindow& window, QObject* parent = nullptr);
    ~PanelController() override;

    // The pointer is over the notch, or over the open panel.
    bool pointerInside() const;
    // One step of the hover rules.
    void pollPointer();
    void expand(std::optional<Page> page, bool fromHover);
    void collapse();
    // The tray icon's action.
    void toggle();
    // Chooses the display, measures the notch and applies the frame for the current state.
    void reposition();
    // Registers the history shortcut when the preference changed.
    void configureShortcut();
    // Releases the history shortcut (shutdown).
    void unregisterShortcut();
    // The glow around the notch, then the tour.
    void welcome(bool replay);

    // Keyboard. A key-down in the panel: answers whether it was consumed.
    bool handleLocalKey(int keyCode, KeyModifiers modifiers);
    // Events of the whole desktop: the Command-hold trigger.
    void handleKeyDown();
    void handleModifiers(KeyModifiers modifiers);
    void hotKeyPressed();

    // Menus of the panel keep it open while they are up.
    void menuBegan();
    void menuEnded();

    // The pointer timer of launch and shutdown.
    void startPointerTimer();
    void stopPointerTimer();
    // The pointer moved: wakes a sleeping poll at once.
    void pointerMoved();

    const HoverPolicy& hover() const { return m_hover; }
    QRectF activationRect() const { return m_activationRect; }
    std::optional<double> repositioningUntil() const { return m_repositioningUntil; }
    bool commandVisible() const { return m_commandVisible; }
    bool commandPending() const { return m_commandWork.isPending(); }
    bool introPending() const { return m_introWork.isPending(); }
    int menuDepth() const { return m_menuDepth; }
    std::optional<RunningApp> previousApp() const { return m_previousApp; }
    std::optional<HistoryShortcut> registeredShortcut() const { return m_hotKey.registeredShortcut(); }
    // Whether the 30 Hz poll is scheduled (false while it sleeps on the pointer).
    bool polling() const { return m_pollWork.isPending(); }
    qint64 polls() const { return m_polls; }

private:
    bool insideAt(QPointF position) const;
    void pollTimerFired();
    // Keeps polling while something can change; else stops and watches the pointer.
    void schedulePolling();
    // Something changed that a poll would decide on: poll soon; the poll sleeps again by itself.
    void wake();
    void setWatching(bool on);
    bool hoverActive() const;

    Model& m_model;
    PanelWindow& m_window;
    HoverPolicy m_hover;
    HistoryHotKey m_hotKey;
    QRectF m_activationRect;
    std::optional<double> m_repositioningUntil;
    std::optional<RunningApp> m_previousApp;
    bool m_commandVisible = false;
    int m_menuDepth = 0;
    ScheduledWork m_introWork;
    ScheduledWork m_commandWork;
    ScheduledWork m_pollWork;
    bool m_timerStarted = false;
    bool m_watching = false;
    bool m_lastInside = false;
    std::optional<QPointF> m_lastPosition;
    bool m_pointerMoving = false;
    qint64 m_polls = 0;
};
