#pragma once

#include "platform/SessionEvents.h"

// Sleep from logind's PrepareForSleep, a locked screen from the freedesktop screen saver's
// ActiveChanged. Either bus may be missing; then that moment is never announced.
class LinuxSessionEvents final : public SessionEvents
{
    Q_OBJECT
public:
    explicit LinuxSessionEvents(QObject* parent = nullptr);

private Q_SLOTS:
    // D-Bus connects by slot name only.
    void prepareForSleep(bool sleeping);
    void screenSaverActive(bool active);
};
