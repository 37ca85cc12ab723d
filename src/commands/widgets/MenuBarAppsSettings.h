#pragma once

#include <QWidget>

class MenuBarApps;
class QLabel;
class QPushButton;
class QVBoxLayout;
class ToggleRow;

// The "Menüleiste" settings: the two switches, the group's instructions and buttons, a selection
// and a notices switch per scanned entry with its counter, and the integration's message.
class MenuBarAppsSettings : public QWidget
{
    Q_OBJECT
public:
    explicit MenuBarAppsSettings(MenuBarApps& apps, QWidget* parent = nullptr);

    ToggleRow* enabledRow() const { return m_enabled; }
    ToggleRow* notificationsRow() const { return m_notifications; }
    QPushButton* adoptButton() const { return m_adopt; }
    QPushButton* showButton() const { return m_show; }
    QPushButton* scanButton() const { return m_scan; }
    QLabel* messageLabel() const { return m_message; }
    // Per entry: its selection row and its notices row.
    QList<ToggleRow*> entryRows() const { return m_rows; }

private:
    void sync();
    void rebuildEntries();

    MenuBarApps& m_apps;
    ToggleRow* m_enabled;
    ToggleRow* m_notifications;
    QPushButton* m_adopt;
    QPushButton* m_show;
    QPushButton* m_scan;
    QLabel* m_message;
    QVBoxLayout* m_entries;
    QList<ToggleRow*> m_rows;
};
