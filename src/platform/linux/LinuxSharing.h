#pragma once

#include "platform/Sharing.h"

#include <QDBusConnection>

// KDE Connect's share plugin over D-Bus: files go to the first paired device that is reachable
// now. Without the daemon or such a device there is nothing to share with.
class LinuxSharing final : public Sharing
{
public:
    explicit LinuxSharing(QDBusConnection bus = QDBusConnection::sessionBus());

    void share(const QList<QUrl>& files, QObject* context, Answer answer) override;

    static constexpr const char* service = "org.kde.kdeconnect";

private:
    void sendTo(const QString& device, const QList<QUrl>& files, QObject* context, Answer answer);

    QDBusConnection m_bus;
};
