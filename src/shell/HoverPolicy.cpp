#include "shell/HoverPolicy.h"

bool HoverPolicy::locked(const HoverLocks& locks)
{
    if (locks.introActive)
        return true;
    if (locks.onboardingActive && locks.expanded)
        return true;
    if (locks.pinned || locks.commandVisible || locks.interactionLocks >= 1 || locks.menuDepth >= 1 ||
        locks.buttonsPressed)
        return true;
    // The panel's own resize moves it under a resting pointer; give it time to settle.
    return locks.expanded && locks.repositioningUntil && locks.now < *locks.repositioningUntil;
}

HoverPolicy::Action HoverPolicy::step(double now, bool inside, bool expanded, bool isLocked, double openDelay,
                                      double closeDelay)
{
    if (isLocked) {
        insideSince.reset();
        outsideSince.reset();
        if (!inside)
            suppressed = false;
        return Action::none;
    }
    if (inside) {
        outsideSince.reset();
        if (expanded) {
            entered = true;
            insideSince.reset();
            return Action::none;
        }
        if (suppressed)
            return Action::none;
        if (!insideSince)
            insideSince = now;
        return now - *insideSince < openDelay ? Action::none : Action::open;
    }
    suppressed = false;
    insideSince.reset();
    // A panel opened by icon or shortcut that the pointer never entered stays until closed.
    if (!expanded || !entered)
        return Action::none;
    if (!outsideSince)
        outsideSince = now;
    return now - *outsideSince < closeDelay ? Action::none : Action::close;
}

void HoverPolicy::opened(bool pointerInside)
{
    entered = pointerInside;
    insideSince.reset();
    outsideSince.reset();
    suppressed = false;
}

void HoverPolicy::closed(bool pointerInside)
{
    entered = false;
    insideSince.reset();
    outsideSince.reset();
    suppressed = pointerInside;
}

bool HoverPolicy::needsPolling(bool expanded, bool inside, const HoverPolicy& state)
{
    return expanded || inside || state.insideSince || state.outsideSince;
}
