#pragma once

#include "model/Page.h"

#include <QList>
#include <QMap>
#include <QString>

#include <functional>

class QWidget;

// What the areas bring to the panel: the widget of each page, pieces of the settings page and
// of the header row. The application fills it once, in the one place that knows every area; the
// shell only asks it, so a new page is a new folder and one registration line.
class PageRegistry
{
public:
    using Factory = std::function<QWidget*()>;

    // Where a header item sits: at the leading side, or just before the clock.
    enum class HeaderPlace { leading, beforeClock };

    void addPage(Page page, Factory make);
    // The overview in one row, for mini mode.
    void addMiniOverview(Factory make);
    // A piece of a settings section; the pieces of a section stack by ascending `order`.
    void addSettings(const QString& section, int order, Factory make);
    void addHeaderItem(HeaderPlace place, Factory make);

    bool hasPage(Page page) const { return m_pages.contains(page); }
    // A new widget for the page, or nullptr when no area has registered it.
    QWidget* makePage(Page page) const;
    QWidget* makeMiniOverview() const;
    QList<QWidget*> makeSettings(const QString& section) const;
    QList<QWidget*> makeHeaderItems(HeaderPlace place) const;

private:
    struct Piece
    {
        int order;
        Factory make;
    };

    QMap<Page, Factory> m_pages;
    Factory m_mini;
    QMap<QString, QList<Piece>> m_settings;
    QMap<HeaderPlace, QList<Factory>> m_header;
};
