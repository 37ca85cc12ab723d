#pragma once

#include "model/Page.h"

#include <QMap>
#include <QWidget>

class Model;
class SymbolButton;

// The seven tabs in their order; the current page's tab is marked.
class TabBar : public QWidget
{
    Q_OBJECT
public:
    explicit TabBar(Model& model, QWidget* parent = nullptr);

    SymbolButton* tab(Page page) const { return m_tabs.value(page); }
    // The marked tab, or nothing on a page without one.
    std::optional<Page> current() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void sync();

    Model& m_model;
    QMap<Page, SymbolButton*> m_tabs;
};
