#pragma once

#include "shell/HeaderButtons.h"

#include <QMap>
#include <QWidget>

class Model;
class QLabel;
class QMenu;
class QToolButton;
class SymbolButton;

// The page's title and headline, then the header buttons and the "…" menu.
class ButtonRow : public QWidget
{
    Q_OBJECT
public:
    explicit ButtonRow(Model& model, QWidget* parent = nullptr);

    // The menu-bar integration switches its button on and off.
    void setMenuAppsEnabled(bool enabled);
    SymbolButton* button(HeaderButtons::Action action) const { return m_buttons.value(action); }
    QList<SymbolButton*> visibleButtons() const;
    QMenu* menu() const { return m_menu; }
    QString title() const;
    QString headline() const;

Q_SIGNALS:
    // Pressed "Menüleisten-Apps"; the integration decides what opens.
    void menuAppsRequested();

private:
    void run(HeaderButtons::Action action);
    void sync();

    Model& m_model;
    QLabel* m_title;
    QLabel* m_headline;
    QMap<HeaderButtons::Action, SymbolButton*> m_buttons;
    QToolButton* m_more;
    QMenu* m_menu;
};
