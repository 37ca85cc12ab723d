#include "platform/linux/LinuxSessionEvents.h"

#include <QDBusConnection>

LinuxSessionEvents::LinuxSessionEvents(QObject* parent) : SessionEvents(parent)
{
    // Without a service name: naming one makes Qt look its owner up with a blocking call.
    QDBusConnection::systemBus().connect(QString(), QStringLiteral("/org/freedesktop/login1"),
                                         QStringLiteral("org.freedesktop.login1.Manager"),
                                         QStringLiteral("PrepareForSleep"), this,
                                         SLOT(prepareForSleep(bool)));
    for (const QString& path :
         {QStringLiteral("/org/freedesktop/ScreenSaver"), QStringLiteral("/ScreenSaver")})
        QDBusConnection::sessionBus().connect(QString(), path, QStringLiteral("org.freedesktop.ScreenSaver"),
                                              QStringLiteral("ActiveChanged"), this,
                                              SLOT(screenSaverActive(bool)));
}

void LinuxSessionEvents::prepareForSleep(bool sleeping)
{
    if (sleeping)
        Q_EMIT willSleep();
}

void LinuxSessionEvents::screenSaverActive(bool active)
{
    if (active)
        Q_EMIT screenLocked();
}
