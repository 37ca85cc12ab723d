#include "platform/linux/SniWatcher.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>

SniWatcher::SniWatcher(QObject* parent) : QObject(parent), m_owners(new QDBusServiceWatcher(this))
{
    m_owners->setConnection(QDBusConnection::sessionBus());
    m_owners->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(m_owners, &QDBusServiceWatcher::serviceUnregistered, this, &SniWatcher::serviceGone);
}

void SniWatcher::RegisterStatusNotifierItem(const QString& service)
{
    // The argument is a bus name, or an object path on the caller's own connection.
    const bool isPath = service.startsWith(u'/');
    const QString owner = isPath ? message().service() : service;
    const QString item = isPath ? owner + service : service + QStringLiteral("/StatusNotifierItem");
    if (owner.isEmpty() || m_items.contains(item))
        return;
    m_items.append(item);
    m_owners->addWatchedService(owner);
    Q_EMIT StatusNotifierItemRegistered(item);
}

void SniWatcher::RegisterStatusNotifierHost(const QString& service)
{
    Q_UNUSED(service)
    Q_EMIT StatusNotifierHostRegistered();
}

void SniWatcher::serviceGone(const QString& service)
{
    m_owners->removeWatchedService(service);
    const QString prefix = service + u'/';
    for (qsizetype i = m_items.size() - 1; i >= 0; --i) {
        if (m_items.at(i).startsWith(prefix)) {
            const QString item = m_items.takeAt(i);
            Q_EMIT StatusNotifierItemUnregistered(item);
        }
    }
}
