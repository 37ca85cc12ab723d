#pragma once

#include "platform/StatusBar.h"

class QAction;
class QMenu;
class QSystemTrayIcon;

// Our tray icon: a click toggles the panel, its menu quits. Desktops without a tray show nothing.
class LinuxStatusBar final : public StatusBar
{
    Q_OBJECT
public:
    explicit LinuxStatusBar(QObject* parent = nullptr);
    ~LinuxStatusBar() override;

    void show(const QString& symbol, const QString& title) override;
    void hide() override;
    void setStopEntry(const QString& title, bool visible) override;

private:
    QSystemTrayIcon* m_icon = nullptr;
    QMenu* m_menu = nullptr;
    QAction* m_stop = nullptr;
    QString m_stopTitle;
    bool m_stopVisible = false;
};
