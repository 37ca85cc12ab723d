#pragma once

#include "platform/StatusBar.h"

class QAction;
class QMenu;
class QSystemTrayIcon;
class SniHost;

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

    // The group's arrow and separator are two tray icons of their own. A tray has no lengths and
    // no positions, so nothing can be pushed off screen here.
    void showGroupItems(bool on) override;
    bool groupItemsShown() const override { return m_arrow != nullptr; }
    void setSeparatorLength(double length) override { m_separatorLength = length; }
    double separatorLength() const override { return m_separatorLength; }
    std::optional<double> separatorLeftEdge() const override { return std::nullopt; }
    bool supportsHiding() const override { return false; }

    void startHost() override;
    void stopHost() override;
    QList<TrayItem> trayItems() override;
    bool activateItem(const TrayItem& item) override;
    std::optional<QList<TrayMenuEntry>> itemMenu(const TrayItem& item) override;
    bool clickMenuEntry(const TrayItem& item, int entryId) override;

    SniHost& host() const { return *m_host; }

private:
    QSystemTrayIcon* m_icon = nullptr;
    QMenu* m_menu = nullptr;
    QSystemTrayIcon* m_arrow = nullptr;
    QSystemTrayIcon* m_separator = nullptr;
    double m_separatorLength = 0;
    SniHost* m_host;
    QAction* m_stop = nullptr;
    QString m_stopTitle;
    bool m_stopVisible = false;
};
