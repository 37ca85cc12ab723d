#include "app/PanelPages.h"

#include "clipboard/widgets/HistoryPage.h"
#include "clipboard/widgets/HistorySettings.h"
#include "devices/widgets/MicrophoneDot.h"
#include "focus/widgets/ActivityPage.h"
#include "focus/widgets/FocusSettings.h"
#include "model/Model.h"
#include "overview/widgets/MiniOverview.h"
#include "overview/widgets/OverviewPage.h"
#include "productivity/widgets/ShelfPage.h"
#include "productivity/widgets/WorkspacesPage.h"
#include "setup/widgets/OnboardingPane.h"
#include "shell/widgets/ControlSettings.h"
#include "shell/widgets/PageRegistry.h"
#include "shell/widgets/SettingsPane.h"
#include "shell/widgets/ViewSettings.h"
#include "weather/widgets/WeatherHeader.h"
#include "weather/widgets/WeatherChooser.h"
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
    pages.addPage(Page::shelf, [m] { return new ShelfPage(m->shelf()); });
    pages.addPage(Page::workspaces, [m] {
        auto* page = new WorkspacesPage(m->productivity(), m->panel());
        QObject::connect(page, &WorkspacesPage::chooseRequested, m, &Model::chooseWorkspaceItems);
        QObject::connect(page, &WorkspacesPage::launchRequested, m, &Model::launchWorkspace);
        return page;
    });
    pages.addPage(Page::clipboard, [m, &platform] {
        return new HistoryPage(m->clipboardHistory(), m->productivity(), platform.clock, platform.scheduler);
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
        pane->setWeatherChooser([m] { return new WeatherChooser(m->weather()); });
        return pane;
    });

    pages.addSettings(QStringLiteral("Ansicht"), 10, [m] { return new ViewSettings(*m); });
    pages.addSettings(QStringLiteral("Bedienung"), 30,
                      [m] { return new ControlSettings(m->preferences(), m->panel()); });
    pages.addSettings(QStringLiteral("Fokus & Daten"), 10,
                      [m] { return new FocusSettings(m->focus(), m->preferences()); });
    pages.addSettings(QStringLiteral("Fokus & Daten"), 20,
                      [m] { return new HistorySettings(m->clipboardHistory()); });

    pages.addPage(Page::weather, [m, &platform] {
        return new WeatherPage(m->weather(), platform.location, m->statusMessage());
    });
    pages.addSettings(QStringLiteral("Verbindungen"), 20, [m] { return new WeatherSettings(m->weather(), m->panel()); });
    pages.addHeaderItem(PageRegistry::HeaderPlace::leading,
                        [m] { return new WeatherHeader(m->weather(), m->panel()); });
    pages.addHeaderItem(PageRegistry::HeaderPlace::beforeClock,
                        [m] { return new MicrophoneDot(m->deviceStatus()); });
}
