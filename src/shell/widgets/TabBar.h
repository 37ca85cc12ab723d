#pragma once

#include "model/Page.h"

#include <QMap>
#include <QWidget>

class PanelState;
class SymbolButton;

// The seven tabs in their order; the current page's tab is marked.
class TabBar : public QWidget
{
    Q_OBJECT
public:
    explicit TabBar(PanelState& panel, QWidget* parent = nullptr);

    SymbolButton* tab(Page page) const { return m_tabs.value(page); }
    // The marked tab, or nothing on a page without one.
    std::optional<Page> current() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void sync();

    PanelState& m_panel;
    QMap<Page, SymbolButton*> m_tabs;
};
