#include "model/Page.h"

#include <algorithm>

namespace {

struct PageInfo
{
    Page page;
    const char16_t* title;
    const char16_t* headline;
    int tab;
    const char16_t* symbol;
};

constexpr PageInfo pageTable[] = {
    {Page::menuApps, u"Menüleisten-Apps", u"Deine Menüleisten-Apps", 0, u""},
    {Page::search, u"Suche", u"Auf deinem Mac suchen", 2, u"magnifyingglass"},
    {Page::notes, u"Notizen", u"Schnellnotizen", 5, u"note.text"},
    {Page::workspaces, u"Bereiche", u"Deine Arbeitsbereiche", 6, u"square.stack.3d.up"},
    {Page::home, u"Übersicht", u"Alles an seinem Platz.", 1, u"square.grid.2x2"},
    {Page::shelf, u"Ablage", u"Kurz hier ablegen.", 3, u"tray"},
    {Page::clipboard, u"Verlauf", u"Schon kopiert.", 4, u"doc.on.clipboard"},
    {Page::commands, u"Befehle", u"", 7, u"command"},
    {Page::events, u"Aktivität", u"Nichts verpassen.", 0, u""},
    {Page::settings, u"Einstellungen", u"Mach’s zu deinem.", 0, u""},
    {Page::weather, u"Wetter", u"Dein Ort. Dein Wetter.", 0, u""},
    {Page::capture, u"Aufnahme", u"Festhalten und teilen.", 0, u""},
    {Page::onboarding, u"Einführung", u"Willkommen bei Brenlow", 0, u""},
};

const PageInfo& info(Page page)
{
    return pageTable[int(page)];
}

} // namespace

namespace Pages {

QList<Page> all()
{
    QList<Page> pages;
    for (const PageInfo& entry : pageTable)
        pages.append(entry.page);
    return pages;
}

QString title(Page page)
{
    return QString::fromUtf16(info(page).title);
}

std::optional<Page> fromTitle(const QString& title)
{
    for (const PageInfo& entry : pageTable) {
        if (title == QString::fromUtf16(entry.title))
            return entry.page;
    }
    return std::nullopt;
}

QString headline(Page page, const QString& commandApp)
{
    if (page == Page::commands)
        return commandApp;
    return QString::fromUtf16(info(page).headline);
}

std::optional<int> tabPosition(Page page)
{
    const int tab = info(page).tab;
    if (tab == 0)
        return std::nullopt;
    return tab;
}

QString tabSymbol(Page page)
{
    return QString::fromUtf16(info(page).symbol);
}

QList<Page> tabs()
{
    QList<Page> pages;
    for (const PageInfo& entry : pageTable) {
        if (entry.tab != 0)
            pages.append(entry.page);
    }
    std::sort(pages.begin(), pages.end(), [](Page a, Page b) { return info(a).tab < info(b).tab; });
    return pages;
}

} // namespace Pages
