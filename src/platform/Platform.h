#pragma once

class Clock;
class Scheduler;
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

// The services one run of the application uses. Built in one place (the Linux bundle for the
// real application, the memory bundle for tests and the self-test) and handed to the stores.
struct Platform
{
    Clock& clock;
    Scheduler& scheduler;
    Pasteboard& pasteboard;
    Permissions& permissions;
    Sound& sound;
    Workspace& workspace;
    Displays& displays;
    Pointer& pointer;
    HotKeys& hotKeys;
    KeyMonitor& keyMonitor;
    StatusBar& statusBar;
    Dialogs& dialogs;
    Location& location;
};
