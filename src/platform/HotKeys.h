#pragma once

#include "platform/KeyModifiers.h"

#include <QObject>

// One global shortcut at a time.
class HotKeys : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    // Grabs `keyCode` with exactly `modifiers`; false when another client holds the combination.
    virtual bool registerHotKey(int keyCode, KeyModifiers modifiers) = 0;
    virtual void unregisterHotKey() = 0;

Q_SIGNALS:
    void pressed();
};
