#pragma once

#include "common/Clock.h"
#include "common/Scheduler.h"
#include "platform/Platform.h"
#include "platform/SessionEvents.h"
#include "platform/memory/MemoryAccessibility.h"
#include "platform/memory/MemoryCameraFeed.h"
#include "platform/memory/MemoryCaptureTool.h"
#include "platform/memory/MemoryDevices.h"
#include "platform/memory/MemoryDialogs.h"
#include "platform/memory/MemoryFileSearch.h"
#include "platform/memory/MemoryLocation.h"
#include "platform/memory/MemoryPlayerBridge.h"
#include "platform/memory/MemoryServices.h"
#include "platform/memory/MemorySharing.h"

// The memory bundle: manual time and honest in-memory services, for tests and the self-test.
class MemoryPlatform
{
public:
    MemoryPlatform() = default;
    MemoryPlatform(const MemoryPlatform&) = delete;
    MemoryPlatform& operator=(const MemoryPlatform&) = delete;

    Platform platform() { return platform(pasteboard); }
    // The same with another clipboard, such as the real one.
    Platform platform(Pasteboard& clipboard)
    {
        return Platform{
            .clock = clock,
            .scheduler = scheduler,
            .pasteboard = clipboard,
            .permissions = permissions,
            .sound = sound,
            .workspace = workspace,
            .displays = displays,
            .pointer = pointer,
            .hotKeys = hotKeys,
            .keyMonitor = keyMonitor,
            .statusBar = statusBar,
            .dialogs = dialogs,
            .fileSearch = fileSearch,
            .sharing = sharing,
            .powerSources = powerSources,
            .audioDevices = audioDevices,
            .cameras = cameras,
            .loginItems = loginItems,
            .systemSettings = systemSettings,
            .players = players,
            .accessibility = accessibility,
            .captureTool = captureTool,
            .cameraFeed = cameraFeed,
            .location = location,
            .sessionEvents = sessionEvents,
        };
    }

    ManualClock clock;
    ManualScheduler scheduler{clock};
    MemoryPasteboard pasteboard;
    MemoryPermissions permissions;
    MemorySound sound;
    MemoryWorkspace workspace;
    MemoryDisplays displays;
    MemoryPointer pointer;
    MemoryHotKeys hotKeys;
    MemoryKeyMonitor keyMonitor;
    MemoryStatusBar statusBar;
    MemoryDialogs dialogs;
    MemoryFileSearch fileSearch;
    MemorySharing sharing;
    // Devices, login item and the desktop's settings.
    MemoryPowerSources powerSources;
    MemoryAudioDevices audioDevices;
    MemoryCameraActivity cameras;
    MemoryLoginItems loginItems;
    MemorySystemSettings systemSettings;
    MemoryPlayerBridge players;
    MemoryAccessibility accessibility;
    MemoryCaptureTool captureTool;
    MemoryCameraFeed cameraFeed;
    MemoryLocation location;
    // Tests announce sleep and a locked screen by emitting its signals.
    SessionEvents sessionEvents;
};
