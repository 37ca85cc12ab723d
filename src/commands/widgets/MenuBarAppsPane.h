#pragma once

#include "platform/TrayItems.h"

#include <QWidget>

class MenuBarApps;
class QPushButton;
class QVBoxLayout;
struct MenuBarEntry;

// The menu-bar apps page: one button per chosen entry that opens the item's own menu, which
// shows here as a Brenlow menu.
class MenuBarAppsPane : public QWidget
{
    Q_OBJECT
public:
    explicit MenuBarAppsPane(MenuBarApps& apps, QWidget* parent = nullptr);

    QPushButton* refreshButton() const { return m_refresh; }
    QList<QPushButton*> entryButtons() const { return m_buttons; }

    static QString emptyText();

private:
    void rebuild();
    void showMenu(const MenuBarEntry& entry, const QList<TrayMenuEntry>& menu);

    MenuBarApps& m_apps;
    QPushButton* m_refresh;
    QVBoxLayout* m_list;
    QList<QPushButton*> m_buttons;
    QWidget* m_empty;
};
