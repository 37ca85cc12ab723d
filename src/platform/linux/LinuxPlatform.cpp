#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/LinuxAudioDevices.h"
#include "platform/linux/LinuxCameraActivity.h"
#include "platform/linux/LinuxCameraFeed.h"
#include "platform/linux/LinuxCaptureTool.h"
#include "platform/linux/LinuxDialogs.h"
#include "platform/linux/LinuxDisplays.h"
#include "platform/linux/LinuxFileSearch.h"
#include "platform/linux/LinuxHotKeys.h"
#include "platform/linux/LinuxKeyMonitor.h"
#include "platform/linux/LinuxLocation.h"
#include "platform/linux/LinuxLoginItems.h"
#include "platform/linux/LinuxPasteboard.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxPlayerBridge.h"
#include "platform/linux/LinuxPointer.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxSessionEvents.h"
#include "platform/linux/LinuxSharing.h"
#include "platform/linux/LinuxSound.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/LinuxSystemSettings.h"
#include "platform/linux/LinuxWorkspace.h"

#include <QGuiApplication>

LinuxPlatform::LinuxPlatform()
    : m_pasteboard(std::make_unique<LinuxPasteboard>(QGuiApplication::clipboard())),
      m_permissions(std::make_unique<LinuxPermissions>()), m_sound(std::make_unique<LinuxSound>()),
      m_workspace(std::make_unique<LinuxWorkspace>()), m_displays(std::make_unique<LinuxDisplays>()),
      m_pointer(std::make_unique<LinuxPointer>()), m_hotKeys(std::make_unique<LinuxHotKeys>()),
      m_keyMonitor(std::make_unique<LinuxKeyMonitor>()), m_statusBar(std::make_unique<LinuxStatusBar>()),
      m_dialogs(std::make_unique<LinuxDialogs>()), m_fileSearch(std::make_unique<LinuxFileSearch>()),
      m_sharing(std::make_unique<LinuxSharing>()), m_powerSources(std::make_unique<LinuxPowerSources>()),
      m_audioDevices(std::make_unique<LinuxAudioDevices>()),
      m_cameras(std::make_unique<LinuxCameraActivity>()), m_loginItems(std::make_unique<LinuxLoginItems>()),
      m_systemSettings(std::make_unique<LinuxSystemSettings>()),
      m_players(std::make_unique<LinuxPlayerBridge>()),
      m_accessibility(std::make_unique<LinuxAccessibility>()),
      m_captureTool(std::make_unique<LinuxCaptureTool>()), m_cameraFeed(std::make_unique<LinuxCameraFeed>()),
      m_location(std::make_unique<LinuxLocation>()), m_sessionEvents(std::make_unique<LinuxSessionEvents>())
{
    // Sleep and a locked screen switch the camera off, like leaving its page.
    for (auto moment : {&SessionEvents::willSleep, &SessionEvents::screenLocked})
        QObject::connect(m_sessionEvents.get(), moment, m_cameraFeed.get(), &CameraFeed::sessionPaused);
}

LinuxPlatform::~LinuxPlatform() = default;

Platform LinuxPlatform::platform()
{
    return Platform{
        .clock = m_clock,
        .scheduler = m_scheduler,
        .pasteboard = *m_pasteboard,
        .permissions = *m_permissions,
        .sound = *m_sound,
        .workspace = *m_workspace,
        .displays = *m_displays,
        .pointer = *m_pointer,
        .hotKeys = *m_hotKeys,
        .keyMonitor = *m_keyMonitor,
        .statusBar = *m_statusBar,
        .dialogs = *m_dialogs,
        .fileSearch = *m_fileSearch,
        .sharing = *m_sharing,
        .powerSources = *m_powerSources,
        .audioDevices = *m_audioDevices,
        .cameras = *m_cameras,
        .loginItems = *m_loginItems,
        .systemSettings = *m_systemSettings,
        .players = *m_players,
        .accessibility = *m_accessibility,
        .captureTool = *m_captureTool,
        .cameraFeed = *m_cameraFeed,
        .location = *m_location,
        .sessionEvents = *m_sessionEvents,
    };
}
