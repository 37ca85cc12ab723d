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
class FileSearch;
class Sharing;
// Devices, login item and the desktop's settings.
class PowerSources;
class AudioDevices;
class CameraActivity;
class LoginItems;
class SystemSettings;
class PlayerBridge;
class Accessibility;
class CaptureTool;
class CameraFeed;
class Location;
class SessionEvents;

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
    FileSearch& fileSearch;
    Sharing& sharing;
    // Devices, login item and the desktop's settings.
    PowerSources& powerSources;
    AudioDevices& audioDevices;
    CameraActivity& cameras;
    LoginItems& loginItems;
    SystemSettings& systemSettings;
    PlayerBridge& players;
    Accessibility& accessibility;
    // Screenshots, recordings and the camera mirror.
    CaptureTool& captureTool;
    CameraFeed& cameraFeed;
    Location& location;
    SessionEvents& sessionEvents;
};
