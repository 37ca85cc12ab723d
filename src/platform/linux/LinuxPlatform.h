#pragma once

#include "common/Clock.h"
#include "common/Scheduler.h"
#include "platform/Platform.h"

#include <memory>

class Pasteboard;
class Permissions;
class Sound;
class Workspace;
class Displays;
class Pointer;
class HotKeys;
class KeyMonitor;
class StatusBar;
class Dialogs;
class Location;

// The real services of a Linux desktop session (X11 or XWayland). Needs a QGuiApplication.
class LinuxPlatform
{
public:
    LinuxPlatform();
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    Platform platform();

private:
    SystemClock m_clock;
    TimerScheduler m_scheduler;
    std::unique_ptr<Pasteboard> m_pasteboard;
    std::unique_ptr<Permissions> m_permissions;
    std::unique_ptr<Sound> m_sound;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<Displays> m_displays;
    std::unique_ptr<Pointer> m_pointer;
    std::unique_ptr<HotKeys> m_hotKeys;
    std::unique_ptr<KeyMonitor> m_keyMonitor;
    std::unique_ptr<StatusBar> m_statusBar;
    std::unique_ptr<Dialogs> m_dialogs;
    std::unique_ptr<Location> m_location;
};
