#pragma once

#include <QtGlobal>

class QWindow;

// Window-manager hints Qt has no flag for. No-ops when not on X11.
class X11WindowHints
{
public:
    // On every desktop, out of task bars and pagers. Call after each show: the window manager
    // drops a window's state when it is withdrawn.
    static void showOnAllDesktops(QWindow* window);
    // The window that has the keyboard now (0 when none or not on X11).
    static quint32 focusedWindow();
    // Hands the keyboard to `window`, through the window manager when one runs.
    static void focus(quint32 window);
};
