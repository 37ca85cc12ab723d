#pragma once

#include "model/Page.h"

// What the panel shows, decided from the model's state alone.
class PanelContent
{
public:
    enum Kind {
        nothing,    // closed: the black notch shape only
        glow,       // the welcome animation around the notch
        onboarding, // the tour, also when mini mode is on
        mini,       // the one-row overview
        full,       // buttons, tabs, the page and the status line
    };

    static Kind choose(bool introActive, bool expanded, Page page, bool mini);
};
