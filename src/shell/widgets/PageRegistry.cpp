#include "shell/widgets/PageRegistry.h"

#include <algorithm>

void PageRegistry::addPage(Page page, Factory make)
{
    m_pages.insert(page, std::move(make));
}

void PageRegistry::addMiniOverview(Factory make)
{
    m_mini = std::move(make);
}

void PageRegistry::addSettings(const QString& section, int order, Factory make)
{
    QList<Piece>& pieces = m_settings[section];
    pieces.append(Piece{order, std::move(make)});
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const Piece& a, const Piece& b) { return a.order < b.order; });
}

void PageRegistry::addHeaderItem(HeaderPlace place, Factory make)
{
    m_header[place].append(std::move(make));
}

QWidget* PageRegistry::makePage(Page page) const
{
    const auto found = m_pages.constFind(page);
    return found != m_pages.cend() ? (*found)() : nullptr;
}

QWidget* PageRegistry::makeMiniOverview() const
{
    return m_mini ? m_mini() : nullptr;
}

QList<QWidget*> PageRegistry::makeSettings(const QString& section) const
{
    QList<QWidget*> widgets;
    for (const Piece& piece : m_settings.value(section))
        widgets.append(piece.make());
    return widgets;
}

QList<QWidget*> PageRegistry::makeHeaderItems(HeaderPlace place) const
{
    QList<QWidget*> widgets;
    for (const Factory& make : m_header.value(place))
        widgets.append(make());
    return widgets;
}
