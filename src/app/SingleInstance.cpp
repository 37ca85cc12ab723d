#include "app/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

SingleInstance::SingleInstance(QObject* parent) : QObject(parent) {}

bool SingleInstance::claim()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return true;
    const QString service = QString::fromLatin1(serviceName);
    const QString path = QString::fromLatin1(objectPath);
    bus.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
    if (bus.registerService(service))
        return true;
    bus.unregisterObject(path);
    // The name belongs to a live process: the bus releases it when its owner dies.
    const QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Reopen"));
    bus.call(call, QDBus::Block, 2000);
    return false;
}

void SingleInstance::Reopen()
{
    if (onReopen)
        onReopen();
}
