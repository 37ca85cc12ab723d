#pragma once

#include "common/Clock.h"
#include "common/Scheduler.h"
#include "platform/Platform.h"

#include <memory>

// The services are declared in Platform.h.
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
    std::unique_ptr<FileSearch> m_fileSearch;
    std::unique_ptr<Sharing> m_sharing;
    // Devices, login item and the desktop's settings.
    std::unique_ptr<PowerSources> m_powerSources;
    std::unique_ptr<AudioDevices> m_audioDevices;
    std::unique_ptr<CameraActivity> m_cameras;
    std::unique_ptr<LoginItems> m_loginItems;
    std::unique_ptr<SystemSettings> m_systemSettings;
    std::unique_ptr<PlayerBridge> m_players;
    std::unique_ptr<Accessibility> m_accessibility;
    std::unique_ptr<CaptureTool> m_captureTool;
    std::unique_ptr<CameraFeed> m_cameraFeed;
    std::unique_ptr<Location> m_location;
    std::unique_ptr<SessionEvents> m_sessionEvents;
};
