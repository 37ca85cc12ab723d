#pragma once

#include "commands/MenuBarRules.h"
#include "commands/MenuNoticePolicy.h"
#include "common/SerialQueue.h"

#include <QObject>
#include <QSet>
#include <QUuid>

#include <functional>

class Defaults;
class Displays;
class PermissionStore;
class Scheduler;
class StatusBar;

// The opt-in integration with other applications' status items: Brenlow's arrow and separator,
// the scan of the items on the "Brenlow.menuApps" queue, the user's selection, opening an item's
// own menu, and the unread counters of the items marked for notices.
class MenuBarApps : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(bool notificationsEnabled READ notificationsEnabled WRITE setNotificationsEnabled NOTIFY
                   notificationsEnabledChanged)
    Q_PROPERTY(bool hidden READ hidden NOTIFY hiddenChanged)
    Q_PROPERTY(bool scanning READ scanning NOTIFY scanningChanged)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
public:
    static constexpr double pollInterval = 10.0;
    static constexpr double adoptDelay = 0.3;
    static constexpr double openDelay = 0.25;
    static constexpr double shownSeparatorLength = 12;

    MenuBarApps(Defaults& defaults, StatusBar& statusBar, Displays& displays, Scheduler& scheduler,
                PermissionStore& permissions, QObject* parent = nullptr);
    ~MenuBarApps() override;

    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    bool notificationsEnabled() const { return m_notificationsEnabled; }
    void setNotificationsEnabled(bool enabled);
    const QSet<QString>& selected() const { return m_selected; }
    const QSet<QString>& notificationSelection() const { return m_notificationSelection; }
    const QList<MenuBarEntry>& entries() const { return m_entries; }
    // The selected entries, in entry order.
    QList<MenuBarEntry> chosen() const;
    bool hidden() const { return m_hidden; }
    bool scanning() const { return m_scanning; }
    const QString& message() const { return m_message; }
    const MenuNoticePolicy& noticePolicy() const { return m_noticePolicy; }
    bool monitoring() const { return m_monitor != 0; }
    bool started() const { return m_started; }
    void setStarted(bool started) { m_started = started; }

    void configure();
    void refresh(std::function<void()> completion = {});
    void setSelected(const QString& id, bool on);
    void setNotifications(const QString& id, bool on);
    void toggleGroup();
    void showConfiguration();
    void showGroup();
    void adoptGroup();
    void open(const MenuBarEntry& entry);
    // Runs an entry of an opened item's menu.
    void clickMenuEntry(const MenuBarEntry& entry, int entryId);
    void shutdown();

Q_SIGNALS:
    void enabledChanged();
    void notificationsEnabledChanged();
    void selectionChanged();
    void entriesChanged();
    void hiddenChanged();
    void scanningChanged();
    void messageChanged();
    // A watched counter rose.
    void notification(const MenuBarEntry& entry, int count);
    // The application delegate's slots: show the menu-bar settings; another app's menu opens.
    void openSettings();
    void beforeOpen();
    // An item's own menu was read; the page shows it as a Brenlow menu.
    void menuReady(const MenuBarEntry& entry, const QList<TrayMenuEntry>& menu);

private:
    struct OpenResult
    {
        bool answered = false;
        std::optional<QList<TrayMenuEntry>> menu;
    };
    void setMessage(const QString& message);
    void setHidden(bool hidden);
    void setScanning(bool scanning);
    void storeSet(const QString& key, const QSet<QString>& set);
    void configureMonitoring();
    void scheduleTick();
    void updateCounters();
    void applyScan(const QUuid& generation, const QList<MenuBarEntry>& scanned,
                   std::function<void()> completion);
    void itemsChanged();

    Defaults& m_defaults;
    StatusBar& m_statusBar;
    Displays& m_displays;
    Scheduler& m_scheduler;
    PermissionStore& m_permissions;
    bool m_enabled;
    bool m_notificationsEnabled;
    QSet<QString> m_selected;
    QSet<QString> m_notificationSelection;
    QList<MenuBarEntry> m_entries;
    bool m_hidden = false;
    bool m_scanning = false;
    bool m_rescan = false;
    QString m_message = QStringLiteral("Erst aktivieren, dann die gewünschten Symbole auswählen.");
    MenuNoticePolicy m_noticePolicy;
    quint64 m_monitor = 0;
    QUuid m_generation = QUuid::createUuid();
    bool m_started = false;
    SerialQueue m_queue{QStringLiteral("Brenlow.menuApps")};
};
