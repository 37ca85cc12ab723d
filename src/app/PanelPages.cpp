#include "app/PanelPages.h"

#include "capture/ScreenCapture.h"
#include "capture/widgets/CapturePage.h"
#include "clipboard/widgets/HistoryPage.h"
#include "clipboard/widgets/HistorySettings.h"
#include "commands/MenuCommands.h"
#include "commands/widgets/CommandsPage.h"
#include "commands/widgets/MenuBarAppsPane.h"
#include "commands/widgets/MenuBarAppsSettings.h"
#include "devices/widgets/MicrophoneDot.h"
#include "focus/widgets/ActivityPage.h"
#include "focus/widgets/FocusSettings.h"
#include "media/widgets/MediaSettings.h"
#include "model/Model.h"
#include "overview/widgets/MiniOverview.h"
#include "overview/widgets/OverviewPage.h"
#include "productivity/DeviceSearch.h"
#include "productivity/ShelfTexts.h"
#include "productivity/widgets/NotesPage.h"
#include "productivity/widgets/SearchPage.h"
#include "productivity/widgets/ShelfPage.h"
#include "productivity/widgets/WorkspacesPage.h"
#include "setup/widgets/LoginItemSettings.h"
#include "setup/widgets/OnboardingPane.h"
#include "setup/widgets/PermissionSettings.h"
#include "shell/widgets/ControlSettings.h"
#include "shell/widgets/PageRegistry.h"
#include "shell/widgets/SettingsPane.h"
#include "shell/widgets/ViewSettings.h"
#include "weather/widgets/WeatherChooser.h"
#include "weather/widgets/WeatherHeader.h"
#include "weather/widgets/WeatherPage.h"
#include "weather/widgets/WeatherSettings.h"

void registerPanelPages(PageRegistry& pages, Model& model)
{
    Model* m = &model;
    const Platform& platform = model.platform();

    pages.addPage(Page::home, [m] {
        return new OverviewPage(m->nowPlaying(), m->focus(), m->deviceStatus(), m->preferences());
    });
    pages.addMiniOverview([m] {
        return new MiniOverview(m->nowPlaying(), m->focus(), m->deviceStatus(), m->panel(),
                                m->productivity());
    });
    pages.addPage(Page::shelf, [m] {
        auto* page = new ShelfPage(m->shelf());
        QObject::connect(page, &ShelfPage::chooseRequested, m, &Model::chooseFiles);
        QObject::connect(page, &ShelfPage::shareRequested, m, &Model::airDrop);
        QObject::connect(page, &ShelfPage::openRequested, m, &Model::openItem);
        return page;
    });
    pages.addPage(Page::search, [m] {
        auto* page = new SearchPage(m->deviceSearch());
        QObject::connect(page, &SearchPage::openRequested, m, &Model::openItem);
        QObject::connect(page, &SearchPage::revealRequested, m, &Model::revealItem);
        QObject::connect(page, &SearchPage::addRequested, m, [m](const QUrl& url) {
            m->addFiles({url});
            m->setMessage(ShelfTexts::addedToShelf());
        });
        return page;
    });
    pages.addPage(Page::notes, [m] { return new NotesPage(m->productivity()); });
    pages.addPage(Page::workspaces, [m] {
        auto* page = new WorkspacesPage(m->productivity(), m->panel());
        QObject::connect(page, &WorkspacesPage::chooseRequested, m, &Model::chooseWorkspaceItems);
        QObject::connect(page, &WorkspacesPage::launchRequested, m, &Model::launchWorkspace);
        return page;
    });
    pages.addPage(Page::clipboard, [m, &platform] {
        return new HistoryPage(m->clipboardHistory(), m->productivity(), platform.clock, platform.scheduler);
    });
    pages.addPage(Page::capture, [m, &platform] {
        auto* page = new CapturePage(m->screenCapture(), platform.cameraFeed);
        QObject::connect(page, &CapturePage::settingsRequested, m, &Model::openPermissionSettings);
        return page;
    });
    pages.addPage(Page::events, [m] { return new ActivityPage(m->activity()); });
    pages.addPage(Page::settings, [m, &pages] { return new SettingsPane(m->panel(), pages); });
    pages.addPage(Page::onboarding, [m] {
        auto* pane =
            new OnboardingPane(m->onboarding(), m->permissions(), m->preferences(), m->statusMessage());
        QObject::connect(pane, &OnboardingPane::finishRequested, m, &Model::finishWelcome);
        QObject::connect(pane, &OnboardingPane::shown, m, &Model::refreshPermissions);
        QObject::connect(pane, &OnboardingPane::accessibilityRequested, m, &Model::accessibility);
        QObject::connect(pane, &OnboardingPane::revealAppRequested, m, &Model::revealCurrentApp);
        QObject::connect(pane, &OnboardingPane::settingsRequested, m, &Model::openPermissionSettings);
        QObject::connect(pane, &OnboardingPane::screenCaptureRequested, m, &Model::requestScreenCapture);
        QObject::connect(pane, &OnboardingPane::recheckRequested, m, &Model::refreshPermissions);
        QObject::connect(pane, &OnboardingPane::restartRequested, m, &Model::restartApp);
        pane->setWeatherChooser([m] { return new WeatherChooser(m->weather()); });
        return pane;
    });

    // Menu commands and the menu-bar apps.
    pages.addPage(Page::commands, [m] {
        auto* page = new CommandsPage(m->menuCommands(), m->permissions());
        QObject::connect(page, &CommandsPage::executeRequested, m, &Model::executeCommand);
        QObject::connect(page, &CommandsPage::reloadRequested, m,
                         [m] { m->readCommands(m->platform().workspace.frontmostApp()); });
        QObject::connect(page, &CommandsPage::accessibilityRequested, m, &Model::accessibility);
        return page;
    });
    pages.addPage(Page::menuApps, [m] { return new MenuBarAppsPane(m->menuApps()); });
    pages.addSettings(QStringLiteral("Menüleiste"), 10,
                      [m] { return new MenuBarAppsSettings(m->menuApps()); });

    pages.addSettings(QStringLiteral("Ansicht"), 10, [m] { return new ViewSettings(*m); });
    pages.addSettings(QStringLiteral("Bedienung"), 30,
                      [m] { return new ControlSettings(m->preferences(), m->panel()); });
    pages.addSettings(QStringLiteral("Fokus & Daten"), 10,
                      [m] { return new FocusSettings(m->focus(), m->preferences()); });
    pages.addSettings(QStringLiteral("Fokus & Daten"), 20,
                      [m] { return new HistorySettings(m->clipboardHistory()); });

    // Permissions and start at login.
    pages.addSettings(QStringLiteral("Verbindungen"), 30, [m] {
        auto* rows = new PermissionSettings(m->permissions());
        QObject::connect(rows, &PermissionSettings::accessibilityRequested, m, &Model::accessibility);
        QObject::connect(rows, &PermissionSettings::recheckRequested, m, &Model::refreshPermissions);
        QObject::connect(rows, &PermissionSettings::restartRequested, m, &Model::restartApp);
        return rows;
    });
    pages.addSettings(QStringLiteral("Verbindungen"), 40, [m] {
        auto* row = new LoginItemSettings(m->loginItem());
        QObject::connect(row, &LoginItemSettings::openSettingsRequested, m, &Model::openLoginItemSettings);
        return row;
    });
    pages.addSettings(QStringLiteral("Verbindungen"), 10, [m] {
        return new MediaSettings(m->nowPlaying(), m->trackToastSettings(),
                                 [m] { Q_EMIT m->previewTrackToast(); });
    });

    pages.addPage(Page::weather, [m, &platform] {
        return new WeatherPage(m->weather(), platform.location, m->statusMessage());
    });
    pages.addSettings(QStringLiteral("Verbindungen"), 20,
                      [m] { return new WeatherSettings(m->weather(), m->panel()); });
    pages.addHeaderItem(PageRegistry::HeaderPlace::leading,
                        [m] { return new WeatherHeader(m->weather(), m->panel()); });
    pages.addHeaderItem(PageRegistry::HeaderPlace::beforeClock,
                        [m] { return new MicrophoneDot(m->deviceStatus()); });
}
