#pragma once

#include <QtGlobal>

#include <optional>

// What holds the panel as it is: it must neither open nor close by hovering while any of these hold.
struct HoverLocks
{
    bool introActive = false;
    bool onboardingActive = false;
    bool expanded = false;
    bool pinned = false;
    bool commandVisible = false;
    qint64 interactionLocks = 0;
    int menuDepth = 0;
    bool buttonsPressed = false;
    // Uptime seconds.
    double now = 0;
    std::optional<double> repositioningUntil;
};

// The hover rules: one step per pointer poll. Pure; times are seconds of monotonic uptime.
struct HoverPolicy
{
    enum class Action { none, open, close };

    // The pointer has been inside the open panel since it opened.
    bool entered = false;
    // When the pointer entered the activation area of the closed panel.
    std::optional<double> insideSince;
    // When the pointer left the open panel.
    std::optional<double> outsideSince;
    // Closed explicitly with the pointer inside: hovering does not reopen until it has left once.
    bool suppressed = false;

    static bool locked(const HoverLocks& locks);

    // One poll: updates the state and answers what the panel must do.
    Action step(double now, bool inside, bool expanded, bool locked, double openDelay, double closeDelay);

    // After opening: nothing pending; entered when the pointer is already on the panel.
    void opened(bool pointerInside);
    // After closing: nothing pending; suppressed while the pointer still rests on the notch.
    void closed(bool pointerInside);

    // Whether a poll can change anything while the pointer rests. With the panel closed, the pointer
    // outside and no delay running, a step ends the same way locked or not, so only a movement
    // can lead to an opening.
    static bool needsPolling(bool expanded, bool inside, const HoverPolicy& state);

    bool operator==(const HoverPolicy&) const = default;
};
