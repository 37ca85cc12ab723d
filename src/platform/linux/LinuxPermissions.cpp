#include "platform/linux/LinuxPermissions.h"

#include "common/Log.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace {
const QString a11yService = QStringLiteral("org.a11y.Bus");
const QString a11yPath = QStringLiteral("/org/a11y/bus");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString statusInterface = QStringLiteral("org.a11y.Status");
const QString enabledProperty = QStringLiteral("IsEnabled");
constexpr int probeTimeoutMs = 500;

QDBusMessage isEnabledQuery()
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(a11yService, a11yPath, propertiesInterface, QStringLiteral("Get"));
    message << statusInterface << enabledProperty;
    return message;
}
} // namespace

LinuxPermissions::LinuxPermissions() : m_trusted(queryAccessibilityNow()) {}

bool LinuxPermissions::queryAccessibilityNow()
{
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(isEnabledQuery(), QDBus::Block, probeTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return false;
    return reply.arguments().constFirst().value<QDBusVariant>().variant().toBool();
}

bool LinuxPermissions::accessibilityTrusted(bool prompt) const
{
    refreshAsync(prompt);
    return m_trusted;
}

bool LinuxPermissions::screenCaptureAllowed() const
{
    return x11DisplayAvailable();
}

void LinuxPermissions::refreshAsync(bool enable) const
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    if (enable) {
        // Asking for trust switches the desktop's accessibility bus on, as its settings switch would.
        QDBusMessage set =
            QDBusMessage::createMethodCall(a11yService, a11yPath, propertiesInterface, QStringLiteral("Set"));
        set << statusInterface << enabledProperty << QVariant::fromValue(QDBusVariant(true));
        bus.asyncCall(set);
    }
    auto* watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(isEnabledQuery()), const_cast<LinuxPermissions*>(this));
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (!reply.isError())
            m_trusted = reply.value().variant().toBool();
        else
            qCDebug(lcPlatform) << "accessibility state not read:" << reply.error().message();
        call->deleteLater();
    });
}
