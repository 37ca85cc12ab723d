#pragma once

#include <QList>
#include <QString>

#include <optional>

// The panel's pages in declaration order; the raw value is the German title.
enum class Page {
    menuApps,
    search,
    notes,
    workspaces,
    home,
    shelf,
    clipboard,
    commands,
    events,
    settings,
    weather,
    capture,
    onboarding,
};

namespace Pages {

QList<Page> all();
QString title(Page page);
std::optional<Page> fromTitle(const QString& title);
// The headline above the page; the commands page shows the target application's name.
QString headline(Page page, const QString& commandApp);
// Position in the tab bar (1-based) or nothing for pages reached otherwise.
std::optional<int> tabPosition(Page page);
// Symbol name of the tab, empty for pages without a tab.
QString tabSymbol(Page page);
// The seven tab pages in tab order.
QList<Page> tabs();

} // namespace Pages
