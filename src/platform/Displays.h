#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>

#include <optional>

// One display in global coordinates (Qt's: y grows downwards, a display's top edge is frame.top()).
struct DisplayInfo
{
    QString name;
    QRectF frame;
    // Height of the camera housing at the top; 0 without a notch.
    double topInset = 0;
    // The areas left and right of the camera housing, in global coordinates.
    std::optional<QRectF> auxiliaryTopLeft;
    std::optional<QRectF> auxiliaryTopRight;
};

class Displays : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    // In the system's order; the first is the main display (the one with the menu bar).
    virtual QList<DisplayInfo> displays() const = 0;
    // Index of the display with keyboard focus, if known.
    virtual std::optional<int> focusedDisplay() const = 0;
    // The desktop asks for reduced motion.
    virtual bool reduceMotion() const = 0;

Q_SIGNALS:
    void configurationChanged();
};
