#include "model/Model.h"

#include "clipboard/ClipboardArchive.h"
#include "platform/Pasteboard.h"
#include "productivity/Productivity.h"
#include "settings/Defaults.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"
#include "setup/PermissionStore.h"

namespace {
const QString lastPageKey = QStringLiteral("lastPage");
const QString recordingKey = QStringLiteral("recording");
const QString mediaEnabledKey = QStringLiteral("mediaEnabled");
} // namespace

Model::Model(Defaults& defaults, Platform platform, bool startServices, Pasteboard& clipboard,
             std::optional<QString> historyPath, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_platform(platform), m_clipboard(clipboard),
      m_messageDismiss(platform.scheduler, this)
{
    // 1. Initial values; trust is asked once here and again from the permission store below.
    m_permissions = std::make_unique<PermissionStore>(platform.permissions, platform.clock);
    m_trusted = m_permissions->accessibility();

    // 2. Owned stores in their order, with the clipboard's count taken before productivity.
    m_onboarding = std::make_unique<OnboardingState>(defaults);
    m_pasteCount = clipboard.changeCount();
    m_productivity = std::make_unique<Productivity>(defaults, platform.clock);
    m_preferences = std::make_unique<Preferences>(defaults);

    // 3. The clipboard history.
    openHistory(std::move(historyPath), startServices);

    // 4. Activity list.
    loadNotices();

    // 5. Switches.
    m_recording = defaults.boolValue(recordingKey).value_or(true);
    m_mediaEnabled = defaults.boolValue(mediaEnabledKey).value_or(false);

    // 6. Focus timer.
    restoreFocus();

    // 7. The remembered page.
    restorePage();

    // 8. Accessibility trust follows the permission store.
    setTrusted(m_permissions->accessibility());
    m_permissions->onAccessibilityChanged = [this](bool granted) {
        setTrusted(granted);
        if (accessibilityChanged)
            accessibilityChanged();
    };

    // 9. A changed record is applied by the delegate, then the panel resizes.
    m_preferences->changed = [this] {
        if (applyPreferences)
            applyPreferences();
        if (resize)
            resize();
    };

    // 10. Shelf and favourite apps.
    loadShelf();

    // 11. Every start with an empty activity list greets the user.
    if (m_notices.isEmpty())
        addNotice(QStringLiteral("Willkommen bei Brenlow"),
                  QStringLiteral("Dein Platz für Fokus, Dateien und schnelle Aktionen."));

    // 12. Only a running application has a heartbeat.
    if (startServices) {
        refreshHardware();
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

void Model::stopHeartbeat()
{
    if (m_timer)
        m_timer->stop();
}

void Model::tick()
{
    ++m_ticks;
    pollClipboard();
    if (m_timerRunning)
        advanceFocus();
    if (m_ticks % 5 == 0) {
        refreshPermissions();
        refreshHardware();
    }
    // Song position and player polling join here with the media pages.
}

void Model::restorePage()
{
    if (!m_preferences->values().rememberPage)
        return;
    const auto title = m_defaults.stringValue(lastPageKey);
    if (!title)
        return;
    const auto page = Pages::fromTitle(*title);
    if (page && *page != Page::onboarding)
        setPage(*page);
}

void Model::setPage(Page page)
{
    const bool changed = page != m_page;
    m_page = page;
    m_defaults.setString(lastPageKey, Pages::title(page));
    if (changed)
        Q_EMIT pageChanged();
    if (resize)
        resize();
}

void Model::setMessage(const QString& message)
{
    m_messageDismiss.cancel();
    assign(m_message, message, &Model::messageChanged);
    if (!message.isEmpty())
        m_messageDismiss.schedule(messageLifetime, [this] { setMessage(QString()); });
}

void Model::setRecording(bool recording)
{
    assign(m_recording, recording, &Model::recordingChanged);
    m_defaults.setBool(recordingKey, recording);
}

void Model::setMediaEnabled(bool enabled)
{
    assign(m_mediaEnabled, enabled, &Model::mediaEnabledChanged);
    m_defaults.setBool(mediaEnabledKey, enabled);
}

void Model::refreshPermissions()
{
    m_permissions->refresh();
}

void Model::refreshHardware()
{
    // Device status (battery, microphone, camera) arrives with the device pages.
}

void Model::finishWelcome()
{
    m_onboarding->finish();
    setIntroActive(false);
    setPanelPinned(false);
    setPage(Page::home);
    if (show)
        show(Page::home);
}

void Model::setTrusted(bool trusted)
{
    assign(m_trusted, trusted, &Model::trustedChanged);
}
void Model::setIntroActive(bool active)
{
    assign(m_introActive, active, &Model::introActiveChanged);
}
void Model::setNotchWidth(double width)
{
    assign(m_notchWidth, width, &Model::notchWidthChanged);
}
void Model::setNotchHeight(double height)
{
    assign(m_notchHeight, height, &Model::notchHeightChanged);
}
void Model::setCaptureBusy(bool busy)
{
    assign(m_captureBusy, busy, &Model::captureBusyChanged);
}
void Model::setCaptureStatus(const QString& status)
{
    assign(m_captureStatus, status, &Model::captureStatusChanged);
}
void Model::setPanelPinned(bool pinned)
{
    assign(m_panelPinned, pinned, &Model::panelPinnedChanged);
}
void Model::setHotkeyStatus(const QString& status)
{
    assign(m_hotkeyStatus, status, &Model::hotkeyStatusChanged);
}
void Model::setExpanded(bool expanded)
{
    assign(m_expanded, expanded, &Model::expandedChanged);
}

void Model::setSettingsSection(const QString& section)
{
    assign(m_settingsSection, section, &Model::settingsSectionChanged);
}
