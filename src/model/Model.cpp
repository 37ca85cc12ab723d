#include "model/Model.h"

#include "capture/CaptureKind.h"
#include "capture/ScreenCapture.h"
#include "clipboard/ClipboardArchive.h"
#include "clipboard/ClipboardHistory.h"
#include "commands/MenuBarApps.h"
#include "commands/MenuCommands.h"
#include "common/StatusMessage.h"
#include "devices/DeviceStatus.h"
#include "focus/ActivityLog.h"
#include "focus/FocusTimer.h"
#include "media/NowPlaying.h"
#include "media/TrackToastSettings.h"
#include "model/PanelState.h"
#include "platform/FileSearch.h"
#include "platform/Pasteboard.h"
#include "productivity/AppCatalog.h"
#include "productivity/AppFavourites.h"
#include "productivity/DesktopEntry.h"
#include "productivity/DeviceSearch.h"
#include "productivity/ItemOpener.h"
#include "productivity/Productivity.h"
#include "productivity/Shelf.h"
#include "productivity/ShelfSharing.h"
#include "productivity/ShelfTexts.h"
#include "productivity/WorkspaceLauncher.h"
#include "productivity/WorkspacePaths.h"
#include "productivity/WorkspaceTexts.h"
#include "settings/Defaults.h"
#include "settings/Preferences.h"
#include "settings/StorageTexts.h"
#include "setup/LoginItemStore.h"
#include "setup/OnboardingState.h"
#include "setup/PermissionActions.h"
#include "setup/PermissionStore.h"
#include "weather/WeatherStore.h"

#include <QDir>
#include <QPointer>
#include <QTimer>

namespace {

// A copy whose application did not hand it over: the user would wonder why it is missing.
QString unreadableCopy()
{
    return QStringLiteral("Kopie nicht übernommen: Die Anwendung, aus der kopiert wurde, antwortet nicht.");
}

} // namespace

Model::Model(Defaults& defaults, Platform platform, bool startServices, Pasteboard& clipboard,
             std::optional<QString> historyPath, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_platform(platform)
{
    // 1. Initial values; trust is asked once by the permission store.
    m_message = std::make_unique<StatusMessage>(platform.scheduler);
    m_panel = std::make_unique<PanelState>(defaults);
    m_permissions = std::make_unique<PermissionStore>(platform.permissions, platform.clock);

    // 2. Owned stores in their order.
    m_onboarding = std::make_unique<OnboardingState>(defaults);
    m_commands = std::make_unique<MenuCommands>(
        MenuCommands::Services{platform.accessibility, platform.workspace, platform.permissions,
                               platform.scheduler, platform.clock},
        *m_permissions);
    m_menuApps = std::make_unique<MenuBarApps>(defaults, platform.statusBar, platform.displays,
                                               platform.scheduler, *m_permissions);
    m_productivity = std::make_unique<Productivity>(defaults, platform.clock);
    m_preferences = std::make_unique<Preferences>(defaults);

    // 3. The clipboard history: the default file only for a running application.
    if (!historyPath && startServices)
        historyPath = ClipboardArchive::localPath();
    m_clipboard =
        std::make_unique<ClipboardHistory>(defaults, clipboard, platform.clock, *m_productivity, historyPath);
    connect(m_clipboard.get(), &ClipboardHistory::copiedBack, this, &Model::close);
    connect(&clipboard, &Pasteboard::unreadable, this, [this] {
        if (m_clipboard->recording())
            setMessage(unreadableCopy());
    });

    // 4. Activity list.
    m_activity = std::make_unique<ActivityLog>(defaults, platform.clock);

    // Device status reports to the activity list; the login item reads the desktop's autostart.
    m_devices = std::make_unique<DeviceStatus>(platform.powerSources, platform.audioDevices, platform.cameras,
                                               *m_activity, *m_message);
    m_loginItem = std::make_unique<LoginItemStore>(platform.loginItems, defaults);

    // 5. The players (the recording switch came with the history) and the track toast's settings.
    m_nowPlaying = std::make_unique<NowPlaying>(defaults, platform.players, platform.clock,
                                                platform.scheduler, *m_message);
    m_trackToastSettings = std::make_unique<TrackToastSettings>(defaults);

    // 6. Focus timer.
    m_focus =
        std::make_unique<FocusTimer>(defaults, platform.clock, platform.sound, *m_preferences, *m_activity);
    connect(m_focus.get(), &FocusTimer::periodFinished, this, [this] { Q_EMIT show(Page::home); });

    // 7. The remembered page; every assignment resizes the panel.
    if (m_preferences->values().rememberPage)
        m_panel->restorePage();
    connect(m_panel.get(), &PanelState::pageAssigned, this, &Model::resize);

    // 8. Trust follows the permission store.
    connect(m_permissions.get(), &PermissionStore::accessibilityChanged, this, &Model::accessibilityChanged);

    // Menu commands: the commands page reads the frontmost application's menus whenever it comes
    // into view, and again once access is granted while it shows.
    connect(m_commands.get(), &MenuCommands::closeRequested, this, &Model::close);
    connect(m_panel.get(), &PanelState::pageChanged, this, &Model::readCommandsIfShown);
    connect(m_panel.get(), &PanelState::expandedChanged, this, &Model::readCommandsIfShown);
    connect(m_permissions.get(), &PermissionStore::accessibilityChanged, this, [this] {
        if (m_permissions->accessibility() && m_panel->expanded() && m_panel->page() == Page::commands)
            QMetaObject::invokeMethod(
                this, [this] { readCommands(std::nullopt); }, Qt::QueuedConnection);
    });

    // 9. A changed record is applied by the delegate, then the panel resizes.
    connect(m_preferences.get(), &Preferences::valuesAssigned, this, [this] {
        Q_EMIT applyPreferences();
        Q_EMIT resize();
    });

    // 10. Shelf and favourite apps, the workspaces' launcher and the permission repairs.
    // A first start picks the desktop's browser, editor and terminal as favourites.
    FileSearch& files = platform.fileSearch;
    m_shelf = std::make_unique<Shelf>(defaults, [&files] {
        return AppFavourites::defaults(
            AppCatalog::scan(files.applicationFolders(), DesktopEntry::userLanguages()),
            files.defaultAppFolders());
    });
    m_sharing = std::make_unique<ShelfSharing>(platform.sharing, *m_message);
    connect(m_sharing.get(), &ShelfSharing::sessionStarted, m_panel.get(), &PanelState::addInteractionLock);
    connect(m_sharing.get(), &ShelfSharing::sessionEnded, m_panel.get(), &PanelState::releaseInteractionLock);
    m_opener = std::make_unique<ItemOpener>(platform.workspace, *m_message);
    m_search = std::make_unique<DeviceSearch>(platform.fileSearch, platform.scheduler);
    m_launcher = std::make_unique<WorkspaceLauncher>(platform.workspace, *m_message, *m_activity);
    m_permissionActions = std::make_unique<PermissionActions>(*m_permissions, platform.workspace,
                                                              platform.systemSettings, *m_message);
    connect(m_permissionActions.get(), &PermissionActions::closeRequested, this, &Model::close);

    // Screen capture files into the shelf and the activity list, so it comes after both.
    m_capture = std::make_unique<ScreenCapture>(ScreenCapture::Services{platform.captureTool,
                                                                        platform.dialogs, platform.scheduler,
                                                                        platform.clock, platform.statusBar},
                                                *m_message, *m_activity, *m_shelf);
    connect(m_capture.get(), &ScreenCapture::visibilityRequested, this, &Model::captureVisibility);
    connect(m_capture.get(), &ScreenCapture::panelLockChanged, m_panel.get(), [this](bool held) {
        if (held)
            m_panel->addInteractionLock();
        else
            m_panel->releaseInteractionLock();
    });

    // The weather for the chosen place; asking for the location brings the panel forward.
    m_weather = std::make_unique<WeatherStore>(defaults, platform.clock, platform.scheduler, platform.location,
                                               startServices);
    connect(m_weather.get(), &WeatherStore::activationRequested, this, [this] { Q_EMIT show(Page::weather); });

    // 11. Every start with an empty activity list greets the user.
    m_activity->greetIfEmpty();

    // Whatever the settings on disk went through while loading comes above the greeting; what
    // happens to them later is reported as it happens.
    connect(&m_defaults, &Defaults::damageFound, this, &Model::reportStorageDamage);
    connect(&m_defaults, &Defaults::writeFailed, this, &Model::reportWriteFailure);
    connect(&m_defaults, &Defaults::writesRecovered, this, &Model::reportWritesRecovered);
    if (m_defaults.writeProblem())
        reportWriteFailure();
    reportStorageDamage();

    // 12. Only a running application watches the clipboard and has a heartbeat.
    if (startServices) {
        m_clipboard->watchClipboard();
        m_devices->watchServices();
        m_devices->refreshHardware();
        startHeartbeat();
    }
}

Model::~Model() = default;

void Model::startHeartbeat()
{
    m_timer = new QTimer(this);
    m_timer->setInterval(int(heartbeatInterval * 1000));
    m_timer->setTimerType(Qt::CoarseTimer);
    connect(m_timer, &QTimer::timeout, this, &Model::tick);
    m_timer->start();
}

bool Model::heartbeatRunning() const
{
    return m_timer != nullptr && m_timer->isActive();
}

void Model::stopHeartbeat()
{
    if (m_timer)
        m_timer->stop();
}

void Model::tick()
{
    ++m_ticks;
    m_clipboard->pollClipboard();
    m_focus->advance();
    m_nowPlaying->advancePosition();
    if (m_ticks % 5 == 0) {
        refreshPermissions();
        m_devices->refreshHardware();
        // Changes that could not be written go out as soon as the disk takes them again.
        m_defaults.retryWrites();
    }
    if (m_ticks % 3 == 0 && m_nowPlaying->mediaEnabled())
        m_nowPlaying->refreshMedia();
    // Device status joins here with its store.
}

// Each report sets the status line before it adds its notice: adding a notice writes the
// settings, which may report something newer, and the newer text should be the one shown.
void Model::reportStorageDamage()
{
    const QList<StorageDamage> damages = m_defaults.takeDamage();
    if (damages.isEmpty())
        return;
    m_message->setText(StorageTexts::damageMessage(damages));
    for (const StorageDamage& damage : damages)
        m_activity->addNotice(StorageTexts::damageTitle(), StorageTexts::damageDetail(damage));
}

void Model::reportWriteFailure()
{
    const WriteProblem problem = m_defaults.writeProblem().value_or(WriteProblem::unknown);
    if (m_defaults.writesHeld()) {
        m_message->setText(StorageTexts::openFailedMessage(problem));
        m_activity->addNotice(StorageTexts::writeFailedTitle(), StorageTexts::openFailedDetail(problem));
        return;
    }
    m_message->setText(StorageTexts::writeFailedMessage(problem));
    m_activity->addNotice(StorageTexts::writeFailedTitle(), StorageTexts::writeFailedDetail(problem));
}

void Model::reportWritesRecovered()
{
    m_message->setText(StorageTexts::writesRecoveredMessage());
    m_activity->addNotice(StorageTexts::writesRecoveredTitle(), StorageTexts::writesRecoveredMessage());
}

void Model::refreshPermissions()
{
    m_permissions->refresh();
}

void Model::finishWelcome()
{
    m_onboarding->finish();
    m_panel->setIntroActive(false);
    m_panel->setPanelPinned(false);
    m_panel->setPage(Page::home);
    Q_EMIT show(Page::home);
}

void Model::restartApp()
{
    m_focus->storeResume();
    m_permissionActions->restartApp();
}

void Model::present(const OpenDialogRequest& request, QObject* context,
                    std::function<void(const QList<QUrl>&)> chosen)
{
    m_panel->addInteractionLock();
    QPointer<QObject> receiver(context);
    m_platform.dialogs.open(request, this, [this, receiver, chosen](std::optional<QList<QUrl>> urls) {
        m_panel->releaseInteractionLock();
        if (urls && receiver)
            chosen(*urls);
    });
}

void Model::chooseWorkspaceItems()
{
    const OpenDialogRequest request{
        WorkspaceTexts::chooserTitle(), WorkspacePaths::chooserStart(), true, true, true, {}};
    Productivity* store = m_productivity.get();
    present(request, store, [store](const QList<QUrl>& urls) { store->addWorkspacePaths(urls); });
}

void Model::chooseFiles(bool appOnly)
{
    OpenDialogRequest request{ShelfTexts::addFiles(), QDir::homePath(), true, true, !appOnly, {}};
    if (appOnly) {
        request.title = ShelfTexts::addApps();
        request.startFolder = WorkspacePaths::chooserStart();
        request.nameFilters = {ShelfTexts::appFilter()};
    }
    Shelf* shelf = m_shelf.get();
    present(request, shelf, [shelf](const QList<QUrl>& urls) { shelf->addFiles(urls); });
}

void Model::copyBack(const Clip& clip)
{
    m_clipboard->copyBack(clip);
}

// One-line forwards to the stores, under the names the rest of the program uses.
// clang-format off

Page Model::page() const { return m_panel->page(); }
void Model::setPage(Page page) { m_panel->setPage(page); }
bool Model::expanded() const { return m_panel->expanded(); }
void Model::setExpanded(bool expanded) { m_panel->setExpanded(expanded); }
bool Model::introActive() const { return m_panel->introActive(); }
void Model::setIntroActive(bool active) { m_panel->setIntroActive(active); }
bool Model::panelPinned() const { return m_panel->panelPinned(); }
void Model::setPanelPinned(bool pinned) { m_panel->setPanelPinned(pinned); }
double Model::notchWidth() const { return m_panel->notchWidth(); }
void Model::setNotchWidth(double width) { m_panel->setNotchWidth(width); }
double Model::notchHeight() const { return m_panel->notchHeight(); }
void Model::setNotchHeight(double height) { m_panel->setNotchHeight(height); }
QString Model::settingsSection() const { return m_panel->settingsSection(); }
void Model::setSettingsSection(const QString& section) { m_panel->setSettingsSection(section); }
QString Model::hotkeyStatus() const { return m_panel->hotkeyStatus(); }
void Model::setHotkeyStatus(const QString& status) { m_panel->setHotkeyStatus(status); }
qint64 Model::interactionLocks() const { return m_panel->interactionLocks(); }
QString Model::message() const { return m_message->text(); }
void Model::setMessage(const QString& message) { m_message->setText(message); }

qint64 Model::seconds() const { return m_focus->seconds(); }
qint64 Model::duration() const { return m_focus->duration(); }
bool Model::timerRunning() const { return m_focus->timerRunning(); }
std::optional<QDateTime> Model::deadline() const { return m_focus->deadline(); }
QString Model::timeText() const { return m_focus->timeText(); }
void Model::setDuration(qint64 minutes) { m_focus->setDuration(minutes); }
void Model::toggleTimer() { m_focus->toggleTimer(); }
void Model::persistFocus() { m_focus->persistFocus(); }
const QList<Notice>& Model::notices() const { return m_activity->notices(); }
void Model::addNotice(const QString& title, const QString& detail) { m_activity->addNotice(title, detail); }

QList<Clip> Model::clips() const { return m_clipboard->clips(); }
ClipboardArchive* Model::archive() const { return m_clipboard->archive(); }
QString Model::historyStorageError() const { return m_clipboard->historyStorageError(); }
bool Model::recording() const { return m_clipboard->recording(); }
void Model::setRecording(bool recording) { m_clipboard->setRecording(recording); }
void Model::pollClipboard() { m_clipboard->pollClipboard(); }
void Model::deleteClip(const Clip& clip) { m_clipboard->deleteClip(clip); }
void Model::clearHistory() { m_clipboard->clearHistory(); }

const QList<QUrl>& Model::files() const { return m_shelf->files(); }
const QList<QUrl>& Model::apps() const { return m_shelf->apps(); }
void Model::addFiles(const QList<QUrl>& urls) { m_shelf->addFiles(urls); }
void Model::removeFile(const QUrl& url) { m_shelf->removeFile(url); }
void Model::persistShelf() { m_shelf->persistShelf(); }
void Model::removeApp(const QUrl& url) { m_shelf->removeApp(url); }
void Model::airDrop(const QList<QUrl>& urls) { m_sharing->airDrop(urls); }
bool Model::sharingSessionOpen() const { return m_sharing->sessionOpen(); }
void Model::openItem(const QUrl& url) { m_opener->open(url); }
void Model::revealItem(const QUrl& url) { m_opener->reveal(url); }

bool Model::mediaEnabled() const { return m_nowPlaying->mediaEnabled(); }
void Model::setMediaEnabled(bool enabled) { m_nowPlaying->setMediaEnabled(enabled); }
void Model::refreshMedia() { m_nowPlaying->refreshMedia(); }
void Model::mediaAction(const QString& command) { m_nowPlaying->mediaAction(command); }
void Model::seek(double seconds) { m_nowPlaying->seek(seconds); }
QString Model::commandStatus() const { return m_commands->commandStatus(); }
std::optional<RunningApp> Model::commandTarget() const { return m_commands->commandTarget(); }
void Model::setCommandTarget(std::optional<RunningApp> app) { m_commands->setCommandTarget(std::move(app)); }
void Model::readCommands(std::optional<RunningApp> app) { m_commands->readCommands(std::move(app)); }
void Model::executeCommand(const CommandItem& item) { m_commands->executeCommand(item); }
void Model::readCommandsIfShown()
{
    if (m_panel->expanded() && m_panel->page() == Page::commands)
        readCommands(m_platform.workspace.frontmostApp());
}
bool Model::captureBusy() const { return m_capture->captureBusy(); }
void Model::setCaptureBusy(bool busy) { m_capture->setCaptureBusy(busy); }
QString Model::captureStatus() const { return m_capture->captureStatus(); }
void Model::capture(CaptureKind kind) { m_capture->capture(kind); }
void Model::stopRecording() { m_capture->stopRecording(); }

void Model::launchWorkspace(const WorkspacePreset& preset) { m_launcher->launch(preset); }

bool Model::trusted() const { return m_permissions->accessibility(); }
void Model::accessibility() { m_permissionActions->accessibility(); }
void Model::revealCurrentApp() { m_permissionActions->revealCurrentApp(); }
void Model::openPermissionSettings(const QString& anchor) { m_permissionActions->openPermissionSettings(anchor); }
void Model::requestScreenCapture() { m_permissionActions->requestScreenCapture(); }
void Model::openLoginItemSettings() { m_permissionActions->openLoginItemSettings(); }
void Model::refreshHardware() { m_devices->refreshHardware(); }
void Model::toggleMute() { m_devices->toggleMute(); }
// clang-format on
