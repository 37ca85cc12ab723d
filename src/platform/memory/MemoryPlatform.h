#pragma once

#include "common/Clock.h"
#include "common/Scheduler.h"
#include "platform/Platform.h"
#include "platform/memory/MemoryDialogs.h"
#include "platform/memory/MemoryLocation.h"
#include "platform/memory/MemoryServices.h"

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
        return Platform{clock,    scheduler, clipboard, permissions, sound,     workspace,
                        displays, pointer,   hotKeys,   keyMonitor,  statusBar, dialogs,
                        location};
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
    MemoryLocation location;
};
