#pragma once

#include "clipboard/Clip.h"
#include "focus/Notice.h"
#include "model/Page.h"
#include "platform/Dialogs.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class ActivityLog;
enum class CaptureKind;
class ClipboardArchive;
class ClipboardHistory;
class Defaults;
class DeviceStatus;
class FocusTimer;
class LoginItemStore;
class MenuBarApps;
class MenuCommands;
class NowPlaying;
class TrackToastSettings;
class OnboardingState;
class PanelState;
class Pasteboard;
class PermissionActions;
class PermissionStore;
class Preferences;
class Productivity;
class ScreenCapture;
class Shelf;
class ShelfSharing;
class DeviceSearch;
class ItemOpener;
class WorkspaceLauncher;
class StatusMessage;
class WeatherStore;
class QTimer;
struct WorkspacePreset;
struct CommandItem;

// The application's state as one façade: it creates the areas' stores in their order, runs the
// one-second heartbeat, and forwards the names every part of the program knows (`clips`,
// `toggleTimer`, `page`, …) to the store that owns them. Views observe the stores themselves.
// Main thread only.
class Model : public QObject
{
    Q_OBJECT
public:
    static constexpr double heartbeatInterval = 1.0;

    // `historyPath`: the clipboard database; with none, the default file when services start,
    // else an archive in memory.
    Model(Defaults& defaults, Platform platform, bool startServices, Pasteboard& clipboard,
          std::optional<QString> historyPath = std::nullopt, QObject* parent = nullptr);
    ~Model() override;

    // The stores.
    Defaults& defaults() const { return m_defaults; }
    const Platform& platform() const { return m_platform; }
    Preferences& preferences() const { return *m_preferences; }
    PanelState& panel() const { return *m_panel; }
    StatusMessage& statusMessage() const { return *m_message; }
    PermissionStore& permissions() const { return *m_permissions; }
    OnboardingState& onboarding() const { return *m_onboarding; }
    Productivity& productivity() const { return *m_productivity; }
    Shelf& shelf() const { return *m_shelf; }
    DeviceSearch& deviceSearch() const { return *m_search; }
    ItemOpener& itemOpener() const { return *m_opener; }
    ClipboardHistory& clipboardHistory() const { return *m_clipboard; }
    FocusTimer& focus() const { return *m_focus; }
    ActivityLog& activity() const { return *m_activity; }
    NowPlaying& nowPlaying() const { return *m_nowPlaying; }
    TrackToastSettings& trackToastSettings() const { return *m_trackToastSettings; }
    DeviceStatus& deviceStatus() const { return *m_devices; }
    LoginItemStore& loginItem() const { return *m_loginItem; }
    MenuCommands& menuCommands() const { return *m_commands; }
    MenuBarApps& menuApps() const { return *m_menuApps; }
    ScreenCapture& screenCapture() const { return *m_capture; }
    WeatherStore& weather() const { return *m_weather; }

    // Panel.
    Page page() const;
    void setPage(Page page);
    bool expanded() const;
    void setExpanded(bool expanded);
    bool introActive() const;
    void setIntroActive(bool active);
    bool panelPinned() const;
    void setPanelPinned(bool pinned);
    double notchWidth() const;
    void setNotchWidth(double width);
    double notchHeight() const;
    void setNotchHeight(double height);
    QString settingsSection() const;
    void setSettingsSection(const QString& section);
    QString hotkeyStatus() const;
    void setHotkeyStatus(const QString& status);
    qint64 interactionLocks() const;
    QString message() const;
    // Shown for six seconds after its last change; "" clears at once.
    void setMessage(const QString& message);

    // Heartbeat: clipboard, focus countdown, then the periodic refreshes.
    void tick();
    qint64 ticks() const { return m_ticks; }
    bool heartbeatRunning() const;
    void stopHeartbeat();

    // Focus timer and activity.
    qint64 seconds() const;
    qint64 duration() const;
    bool timerRunning() const;
    std::optional<QDateTime> deadline() const;
    QString timeText() const;
    void setDuration(qint64 minutes);
    void toggleTimer();
    void persistFocus();
    const QList<Notice>& notices() const;
    void addNotice(const QString& title, const QString& detail);

    // Clipboard history.
    // A copy of every entry: fine for tests and short histories; views read the store instead.
    QList<Clip> clips() const;
    ClipboardArchive* archive() const;
    QString historyStorageError() const;
    bool recording() const;
    void setRecording(bool recording);
    void pollClipboard();
    void deleteClip(const Clip& clip);
    void clearHistory();
    // Puts the entry back on the clipboard without capturing it again, then closes the panel.
    void copyBack(const Clip& clip);

    // Shelf, favourite apps and workspaces.
    const QList<QUrl>& files() const;
    const QList<QUrl>& apps() const;
    void addFiles(const QList<QUrl>& urls);
    void removeFile(const QUrl& url);
    void persistShelf();
    void removeApp(const QUrl& url);
    // An open dialog for the shelf: only applications (desktop entries) when `appOnly`.
    void chooseFiles(bool appOnly);
    // Sends the files to a nearby device (the shelf's "AirDrop für alle").
    void airDrop(const QList<QUrl>& urls);
    bool sharingSessionOpen() const;
    // Opens a shelf item, a favourite or a search result; says so when it is gone or failed.
    void openItem(const QUrl& url);
    void revealItem(const QUrl& url);
    // Shows an open dialog above the panel, which stays open while it is up; `chosen` gets what the
    // user confirmed, while `context` lives. A cancelled dialog only releases the panel.
    void present(const OpenDialogRequest& request, QObject* context,
                 std::function<void(const QList<QUrl>&)> chosen);
    // Opens every path, reports in the status line and the activity list.
    void launchWorkspace(const WorkspacePreset& preset);
    // The workspace editor's chooser: apps, folders and documents join the draft.
    void chooseWorkspaceItems();

    // Players, commands, capture.
    bool mediaEnabled() const;
    void setMediaEnabled(bool enabled);
    void refreshMedia();
    void mediaAction(const QString& command);
    void seek(double seconds);
    QString commandStatus() const;
    std::optional<RunningApp> commandTarget() const;
    void setCommandTarget(std::optional<RunningApp> app);
    // Reads the menus of `app` (or of the previous target) for the commands page.
    void readCommands(std::optional<RunningApp> app);
    void executeCommand(const CommandItem& item);
    bool captureBusy() const;
    void setCaptureBusy(bool busy);
    QString captureStatus() const;
    // Save dialog, hidden panel, the tool, then the file on the shelf (see ScreenCapture).
    void capture(CaptureKind kind);
    void stopRecording();

    // Permissions and the tour.
    bool trusted() const;
    void refreshPermissions();
    void accessibility();
    void revealCurrentApp();
    void openPermissionSettings(const QString& anchor);
    void requestScreenCapture();
    void finishWelcome();
    // Hands a running focus period over, starts a new copy and ends this one.
    void restartApp();
    void openLoginItemSettings();

    // Devices.
    void refreshHardware();
    void toggleMute();

Q_SIGNALS:
    // Requests the application delegate answers; with nobody listening they do nothing.
    void show(std::optional<Page> page);
    void close();
    void resize();
    void applyPreferences();
    void accessibilityChanged();
    void startWelcome();
    // The settings' test of the track toast.
    void previewTrackToast();
    // Hidden: the panel leaves the screen for a capture; shown again afterwards.
    void captureVisibility(bool hidden);

private:
    void startHeartbeat();
    // The commands page came into view: read the frontmost application's menus.
    void readCommandsIfShown();
    // The settings on disk: damaged data kept aside, writes that failed or came back.
    void reportStorageDamage();
    void reportWriteFailure();
    void reportWritesRecovered();

    Defaults& m_defaults;
    Platform m_platform;
    std::unique_ptr<StatusMessage> m_message;
    std::unique_ptr<PanelState> m_panel;
    std::unique_ptr<PermissionStore> m_permissions;
    std::unique_ptr<PermissionActions> m_permissionActions;
    std::unique_ptr<OnboardingState> m_onboarding;
    std::unique_ptr<NowPlaying> m_nowPlaying;
    std::unique_ptr<TrackToastSettings> m_trackToastSettings;
    std::unique_ptr<MenuCommands> m_commands;
    std::unique_ptr<MenuBarApps> m_menuApps;
    std::unique_ptr<ScreenCapture> m_capture;
    std::unique_ptr<DeviceStatus> m_devices;
    std::unique_ptr<LoginItemStore> m_loginItem;
    std::unique_ptr<Productivity> m_productivity;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<ClipboardHistory> m_clipboard;
    std::unique_ptr<ActivityLog> m_activity;
    std::unique_ptr<FocusTimer> m_focus;
    std::unique_ptr<Shelf> m_shelf;
    std::unique_ptr<ShelfSharing> m_sharing;
    std::unique_ptr<ItemOpener> m_opener;
    std::unique_ptr<DeviceSearch> m_search;
    std::unique_ptr<WorkspaceLauncher> m_launcher;
    std::unique_ptr<WeatherStore> m_weather;
    QTimer* m_timer = nullptr;
    qint64 m_ticks = 0;
};
