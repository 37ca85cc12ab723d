#pragma once

#include <QObject>

// The desktop session's moments that switch things off: the system about to sleep and the
// screen locking. The base class never announces either (a bare session, a test that emits
// them itself); the Linux one hears logind and the screen saver.
class SessionEvents : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    void willSleep();
    void screenLocked();
};
