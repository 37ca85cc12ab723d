#include "app/AppDelegate.h"

#include "app/CoverPanel.h"
#include "app/NotchPanel.h"
#include "app/PanelPages.h"
#include "capture/ScreenCapture.h"
#include "commands/MenuBarApps.h"
#include "media/TrackToast.h"
#include "model/Model.h"
#include "model/PanelState.h"
#include "platform/Displays.h"
#include "platform/HotKeys.h"
#include "platform/KeyMonitor.h"
#include "platform/StatusBar.h"
#include "productivity/Productivity.h"
#include "setup/LoginItemStore.h"
#include "setup/OnboardingState.h"
#include "shell/PanelController.h"
#include "shell/widgets/PageRegistry.h"
#include "shell/widgets/RootView.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

AppDelegate::AppDelegate(Defaults& defaults, Platform platform, QObject* parent)
    : QObject(parent), m_platform(platform),
      m_model(std::make_unique<Model>(defaults, platform, true, platform.pasteboard)),
      m_pages(std::make_unique<PageRegistry>())
{
    registerPanelPages(*m_pages, *m_model);
}

AppDelegate::~AppDelegate()
{
    if (m_launched)
        terminate();
    // The model's requests die with this delegate; the panel goes before the model it shows.
    disconnect(m_model.get(), nullptr, this, nullptr);
    m_trackToast.reset();
    m_coverPanel.reset();
    m_controller.reset();
    m_panel.reset();
}

void AppDelegate::launch()
{
    if (m_launched)
        return;
    m_launched = true;

    // 1. Accessory: no window keeps the process alive or dies with it.
    QApplication::setQuitOnLastWindowClosed(false);
    // 2. The main menu: its edit menu works in the text fields (see the class comment).
    m_editMenu.install();

    // 3. The panel.
    m_panel = std::make_unique<NotchPanel>(new RootView(*m_model, *m_pages));
    m_controller = std::make_unique<PanelController>(*m_model, *m_panel);
    m_panel->keyHandler = [this](int keyCode, KeyModifiers modifiers) {
        return m_controller->handleLocalKey(keyCode, modifiers);
    };
    connect(m_panel.get(), &NotchPanel::pointerEntered, m_controller.get(), &PanelController::pointerMoved);

    // 4. The model's requests.
    connectModel();
    connect(&m_model->productivity(), &Productivity::miniChanged, this, &AppDelegate::reposition);

    // 4b. The menu-bar integration: its settings and menus open the panel.
    MenuBarApps& menuApps = m_model->menuApps();
    connect(&menuApps, &MenuBarApps::openSettings, this, [this] {
        m_model->setSettingsSection(QStringLiteral("Menüleiste"));
        expand(Page::settings, false);
    });
    menuApps.setStarted(true);
    menuApps.configure();

    // 5. The track toast beside the notch.
    m_coverPanel = std::make_unique<CoverPanel>();
    m_trackToast = std::make_unique<TrackToast>(
        TrackToast::Inputs{m_model->nowPlaying(), m_model->trackToastSettings(),
                           [model = m_model.get()] {
                               return model->expanded() || model->captureBusy() || model->introActive();
                           },
                           m_model->preferences(), m_platform.displays, m_platform.sessionEvents,
                           m_platform.clock, m_platform.scheduler},
        *m_coverPanel);
    connect(&m_model->panel(), &PanelState::expandedChanged, m_trackToast.get(),
            [toast = m_trackToast.get(), model = m_model.get()] { toast->panelExpanded(model->expanded()); });
    connect(m_trackToast.get(), &TrackToast::closeRequested, this, &AppDelegate::collapse);
    connect(m_model.get(), &Model::previewTrackToast, m_trackToast.get(), &TrackToast::preview);
    // The same wing announces rising unread counters of watched menu-bar apps.
    connect(&menuApps, &MenuBarApps::notification, m_trackToast.get(),
            [toast = m_trackToast.get()](const MenuBarEntry& entry, int count) {
                toast->announceUnread(entry.appID, entry.name, count);
            });

    // 6. The status item. Its icon lives in the views library's resources, which a static link
    // leaves out unless asked for.
    Q_INIT_RESOURCE(brenlow);
    m_platform.statusBar.show(QString::fromLatin1(statusSymbol), QStringLiteral("Brenlow"));
    connect(&m_platform.statusBar, &StatusBar::activated, this, &AppDelegate::toggle);
    connect(&m_platform.statusBar, &StatusBar::quitRequested, this, [] { QCoreApplication::quit(); });

    // 7. Display changes move the panel.
    connect(&m_platform.displays, &Displays::configurationChanged, this, &AppDelegate::reposition);

    // 8. Menu tracking.
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            m_model->refreshPermissions();
    });

    // 9. The keyboard monitors (the local one is the panel's key handler).
    installKeyboardMonitor();

    // 10. The hot-key handler.
    connect(&m_platform.hotKeys, &HotKeys::pressed, m_controller.get(), &PanelController::hotKeyPressed);

    // 11.
    configureShortcut();

    // 12. The login item's first-launch rule.
    m_model->loginItem().configureInitialLaunch();

    // 13.
    m_model->refreshPermissions();

    // 14. The closed panel now covers the notch.
    reposition();
    m_panel->orderFront();

    // 15.
    m_controller->startPointerTimer();

    // 16.
    if (!m_model->onboarding().completed())
        welcome(false);
}

void AppDelegate::terminate()
{
    if (!m_launched)
        return;
    m_launched = false;
    m_trackToast->hide();
    // A recording still running is finished and saved, not cut off.
    m_model->screenCapture().finishBeforeQuit();
    m_controller->stopPointerTimer();
    m_model->stopHeartbeat();
    m_controller->unregisterShortcut();
    disconnect(&m_platform.hotKeys, nullptr, m_controller.get(), nullptr);
    removeKeyboardMonitor();
    m_panel->keyHandler = nullptr;
    disconnect(&m_platform.displays, nullptr, this, nullptr);
    disconnect(&m_platform.statusBar, nullptr, this, nullptr);
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
    m_openMenus.clear();
    m_editMenu.uninstall();
    // Other applications' items are theirs again.
    disconnect(&m_model->menuApps(), nullptr, this, nullptr);
    m_model->menuApps().shutdown();
    m_platform.statusBar.hide();
}

void AppDelegate::reopen()
{
    expand(std::nullopt, false);
}

void AppDelegate::connectModel()
{
    Model* model = m_model.get();
    connect(model, &Model::resize, this, &AppDelegate::reposition);
    connect(model, &Model::applyPreferences, this, &AppDelegate::configureShortcut);
    connect(model, &Model::show, this, [this](std::optional<Page> page) { expand(page, false); });
    connect(model, &Model::close, this, &AppDelegate::collapse);
    connect(model, &Model::startWelcome, this, [this] { welcome(true); });
    connect(model, &Model::captureVisibility, this, [this](bool hidden) {
        if (hidden) {
            collapse();
            m_panel->orderOut();
        } else {
            m_panel->orderFront();
        }
    });
    connect(model, &Model::accessibilityChanged, this, [this] {
        removeKeyboardMonitor();
        installKeyboardMonitor();
    });
}

void AppDelegate::installKeyboardMonitor()
{
    KeyMonitor& monitor = m_platform.keyMonitor;
    connect(&monitor, &KeyMonitor::keyDown, m_controller.get(), &PanelController::handleKeyDown);
    connect(&monitor, &KeyMonitor::modifiersChanged, m_controller.get(), &PanelController::handleModifiers);
    monitor.start();
}

void AppDelegate::removeKeyboardMonitor()
{
    m_platform.keyMonitor.stop();
    disconnect(&m_platform.keyMonitor, nullptr, m_controller.get(), nullptr);
}

bool AppDelegate::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if ((type == QEvent::Show || type == QEvent::Hide) && watched->isWidgetType()) {
        const auto* widget = static_cast<QWidget*>(watched);
        if (widget->windowType() == Qt::Popup) {
            if (type == QEvent::Show && !m_openMenus.contains(watched)) {
                m_openMenus.insert(watched);
                m_controller->menuBegan();
            } else if (type == QEvent::Hide && m_openMenus.remove(watched)) {
                m_controller->menuEnded();
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

void AppDelegate::expand(std::optional<Page> page, bool fromHover)
{
    if (m_controller)
        m_controller->expand(page, fromHover);
}

void AppDelegate::collapse()
{
    if (m_controller)
        m_controller->collapse();
}

void AppDelegate::toggle()
{
    if (m_controller)
        m_controller->toggle();
}

void AppDelegate::pollPointer()
{
    if (m_controller)
        m_controller->pollPointer();
}

void AppDelegate::reposition()
{
    if (m_controller)
        m_controller->reposition();
}

void AppDelegate::configureShortcut()
{
    if (m_controller)
        m_controller->configureShortcut();
}

void AppDelegate::welcome(bool replay)
{
    if (m_controller)
        m_controller->welcome(replay);
}
