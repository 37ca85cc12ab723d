#include "shell/widgets/FullLayout.h"

#include "clipboard/widgets/HistoryPage.h"
#include "focus/widgets/ActivityPage.h"
#include "model/Model.h"
#include "overview/widgets/OverviewPage.h"
#include "productivity/widgets/ShelfPage.h"
#include "shell/widgets/ButtonRow.h"
#include "shell/widgets/PlaceholderPage.h"
#include "shell/widgets/SettingsPane.h"
#include "shell/widgets/StatusLineView.h"
#include "shell/widgets/TabBar.h"
#include "ui/LayoutRefresh.h"

#include <QVBoxLayout>

FullLayout::FullLayout(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_buttons(new ButtonRow(model)), m_tabs(new TabBar(model)),
      m_pageArea(new QVBoxLayout), m_status(new StatusLineView(model))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_buttons);
    column->addWidget(m_tabs);
    m_pageArea->setContentsMargins(0, 2, 0, 0);
    m_pageArea->setSpacing(0);
    column->addLayout(m_pageArea, 1);
    column->addWidget(m_status);
    connect(&model, &Model::pageChanged, this, &FullLayout::showPage);
    showPage();
}

QWidget* FullLayout::page(Page page)
{
    if (QWidget* built = m_pages.value(page))
        return built;
    QWidget* built = build(page);
    built->setParent(this);
    built->hide();
    // Every page sits in the same area; only the current one is visible, so a tall settings
    // column never stretches the overview's frame.
    m_pageArea->addWidget(built);
    m_pages.insert(page, built);
    return built;
}

QWidget* FullLayout::build(Page page)
{
    switch (page) {
    case Page::home:
        return new OverviewPage(m_model);
    case Page::settings:
        return new SettingsPane(m_model);
    case Page::events:
        return new ActivityPage(m_model);
    case Page::shelf:
        return new ShelfPage(m_model);
    case Page::clipboard:
        return new HistoryPage(m_model);
    case Page::commands: {
        auto* placeholder = new PlaceholderPage(page, m_model.commandApp());
        connect(&m_model, &Model::commandAppChanged, placeholder,
                [this, placeholder] { placeholder->setHeadline(m_model.commandApp()); });
        return placeholder;
    }
    default:
        // Pages whose content arrives with their own stores show what they are until then.
        return new PlaceholderPage(page, Pages::headline(page, m_model.commandApp()));
    }
}

void FullLayout::showPage()
{
    QWidget* next = page(m_model.page());
    if (next == m_current)
        return;
    if (m_current)
        m_current->hide();
    m_current = next;
    m_current->show();
    LayoutRefresh::refresh(this);
}
