#pragma once

#include <QDBusContext>
#include <QObject>
#include <QStringList>

class QDBusServiceWatcher;

// org.kde.StatusNotifierWatcher, for desktops where nobody else keeps the list of tray items:
// applications register their items here, and items vanish with their bus names. Qt's own tray
// icons register only when IsStatusNotifierHostRegistered reads true through introspection, which
// exporting the properties provides.
class SniWatcher : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)
public:
    explicit SniWatcher(QObject* parent = nullptr);

    QStringList registeredItems() const { return m_items; }
    bool hostRegistered() const { return true; }
    int protocolVersion() const { return 0; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service);
    void RegisterStatusNotifierHost(const QString& service);

Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString& item);
    void StatusNotifierItemUnregistered(const QString& item);
    void StatusNotifierHostRegistered();

private:
    void serviceGone(const QString& service);

    QStringList m_items;
    QDBusServiceWatcher* m_owners;
};
