#pragma once

#include <QRectF>

// The panel window as the panel rules drive it; the widget implements it on the desktop, a memory
// stand-in in tests and the self-test.
class PanelWindow
{
public:
    virtual ~PanelWindow() = default;
    // The frame last asked for (the end of a running animation).
    virtual QRectF frame() const = 0;
    // Moves and resizes; `animate` runs the resize animation instead of jumping.
    virtual void setFrame(const QRectF& frame, bool animate) = 0;
    virtual bool isShown() const = 0;
    // Shows the panel above everything without taking the keyboard.
    virtual void orderFront() = 0;
    // Takes the panel off the screen.
    virtual void orderOut() = 0;
    // Gives the panel the keyboard (text fields, Escape).
    virtual void makeKey() = 0;
    // Hands the keyboard back to whoever had it.
    virtual void resignKey() = 0;
    virtual bool isKey() const = 0;
};
