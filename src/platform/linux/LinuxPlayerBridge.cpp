#include "platform/linux/LinuxPlayerBridge.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QFile>
#include <QMutexLocker>
#include <QUrl>

#include <cmath>

namespace {

const QString mprisPrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString spotifyName = QStringLiteral("org.mpris.MediaPlayer2.spotify");
const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString noTrack = QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack");

int timeLimitMs()
{
    return int(PlayerBridge::timeLimit * 1000);
}

int errorNumber(const QDBusMessage& reply)
{
    const QString name = reply.errorName();
    if (name == QLatin1String("org.freedesktop.DBus.Error.NoReply") ||
        name == QLatin1String("org.freedesktop.DBus.Error.Timeout") ||
        name == QLatin1String("org.freedesktop.DBus.Error.TimedOut"))
        return PlayerReply::timedOut;
    if (name == QLatin1String("org.freedesktop.DBus.Error.AccessDenied"))
        return PlayerReply::notPermitted;
    return PlayerReply::failed;
}

bool vanished(const QDBusMessage& reply)
{
    const QString name = reply.errorName();
    return name == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
           name == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
}

// D-Bus hands nested values over as QDBusArgument or QDBusVariant; unwrap to plain values.
QVariant plain(const QVariant& value)
{
    if (value.metaType() == QMetaType::fromType<QDBusVariant>())
        return plain(value.value<QDBusVariant>().variant());
    return value;
}

QVariantMap asMap(const QVariant& value)
{
    const QVariant v = plain(value);
    if (v.metaType() == QMetaType::fromType<QDBusArgument>()) {
        const auto argument = v.value<QDBusArgument>();
        if (argument.currentType() == QDBusArgument::MapType)
            return qdbus_cast<QVariantMap>(argument);
        return {};
    }
    if (v.metaType() == QMetaType::fromType<QVariantMap>())
        return v.toMap();
    return {};
}

// The track id as text: object paths (the standard) and plain strings (Spotify's older builds).
QString trackText(const QVariant& value)
{
    const QVariant v = plain(value);
    QString text;
    if (v.metaType() == QMetaType::fromType<QDBusObjectPath>())
        text = v.value<QDBusObjectPath>().path();
    else if (v.metaType() == QMetaType::fromType<QString>())
        text = v.toString();
    return text == noTrack ? QString() : text;
}

QVariant stringItem(const QVariant& value)
{
    const QVariant v = plain(value);
    if (v.metaType() == QMetaType::fromType<QString>())
        return v;
    if (v.metaType() == QMetaType::fromType<QStringList>())
        return v.toStringList().join(QStringLiteral(", "));
    if (v.metaType() == QMetaType::fromType<QDBusArgument>()) {
        const auto argument = v.value<QDBusArgument>();
        if (argument.currentSignature() == QLatin1String("as"))
            return qdbus_cast<QStringList>(argument).join(QStringLiteral(", "));
    }
    return {};
}

// Microseconds of a length or position; anything that is not a number gives nothing.
std::optional<double> microseconds(const QVariant& value)
{
    const QVariant v = plain(value);
    switch (v.metaType().id()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
        return double(v.toLongLong());
    case QMetaType::ULongLong:
    case QMetaType::UInt:
        return double(v.toULongLong());
    case QMetaType::Double:
        return v.toDouble();
    default:
        return std::nullopt;
    }
}

} // namespace

LinuxPlayerBridge::LinuxPlayerBridge(QObject* parent) : PlayerBridge(parent)
{
    m_uptime.start();
    QDBusConnection bus = QDBusConnection::sessionBus();
    // The Qt D-Bus signal API takes only string-based slots.
    bus.connect(QString(), objectPath, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    bus.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), this,
                SLOT(nameOwnerChanged(QString, QString, QString)));
}

bool LinuxPlayerBridge::isBrowser(const QString& text)
{
    static const char* const browsers[] = {"firefox", "chromium", "chrome",   "brave",
                                           "vivaldi", "opera",    "epiphany", "edge"};
    const QString lower = text.toLower();
    for (const char* browser : browsers)
        if (lower.contains(QLatin1String(browser)))
            return true;
    return false;
}

void LinuxPlayerBridge::propertiesChanged(const QString& interface, const QVariantMap& changed,
                                          const QStringList& invalidated)
{
    if (interface != playerInterface)
        return;
    const auto matters = [](const QString& key) {
        return key == QLatin1String("Metadata") || key == QLatin1String("PlaybackStatus");
    };
    bool relevant = std::any_of(changed.keyBegin(), changed.keyEnd(), matters) ||
                    std::any_of(invalidated.begin(), invalidated.end(), matters);
    if (relevant)
        Q_EMIT playersChanged();
}

void LinuxPlayerBridge::nameOwnerChanged(const QString& name, const QString& oldOwner,
                                         const QString& newOwner)
{
    Q_UNUSED(oldOwner)
    Q_UNUSED(newOwner)
    if (name.startsWith(mprisPrefix))
        Q_EMIT playersChanged();
}

QDBusMessage LinuxPlayerBridge::call(const QString& service, const QString& interface, const QString& method,
                                     const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, objectPath, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message, QDBus::Block, timeLimitMs());
}

std::optional<QVariant> LinuxPlayerBridge::property(const QString& service, const QString& name,
                                                    QDBusMessage* failure)
{
    const QDBusMessage reply =
        call(service, propertiesInterface, QStringLiteral("Get"), {playerInterface, name});
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        if (failure)
            *failure = reply;
        return std::nullopt;
    }
    return plain(reply.arguments().constFirst());
}

QStringList LinuxPlayerBridge::mprisNames()
{
    const QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
    const QDBusMessage reply = QDBusConnection::sessionBus().call(message, QDBus::Block, timeLimitMs());
    QStringList names;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return names;
    for (const QString& name : reply.arguments().constFirst().toStringList())
        if (name.startsWith(mprisPrefix))
            names.append(name);
    // The bus lists names in no particular order; sorted, "first other player" means the same player
    // from one poll to the next.
    names.sort();
    return names;
}

bool LinuxPlayerBridge::ownerIsBrowser(const QString& name)
{
    if (isBrowser(name.mid(mprisPrefix.size())))
        return true;
    const QDBusMessage ownerMessage = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
    QDBusMessage request = ownerMessage;
    request.setArguments({name});
    const QDBusMessage owner = QDBusConnection::sessionBus().call(request, QDBus::Block, timeLimitMs());
    if (owner.type() != QDBusMessage::ReplyMessage || owner.arguments().isEmpty())
        return false;
    const QString unique = owner.arguments().constFirst().toString();
    {
        QMutexLocker lock(&m_mutex);
        const auto known = m_browserOwners.constFind(unique);
        if (known != m_browserOwners.constEnd())
            return *known;
    }
    // Asked once per running process: a player that does not answer here is not a browser.
    const QDBusMessage entry = call(name, propertiesInterface, QStringLiteral("Get"),
                                    {rootInterface, QStringLiteral("DesktopEntry")});
    const bool browser = entry.type() == QDBusMessage::ReplyMessage && !entry.arguments().isEmpty() &&
                         isBrowser(plain(entry.arguments().constFirst()).toString());
    QMutexLocker lock(&m_mutex);
    m_browserOwners.insert(unique, browser);
    return browser;
}

QStringList LinuxPlayerBridge::runningPlayers()
{
    const QStringList names = mprisNames();
    QStringList players;
    if (names.contains(spotifyName))
        players.append(QStringLiteral("Spotify"));
    for (const QString& name : names) {
        if (name != spotifyName && !ownerIsBrowser(name)) {
            players.append(QStringLiteral("Music"));
            break;
        }
    }
    return players;
}

QString LinuxPlayerBridge::busName(const QString& player)
{
    const QStringList names = mprisNames();
    if (player == QLatin1String("Spotify"))
        return names.contains(spotifyName) ? spotifyName : QString();
    if (player != QLatin1String("Music"))
        return {};
    for (const QString& name : names)
        if (name != spotifyName && !ownerIsBrowser(name))
            return name;
    return {};
}

PlayerReply LinuxPlayerBridge::query(const QString& player)
{
    const QString service = busName(player);
    if (service.isEmpty())
        return {};
    const QDBusMessage reply =
        call(service, propertiesInterface, QStringLiteral("GetAll"), {playerInterface});
    if (reply.type() != QDBusMessage::ReplyMessage) {
        if (vanished(reply))
            return {};
        return PlayerReply::failure(errorNumber(reply));
    }
    if (reply.arguments().isEmpty())
        return {};
    const QVariantMap properties = asMap(reply.arguments().constFirst());
    const QString status = plain(properties.value(QStringLiteral("PlaybackStatus"))).toString();
    if (status == QLatin1String("Stopped"))
        return PlayerReply::list({});
    const bool playing = status == QLatin1String("Playing");
    const QVariantMap metadata = asMap(properties.value(QStringLiteral("Metadata")));
    const bool spotify = player == QLatin1String("Spotify");
    const QString trackID = trackText(metadata.value(QStringLiteral("mpris:trackid")));

    QVariant duration;
    if (const auto length = microseconds(metadata.value(QStringLiteral("mpris:length"))))
        duration = spotify ? *length / 1000.0 : *length / 1e6; // Spotify counts milliseconds
    QVariant position;
    const auto reported = microseconds(properties.value(QStringLiteral("Position")));
    if (spotify && (!reported || *reported == 0))
        position = spotifyPosition(trackID, playing);
    else if (reported)
        position = *reported / 1e6;
    if (spotify && reported && *reported != 0)
        setSpotifyPosition(trackID, *reported / 1e6, playing);

    QVariant artwork = QString();
    if (spotify)
        artwork = stringItem(metadata.value(QStringLiteral("mpris:artUrl")));
    return PlayerReply::list({stringItem(metadata.value(QStringLiteral("xesam:title"))),
                              stringItem(metadata.value(QStringLiteral("xesam:artist"))), playing, duration,
                              position, trackID, artwork});
}

double LinuxPlayerBridge::spotifyPosition(const QString& trackID, bool playing)
{
    QMutexLocker lock(&m_mutex);
    const qint64 now = m_uptime.elapsed();
    if (m_spotify.trackID != trackID) {
        m_spotify = Estimate{trackID, 0, now, playing};
        return 0;
    }
    if (m_spotify.playing)
        m_spotify.position += double(now - m_spotify.at) / 1000.0;
    m_spotify.at = now;
    m_spotify.playing = playing;
    return m_spotify.position;
}

void LinuxPlayerBridge::setSpotifyPosition(const QString& trackID, double position, bool playing)
{
    QMutexLocker lock(&m_mutex);
    m_spotify = Estimate{trackID, position, m_uptime.elapsed(), playing};
}

bool LinuxPlayerBridge::command(const QString& player, const PlayerCommand& command)
{
    const QString service = busName(player);
    if (service.isEmpty())
        return false;
    const auto send = [&](const QString& method, const QVariantList& arguments) {
        return call(service, playerInterface, method, arguments).type() == QDBusMessage::ReplyMessage;
    };
    switch (command.kind) {
    case PlayerCommand::Kind::playPause:
        return send(QStringLiteral("PlayPause"), {});
    case PlayerCommand::Kind::next:
        return send(QStringLiteral("Next"), {});
    case PlayerCommand::Kind::previous:
        return send(QStringLiteral("Previous"), {});
    case PlayerCommand::Kind::seek:
        break;
    }
    QDBusMessage failure;
    const auto metadata = property(service, QStringLiteral("Metadata"), &failure);
    if (!metadata)
        return false;
    const QVariant id = plain(asMap(*metadata).value(QStringLiteral("mpris:trackid")));
    // The guard: another track has become current meanwhile, the player ignores the seek.
    if (trackText(id) != command.trackID)
        return true;
    const auto target = qint64(std::llround(command.position * 1e6));
    if (id.metaType() == QMetaType::fromType<QDBusObjectPath>())
        return send(QStringLiteral("SetPosition"),
                    {QVariant::fromValue(id.value<QDBusObjectPath>()), target});
    // A track id that is no object path cannot go to SetPosition: a relative Seek from where the
    // player is now does the same.
    double current = 0;
    const bool spotify = player == QLatin1String("Spotify");
    const auto reported = property(service, QStringLiteral("Position"));
    const auto micros = reported ? microseconds(*reported) : std::nullopt;
    const auto status = property(service, QStringLiteral("PlaybackStatus"));
    const bool playing = status && status->toString() == QLatin1String("Playing");
    if (micros && *micros != 0)
        current = *micros / 1e6;
    else if (spotify)
        current = spotifyPosition(command.trackID, playing);
    const bool sent = send(QStringLiteral("Seek"), {qint64(target - std::llround(current * 1e6))});
    if (sent && spotify)
        setSpotifyPosition(command.trackID, command.position, playing);
    return sent;
}

QByteArray LinuxPlayerBridge::coverData(const QString& player, const QString& trackID, qint64 maxBytes)
{
    const QString service = busName(player);
    if (service.isEmpty())
        return {};
    const auto metadata = property(service, QStringLiteral("Metadata"));
    if (!metadata)
        return {};
    const QVariantMap values = asMap(*metadata);
    if (trackText(values.value(QStringLiteral("mpris:trackid"))) != trackID)
        return {};
    const QUrl url(stringItem(values.value(QStringLiteral("mpris:artUrl"))).toString());
    if (!url.isLocalFile())
        return {};
    QFile file(url.toLocalFile());
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxBytes)
        return {};
    QByteArray data = file.read(maxBytes + 1);
    return data.size() > maxBytes ? QByteArray() : data;
}
