#include "shell/widgets/FullLayout.h"

#include "commands/MenuCommands.h"
#include "common/StatusMessage.h"
#include "model/Model.h"
#include "model/PanelState.h"
#include "shell/widgets/ButtonRow.h"
#include "shell/widgets/PageRegistry.h"
#include "shell/widgets/PlaceholderPage.h"
#include "shell/widgets/StatusLineView.h"
#include "shell/widgets/TabBar.h"
#include "ui/LayoutRefresh.h"

#include <QVBoxLayout>

FullLayout::FullLayout(Model& model, const PageRegistry& pages, QWidget* parent)
    : QWidget(parent), m_model(model), m_registry(pages), m_buttons(new ButtonRow(model)),
      m_tabs(new TabBar(model.panel())), m_pageArea(new QVBoxLayout),
      m_status(new StatusLineView(model.statusMessage(), model.preferences()))
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
    connect(&model.panel(), &PanelState::pageChanged, this, &FullLayout::showPage);
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
    if (QWidget* registered = m_registry.makePage(page))
        return registered;
    // A page whose area is not built yet shows what it will be.
    const MenuCommands& commands = m_model.menuCommands();
    auto* placeholder = new PlaceholderPage(page, Pages::headline(page, commands.commandApp()));
    if (page == Page::commands) {
        connect(&commands, &MenuCommands::commandAppChanged, placeholder,
                [placeholder, &commands] { placeholder->setHeadline(commands.commandApp()); });
    }
    return placeholder;
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
