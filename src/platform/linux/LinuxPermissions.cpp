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

bool LinuxPermissions::accessibilityTrustedNow() const
{
    m_trusted = queryAccessibilityNow();
    return m_trusted;
}

QString LinuxPermissions::playerBusName(const QString& appId, const QStringList& busNames)
{
    static const QString prefix = QStringLiteral("org.mpris.MediaPlayer2.");
    const QString spotify = prefix + QStringLiteral("spotify");
    if (appId == u"com.spotify.client")
        return busNames.contains(spotify) ? spotify : QString();
    if (appId != u"com.apple.Music")
        return {};
    // Browsers publish a player for every tab with sound; they are not a music app.
    static const QStringList browsers = {
        QStringLiteral("chromium"), QStringLiteral("chrome"),   QStringLiteral("firefox"),
        QStringLiteral("brave"),    QStringLiteral("vivaldi"),  QStringLiteral("opera"),
        QStringLiteral("msedge"),   QStringLiteral("epiphany"), QStringLiteral("plasma-browser-integration")};
    for (const QString& name : busNames) {
        if (!name.startsWith(prefix) || name == spotify)
            continue;
        const QString player = name.mid(prefix.size()).section(QLatin1Char('.'), 0, 0).toLower();
        if (!browsers.contains(player))
            return name;
    }
    return {};
}

AutomationAccess LinuxPermissions::automationAccess(const QString& appId) const
{
    const QDBusMessage list = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
    const QDBusMessage reply = QDBusConnection::sessionBus().call(list, QDBus::Block, probeTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        qCInfo(lcPlatform) << "players on the session bus not listed:" << reply.errorMessage();
        return AutomationAccess::unavailable;
    }
    const QStringList names = reply.arguments().constFirst().toStringList();
    return playerBusName(appId, names).isEmpty() ? AutomationAccess::notRunning : AutomationAccess::allowed;
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
