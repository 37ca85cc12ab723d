#pragma once

#include "model/Page.h"

#include <QMap>
#include <QWidget>

class ButtonRow;
class Model;
class PageRegistry;
class QVBoxLayout;
class StatusLineView;
class TabBar;

// The open panel below the header: buttons, tabs, the current page and the status line.
class FullLayout : public QWidget
{
    Q_OBJECT
public:
    FullLayout(Model& model, const PageRegistry& pages, QWidget* parent = nullptr);

    ButtonRow* buttonRow() const { return m_buttons; }
    TabBar* tabBar() const { return m_tabs; }
    StatusLineView* statusLine() const { return m_status; }
    // The widget of a page, built the first time it is needed.
    QWidget* page(Page page);
    QWidget* currentPage() const { return m_current; }

private:
    QWidget* build(Page page);
    void showPage();

    Model& m_model;
    const PageRegistry& m_registry;
    ButtonRow* m_buttons;
    TabBar* m_tabs;
    QVBoxLayout* m_pageArea;
    StatusLineView* m_status;
    QMap<Page, QWidget*> m_pages;
    QWidget* m_current = nullptr;
};
