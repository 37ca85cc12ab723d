#pragma once

#include <QImage>
#include <QRectF>
#include <QString>

#include <functional>

// The window that holds the wing, as the toast drives it: a window on the desktop, a memory
// stand-in in tests.
class WingSurface
{
public:
    virtual ~WingSurface() = default;
    // Puts a new wing (cover, title, subtitle, height) into the window, replacing the last one.
    virtual void setWing(const QImage& image, const QString& title, const QString& subtitle,
                         double height) = 0;
    // Shows the window at `from` above everything, without taking the keyboard, and moves it to `to`
    // over `seconds` (ease-out; 0 jumps).
    virtual void slideIn(const QRectF& from, const QRectF& to, double seconds) = 0;
    // Moves the window to `to` over `seconds`; `done` runs when it got there (not when stopped).
    virtual void slideOut(const QRectF& to, double seconds, std::function<void()> done) = 0;
    // Takes the window off the screen at once, stopping any movement.
    virtual void orderOut() = 0;
    virtual bool isShown() const = 0;
    virtual QRectF frame() const = 0;
};
