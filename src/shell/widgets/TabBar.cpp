#include "shell/widgets/TabBar.h"

#include "model/PanelState.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolButton.h"

#include <QHBoxLayout>
#include <QPainter>

TabBar::TabBar(PanelState& panel, QWidget* parent) : QWidget(parent), m_panel(panel)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4, 3, 4, 3);
    row->setSpacing(2);
    for (Page page : Pages::tabs()) {
        auto* tab = new SymbolButton(Pages::tabSymbol(page), Pages::title(page), 26);
        tab->setCheckable(true);
        tab->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        tab->setMinimumWidth(26);
        tab->setMaximumWidth(QWIDGETSIZE_MAX);
        m_tabs.insert(page, tab);
        row->addWidget(tab);
        connect(tab, &SymbolButton::clicked, this, [this, page] {
            m_panel.setPage(page);
            sync();
        });
    }
    connect(&panel, &PanelState::pageChanged, this, &TabBar::sync);
    sync();
}

std::optional<Page> TabBar::current() const
{
    for (auto it = m_tabs.cbegin(); it != m_tabs.cend(); ++it) {
        if (it.value()->isChecked())
            return it.key();
    }
    return std::nullopt;
}

void TabBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(PanelTheme::card());
    painter.drawRoundedRect(QRectF(rect()), height() / 2.0, height() / 2.0);
}

void TabBar::sync()
{
    for (auto it = m_tabs.cbegin(); it != m_tabs.cend(); ++it)
        it.value()->setChecked(it.key() == m_panel.page());
}
