#pragma once

#include <QObject>
#include <QPointF>

// The global pointer. `moved` lets callers sleep while the pointer rests instead of polling.
class Pointer : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual QPointF position() const = 0;
    // Any mouse button held (a drag).
    virtual bool buttonsPressed() const = 0;
    // Starts or stops reporting `moved`; reporting costs nothing while the pointer rests.
    virtual void setWatching(bool on) = 0;

Q_SIGNALS:
    void moved();
};
