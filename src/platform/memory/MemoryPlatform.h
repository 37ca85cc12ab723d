#pragma once

#include "common/Clock.h"
#include "common/Scheduler.h"
#include "platform/Platform.h"
#include "platform/memory/MemoryServices.h"

// The memory bundle: manual time and honest in-memory services, for tests and the self-test.
class MemoryPlatform
{
public:
    MemoryPlatform() = default;
    MemoryPlatform(const MemoryPlatform&) = delete;
    MemoryPlatform& operator=(const MemoryPlatform&) = delete;

    Platform platform()
    {
        return Platform{clock,    scheduler, pasteboard, permissions, sound,    workspace,
                        displays, pointer,   hotKeys,    keyMonitor,  statusBar};
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
};
