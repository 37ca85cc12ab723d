#include "platform/linux/GeoClueClient.h"

#include "common/Log.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include <cmath>

namespace {

const QString managerPath = QStringLiteral("/org/freedesktop/GeoClue2/Manager");
const QString managerInterface = QStringLiteral("org.freedesktop.GeoClue2.Manager");
const QString clientInterface = QStringLiteral("org.freedesktop.GeoClue2.Client");
const QString locationInterface = QStringLiteral("org.freedesktop.GeoClue2.Location");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

// GeoClue's accuracy levels.
constexpr uint exactAccuracy = 8;
// Start waits while GeoClue waits for the desktop's agent; the bus's own limit is 25 s.
constexpr int callTimeoutMs = 25'000;

QDBusMessage methodCall(const QString& path, const QString& interface, const QString& method)
{
    return QDBusMessage::createMethodCall(QString::fromLatin1(GeoClueClient::service), path, interface,
                                          method);
}

} // namespace

GeoClueClient::GeoClueClient(QDBusConnection bus, QString desktopId, bool locate, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_desktopId(std::move(desktopId)), m_locate(locate)
{}

GeoClueClient::~GeoClueClient()
{
    if (m_path.isEmpty())
        return;
    m_bus.disconnect(QString(), m_path, clientInterface, QStringLiteral("LocationUpdated"), this,
                     SLOT(locationUpdated(QDBusObjectPath, QDBusObjectPath)));
    // Sent without waiting: the replies are of no use to anyone any more.
    if (m_running)
        m_bus.send(methodCall(m_path, clientInterface, QStringLiteral("Stop")));
    QDBusMessage remove = methodCall(managerPath, managerInterface, QStringLiteral("DeleteClient"));
    remove << QVariant::fromValue(QDBusObjectPath(m_path));
    m_bus.send(remove);
}

GeoClueClient::Refusal GeoClueClient::refusal(const QString& errorName)
{
    if (errorName == u"org.freedesktop.DBus.Error.AccessDenied")
        return Refusal::denied;
    static const QStringList absent{
        QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"),
        QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"),
        QStringLiteral("org.freedesktop.DBus.Error.Disconnected"),
        QStringLiteral("org.freedesktop.DBus.Error.NoServer"),
        // GeoClue before 2.5 has no CreateClient.
        QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"),
        QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"),
        QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface"),
    };
    // Spawn.*: the bus knows GeoClue but could not start it.
    if (absent.contains(errorName) || errorName.startsWith(u"org.freedesktop.DBus.Error.Spawn."))
        return Refusal::absent;
    return Refusal::failed;
}

LocationFix GeoClueClient::fix(const QVariantMap& properties)
{
    bool latitudeOk = false;
    bool longitudeOk = false;
    bool accuracyOk = false;
    LocationFix fix;
    fix.latitude = properties.value(QStringLiteral("Latitude")).toDouble(&latitudeOk);
    fix.longitude = properties.value(QStringLiteral("Longitude")).toDouble(&longitudeOk);
    fix.horizontalAccuracy = properties.value(QStringLiteral("Accuracy")).toDouble(&accuracyOk);
    const bool valid = latitudeOk && longitudeOk && accuracyOk && std::abs(fix.latitude) <= 90 &&
                       std::abs(fix.longitude) <= 180 && std::isfinite(fix.horizontalAccuracy) &&
                       fix.horizontalAccuracy >= 0;
    if (!valid)
        fix.horizontalAccuracy = -1;
    return fix;
}

void GeoClueClient::call(const QDBusMessage& message, std::function<void(const QDBusMessage&)> answer)
{
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, callTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answer = std::move(answer)] {
        watcher->deleteLater();
        answer(watcher->reply());
    });
}

void GeoClueClient::start()
{
    // A client of our own rather than the connection's shared one, so that stopping it stops
    // nothing else.
    call(methodCall(managerPath, managerInterface, QStringLiteral("CreateClient")),
         [this](const QDBusMessage& reply) {
             if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
                 refuse(reply);
                 return;
             }
             m_path = reply.arguments().first().value<QDBusObjectPath>().path();
             // GeoClue refuses to start a client that has not said who it is.
             setClientProperty(QStringLiteral("DesktopId"), m_desktopId);
             // Below "exact" GeoClue leaves out the sources it rates exact (GPS, NMEA); the store
             // rounds the position to about a kilometre before it is used.
             setClientProperty(QStringLiteral("RequestedAccuracyLevel"), QVariant::fromValue(exactAccuracy));
             // From any sender: naming GeoClue's bus name would make Qt look its owner up with
             // a blocking call. The location is read from GeoClue itself in any case.
             if (m_locate)
                 m_bus.connect(QString(), m_path, clientInterface, QStringLiteral("LocationUpdated"), this,
                               SLOT(locationUpdated(QDBusObjectPath, QDBusObjectPath)));
             // The bus keeps the order: Start comes after both properties.
             call(methodCall(m_path, clientInterface, QStringLiteral("Start")),
                  [this](const QDBusMessage& started) { startAnswered(started); });
         });
}

void GeoClueClient::setClientProperty(const QString& name, const QVariant& value)
{
    QDBusMessage set = methodCall(m_path, propertiesInterface, QStringLiteral("Set"));
    set << clientInterface << name << QVariant::fromValue(QDBusVariant(value));
    m_bus.send(set);
}

void GeoClueClient::startAnswered(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage) {
        refuse(reply);
        return;
    }
    m_running = true;
    Q_EMIT started();
    if (!m_locate)
        return;
    // A position GeoClue already has is read at once; otherwise its update brings one.
    QDBusMessage get = methodCall(m_path, propertiesInterface, QStringLiteral("Get"));
    get << clientInterface << QStringLiteral("Location");
    call(get, [this](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
            return;
        const auto path = answer.arguments().first().value<QDBusVariant>().variant().value<QDBusObjectPath>();
        if (path.path() != u"/")
            readLocation(path.path());
    });
}

void GeoClueClient::locationUpdated(const QDBusObjectPath&, const QDBusObjectPath& current)
{
    readLocation(current.path());
}

void GeoClueClient::readLocation(const QString& path)
{
    if (m_reading || path.isEmpty())
        return;
    m_reading = true;
    QDBusMessage getAll = methodCall(path, propertiesInterface, QStringLiteral("GetAll"));
    getAll << locationInterface;
    call(getAll, [this](const QDBusMessage& answer) {
        m_reading = false;
        if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
            qCInfo(lcPlatform) << "GeoClue's location was not readable:" << answer.errorName();
            return;
        }
        Q_EMIT located(fix(qdbus_cast<QVariantMap>(answer.arguments().first())));
    });
}

void GeoClueClient::refuse(const QDBusMessage& reply)
{
    qCInfo(lcPlatform) << "GeoClue refused:" << reply.errorName() << reply.errorMessage();
    Q_EMIT refused(refusal(reply.errorName()));
}
