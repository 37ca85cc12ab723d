#pragma once

#include "platform/TrayItems.h"

#include <QMutex>
#include <QObject>
#include <QStringList>

#include <optional>

class SniWatcher;

// The StatusNotifierItem host: follows the desktop's org.kde.StatusNotifierWatcher, or becomes
// the watcher when no program owns that name (never taking it from one that does), and reads the
// registered items, their tool tips and their com.canonical.dbusmenu menus. The reads block for
// at most half a second per call and run on a worker thread; the list itself is kept on the main
// thread and copied under a lock.
class SniHost : public QObject
{
    Q_OBJECT
public:
    explicit SniHost(QObject* parent = nullptr);
    ~SniHost() override;

    void start();
    void stop();
    bool running() const { return m_running; }
    // Whether this process is the desktop's watcher.
    bool ownsWatcher() const { return m_watcher != nullptr; }

    QList<TrayItem> items();
    bool activate(const TrayItem& item);
    std::optional<QList<TrayMenuEntry>> menu(const TrayItem& item);
    bool click(const TrayItem& item, int entryId);

    // "bus name/object path" of each registered item.
    QStringList registered() const;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    // Signals of the watcher and of the items, connected by name over D-Bus.
    void itemRegistered(const QString& item);
    void itemUnregistered(const QString& item);
    void itemChanged();

private:
    void setRegistered(QStringList items);
    TrayItem read(const QString& registration);

    SniWatcher* m_watcher = nullptr;
    bool m_running = false;
    QString m_hostName;
    mutable QMutex m_mutex;
    QStringList m_registered;
};
