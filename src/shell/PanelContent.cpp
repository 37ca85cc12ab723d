#include "shell/PanelContent.h"

PanelContent::Kind PanelContent::choose(bool introActive, bool expanded, Page page, bool mini)
{
    if (introActive)
        return glow;
    if (!expanded)
        return nothing;
    if (page == Page::onboarding)
        return onboarding;
    // Mini mode only shrinks the overview; every other page keeps its full frame.
    if (mini && page == Page::home)
        return PanelContent::mini;
    return full;
}
