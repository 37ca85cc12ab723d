#pragma once

#include "clipboard/Clip.h"
#include "common/Scheduler.h"
#include "common/SerialQueue.h"
#include "focus/Notice.h"
#include "model/Page.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class ClipboardArchive;
class Defaults;
class OnboardingState;
class Pasteboard;
class PermissionStore;
class Preferences;
class Productivity;
struct WorkspacePreset;

// The single owner of the application's state. Pages read its properties and call its
// operations; the delegate fills the callback slots. Main thread only.
class Model : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Page page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(bool introActive READ introActive WRITE setIntroActive NOTIFY introActiveChanged)
    Q_PROPERTY(double notchWidth READ notchWidth WRITE setNotchWidth NOTIFY notchWidthChanged)
    Q_PROPERTY(double notchHeight READ notchHeight WRITE setNotchHeight NOTIFY notchHeightChanged)
    Q_PROPERTY(bool captureBusy READ captureBusy WRITE setCaptureBusy NOTIFY captureBusyChanged)
    Q_PROPERTY(QString captureStatus READ captureStatus WRITE setCaptureStatus NOTIFY captureStatusChanged)
    Q_PROPERTY(
        QString settingsSection READ settingsSection WRITE setSettingsSection NOTIFY settingsSectionChanged)
    Q_PROPERTY(bool panelPinned READ panelPinned WRITE setPanelPinned NOTIFY panelPinnedChanged)
    Q_PROPERTY(QString hotkeyStatus READ hotkeyStatus WRITE setHotkeyStatus NOTIFY hotkeyStatusChanged)
    Q_PROPERTY(QString mediaStatus READ mediaStatus NOTIFY mediaStatusChanged)
    Q_PROPERTY(double songPosition READ songPosition NOTIFY songPositionChanged)
    Q_PROPERTY(bool expanded READ expanded WRITE setExpanded NOTIFY expandedChanged)
    Q_PROPERTY(QList<Clip> clips READ clips NOTIFY clipsChanged)
    Q_PROPERTY(QString historyStorageError READ historyStorageError NOTIFY historyStorageErrorChanged)
    Q_PROPERTY(QList<QUrl> files READ files NOTIFY filesChanged)
    Q_PROPERTY(QList<QUrl> apps READ apps NOTIFY appsChanged)
    Q_PROPERTY(QList<Notice> notices READ notices NOTIFY noticesChanged)
    Q_PROPERTY(QString commandApp READ commandApp NOTIFY commandAppChanged)
    Q_PROPERTY(QString commandStatus READ commandStatus NOTIFY commandStatusChanged)
    Q_PROPERTY(bool commandLoading READ commandLoading NOTIFY commandLoadingChanged)
    Q_PROPERTY(bool commandExecuting READ commandExecuting NOTIFY commandExecutingChanged)
    Q_PROPERTY(bool trusted READ trusted NOTIFY trustedChanged)
    Q_PROPERTY(bool recording READ recording WRITE setRecording NOTIFY recordingChanged)
    Q_PROPERTY(int battery READ battery NOTIFY batteryChanged)
    Q_PROPERTY(bool hasBattery READ hasBattery NOTIFY hasBatteryChanged)
    Q_PROPERTY(bool charging READ charging NOTIFY chargingChanged)
    Q_PROPERTY(bool microphone READ microphone NOTIFY microphoneChanged)
    Q_PROPERTY(bool micMuted READ micMuted NOTIFY micMutedChanged)
    Q_PROPERTY(bool micAvailable READ micAvailable NOTIFY micAvailableChanged)
    Q_PROPERTY(bool camera READ camera NOTIFY cameraChanged)
    Q_PROPERTY(qint64 seconds READ seconds NOTIFY secondsChanged)
    Q_PROPERTY(qint64 duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(bool timerRunning READ timerRunning NOTIFY timerRunningChanged)
    Q_PROPERTY(QString song READ song NOTIFY songChanged)
    Q_PROPERTY(QString artist READ artist NOTIFY artistChanged)
    Q_PROPERTY(QString mediaApp READ mediaApp NOTIFY mediaAppChanged)
    Q_PROPERTY(bool playing READ playing NOTIFY playingChanged)
    Q_PROPERTY(bool mediaEnabled READ mediaEnabled WRITE setMediaEnabled NOTIFY mediaEnabledChanged)
    Q_PROPERTY(QString message READ message WRITE setMessage NOTIFY messageChanged)
    Q_PROPERTY(QStringList devices READ devices NOTIFY devicesChanged)
    Q_PROPERTY(QString timeText READ timeText NOTIFY secondsChanged)

public:
    static constexpr double messageLifetime = 6.0;
    static constexpr double heartbeatInterval = 1.0;
    static constexpr qint64 largestClipBytes = 99'999;

    // `historyPath`: the clipboard database; with none, the default file when services start,
    // else an archive in memory.
    Model(Defaults& defaults, Platform platform, bool startServices, Pasteboard& clipboard,
          std::optional<QString> historyPath = std::nullopt, QObject* parent = nullptr);
    ~Model() override;

    // Owned stores.
    Preferences& preferences() const { return *m_preferences; }
    Productivity& productivity() const { return *m_productivity; }
    OnboardingState& onboarding() const { return *m_onboarding; }
    PermissionStore& permissions() const { return *m_permissions; }
    ClipboardArchive* archive() const { return m_archive.get(); }
    Defaults& defaults() const { return m_defaults; }
    const Platform& platform() const { return m_platform; }
    SerialQueue& commandQueue() { return m_commandQueue; }
    SerialQueue& mediaQueue() { return m_mediaQueue; }

    // Callback slots filled by the delegate; an empty slot does nothing.
    std::function<void(std::optional<Page>)> show;
    std::function<void()> close;
    std::function<void()> resize;
    std::function<void()> applyPreferences;
    std::function<void()> accessibilityChanged;
    std::function<void()> previewTrackToast;
    std::function<void()> startWelcome;
    std::function<void(bool)> captureVisibility;

    // Published state.
    Page page() const { return m_page; }
    void setPage(Page page);
    bool introActive() const { return m_introActive; }
    void setIntroActive(bool active);
    double notchWidth() const { return m_notchWidth; }
    void setNotchWidth(double width);
    double notchHeight() const { return m_notchHeight; }
    void setNotchHeight(double height);
    bool captureBusy() const { return m_captureBusy; }
    void setCaptureBusy(bool busy);
    const QString& captureStatus() const { return m_captureStatus; }
    void setCaptureStatus(const QString& status);
    const QString& settingsSection() const { return m_settingsSection; }
    void setSettingsSection(const QString& section);
    bool panelPinned() const { return m_panelPinned; }
    void setPanelPinned(bool pinned);
    const QString& hotkeyStatus() const { return m_hotkeyStatus; }
    void setHotkeyStatus(const QString& status);
    const QString& mediaStatus() const { return m_mediaStatus; }
    double songPosition() const { return m_songPosition; }
    bool expanded() const { return m_expanded; }
    void setExpanded(bool expanded);
    const QList<Clip>& clips() const { return m_clips; }
    const QString& historyStorageError() const { return m_historyStorageError; }
    const QList<QUrl>& files() const { return m_files; }
    const QList<QUrl>& apps() const { return m_apps; }
    const QList<Notice>& notices() const { return m_notices; }
    const QString& commandApp() const { return m_commandApp; }
    const QString& commandStatus() const { return m_commandStatus; }
    bool commandLoading() const { return m_commandLoading; }
    bool commandExecuting() const { return m_commandExecuting; }
    bool trusted() const { return m_trusted; }
    bool recording() const { return m_recording; }
    void setRecording(bool recording);
    int battery() const { return m_battery; }
    bool hasBattery() const { return m_hasBattery; }
    bool charging() const { return m_charging; }
    bool microphone() const { return m_microphone; }
    bool micMuted() const { return m_micMuted; }
    bool micAvailable() const { return m_micAvailable; }
    bool camera() const { return m_camera; }
    qint64 seconds() const { return m_seconds; }
    qint64 duration() const { return m_duration; }
    bool timerRunning() const { return m_timerRunning; }
    const QString& song() const { return m_song; }
    const QString& artist() const { return m_artist; }
    const QString& mediaApp() const { return m_mediaApp; }
    bool playing() const { return m_playing; }
    bool mediaEnabled() const { return m_mediaEnabled; }
    void setMediaEnabled(bool enabled);
    const QString& message() const { return m_message; }
    // Shown for six seconds after its last change; "" clears at once.
    void setMessage(const QString& message);
    const QStringList& devices() const { return m_devices; }

    // Internal state that other parts read.
    std::optional<QDateTime> deadline() const { return m_deadline; }
    qint64 ticks() const { return m_ticks; }
    qint64 interactionLocks() const { return m_interactionLocks; }
    void addInteractionLock() { ++m_interactionLocks; }
    void releaseInteractionLock() { m_interactionLocks = std::max<qint64>(0, m_interactionLocks - 1); }
    std::optional<RunningApp> commandTarget() const { return m_commandTarget; }
    void setCommandTarget(std::optional<RunningApp> app) { m_commandTarget = std::move(app); }
    bool heartbeatRunning() const { return m_timer != nullptr && m_timer->isActive(); }
    void stopHeartbeat();

    // Heartbeat: clipboard, focus countdown, then the periodic refreshes.
    void tick();

    // Focus timer.
    void setDuration(qint64 minutes);
    void toggleTimer();
    QString timeText() const;
    void persistFocus();

    // Activity list.
    void addNotice(const QString& title, const QString& detail);

    // Clipboard history.
    void pollClipboard();
    void deleteClip(const Clip& clip);
    void clearHistory();
    // Puts the entry back on the clipboard without capturing it again, then closes the panel.
    void copyBack(const Clip& clip);

    // Shelf and favourite apps.
    void addFiles(const QList<QUrl>& urls);
    void removeFile(const QUrl& url);
    void persistShelf();

    // Workspaces: opens every path, reports in the status line and the activity list.
    void launchWorkspace(const WorkspacePreset& preset);

    // Permissions and the tour.
    void refreshPermissions();
    void refreshHardware();
    void finishWelcome();

Q_SIGNALS:
    void pageChanged();
    void introActiveChanged();
    void notchWidthChanged();
    void notchHeightChanged();
    void captureBusyChanged();
    void captureStatusChanged();
    void settingsSectionChanged();
    void panelPinnedChanged();
    void hotkeyStatusChanged();
    void mediaStatusChanged();
    void songPositionChanged();
    void expandedChanged();
    void clipsChanged();
    void historyStorageErrorChanged();
    void filesChanged();
    void appsChanged();
    void noticesChanged();
    void commandAppChanged();
    void commandStatusChanged();
    void commandLoadingChanged();
    void commandExecutingChanged();
    void trustedChanged();
    void recordingChanged();
    void batteryChanged();
    void hasBatteryChanged();
    void chargingChanged();
    void microphoneChanged();
    void micMutedChanged();
    void micAvailableChanged();
    void cameraChanged();
    void secondsChanged();
    void durationChanged();
    void timerRunningChanged();
    void songChanged();
    void artistChanged();
    void mediaAppChanged();
    void playingChanged();
    void mediaEnabledChanged();
    void messageChanged();
    void devicesChanged();

private:
    template <typename T> bool assign(T& field, const T& value, void (Model::*notify)())
    {
        if (field == value)
            return false;
        field = value;
        Q_EMIT(this->*notify)();
        return true;
    }

    void openHistory(std::optional<QString> historyPath, bool startServices);
    void setClips(QList<Clip> clips);
    void setHistoryStorageError(const QString& error);
    void loadNotices();
    void setNotices(QList<Notice> notices);
    void restoreFocus();
    void advanceFocus();
    void setSeconds(qint64 seconds);
    void setDurationSeconds(qint64 seconds);
    void setTimerRunning(bool running);
    void loadShelf();
    void setFiles(QList<QUrl> files);
    void setApps(QList<QUrl> apps);
    void setTrusted(bool trusted);
    void restorePage();
    void startHeartbeat();

    Defaults& m_defaults;
    Platform m_platform;
    Pasteboard& m_clipboard;

    Page m_page = Page::home;
    std::unique_ptr<PermissionStore> m_permissions;
    std::unique_ptr<OnboardingState> m_onboarding;
    bool m_introActive = false;
    double m_notchWidth = 185.0;
    double m_notchHeight = 32.0;
    bool m_captureBusy = false;
    QString m_captureStatus;
    std::unique_ptr<Productivity> m_productivity;
    std::unique_ptr<Preferences> m_preferences;
    QString m_settingsSection = QStringLiteral("Ansicht");
    bool m_panelPinned = false;
    QString m_hotkeyStatus;
    QString m_mediaStatus = QStringLiteral("Music oder Spotify verbinden, um die Wiedergabe zu steuern.");
    double m_songPosition = 0;
    qint64 m_mediaGeneration = 0;
    qint64 m_interactionLocks = 0;
    bool m_expanded = false;
    QList<Clip> m_clips;
    std::unique_ptr<ClipboardArchive> m_archive;
    QString m_historyStorageError;
    QList<QUrl> m_files;
    QList<QUrl> m_apps;
    QList<Notice> m_notices;
    QString m_commandApp = QStringLiteral("Aktive App");
    QString m_commandStatus = QStringLiteral("Andere App aktivieren und Command halten.");
    bool m_commandLoading = false;
    bool m_commandExecuting = false;
    std::optional<RunningApp> m_commandTarget;
    qint64 m_commandGeneration = 0;
    SerialQueue m_commandQueue{QStringLiteral("Brenlow.commands")};
    bool m_trusted = false;
    bool m_recording = true;
    int m_battery = 0;
    bool m_hasBattery = false;
    bool m_charging = false;
    bool m_microphone = false;
    bool m_micMuted = false;
    bool m_micAvailable = false;
    bool m_camera = false;
    qint64 m_seconds = 1500;
    qint64 m_duration = 1500;
    bool m_timerRunning = false;
    QString m_song = QStringLiteral("Noch keine Wiedergabe");
    QString m_artist = QStringLiteral("Apple Music & Spotify verbinden");
    QString m_mediaApp;
    bool m_playing = false;
    bool m_mediaEnabled = false;
    QString m_message;
    ScheduledWork m_messageDismiss;
    std::optional<QDateTime> m_deadline;
    qint64 m_pasteCount = 0;
    QTimer* m_timer = nullptr;
    qint64 m_ticks = 0;
    QStringList m_devices;
    SerialQueue m_mediaQueue{QStringLiteral("Brenlow.media")};
};
