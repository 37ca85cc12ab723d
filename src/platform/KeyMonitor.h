#pragma once

#include "platform/KeyModifiers.h"

#include <QObject>

// Key-down and modifier changes of the whole desktop (the global monitor).
class KeyMonitor : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual void start() = 0;
    virtual void stop() = 0;

Q_SIGNALS:
    void keyDown(int keyCode, KeyModifiers modifiers);
    void modifiersChanged(KeyModifiers modifiers);
};
