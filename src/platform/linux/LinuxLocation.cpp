#include "platform/linux/LinuxLocation.h"

#include "common/Log.h"
#include "platform/linux/WebGeocoder.h"

#include <QDBusConnection>
#include <QProcess>
#include <QStandardPaths>

LinuxLocation::LinuxLocation(QObject* parent) : Location(parent), m_geocoder(new WebGeocoder(this))
{
    m_fixTimeout.setSingleShot(true);
    m_fixTimeout.setInterval(fixTimeoutMs);
    connect(&m_fixTimeout, &QTimer::timeout, this, [this] {
        qCInfo(lcPlatform) << "GeoClue gave no position in time";
        fixFailed();
    });
}

LinuxLocation::~LinuxLocation() = default;

GeoClueClient* LinuxLocation::startClient(bool locate)
{
    auto* client =
        new GeoClueClient(QDBusConnection::systemBus(), QString::fromLatin1(desktopId), locate, this);
    connect(client, &GeoClueClient::started, this,
            [this] { setAuthorization(LocationAuthorization::authorized); });
    client->start();
    return client;
}

void LinuxLocation::drop(QPointer<GeoClueClient>& client)
{
    // Its pending answers go with it; GeoClue hears Stop and DeleteClient.
    if (GeoClueClient* old = client.data()) {
        old->disconnect();
        old->deleteLater();
    }
    client.clear();
}

void LinuxLocation::setAuthorization(LocationAuthorization authorization)
{
    if (m_authorization == authorization)
        return;
    m_authorization = authorization;
    Q_EMIT authorizationChanged(authorization);
}

void LinuxLocation::refusedWith(GeoClueClient::Refusal why)
{
    switch (why) {
    case GeoClueClient::Refusal::denied:
        setAuthorization(LocationAuthorization::denied);
        break;
    case GeoClueClient::Refusal::absent:
        // Nothing on this desktop can locate us.
        setAuthorization(LocationAuthorization::restricted);
        break;
    case GeoClueClient::Refusal::failed:
        break;
    }
}

void LinuxLocation::requestAuthorization()
{
    // Starting a client is the question; it is stopped again once answered.
    drop(m_asking);
    m_asking = startClient(false);
    connect(m_asking, &GeoClueClient::started, this, [this] { drop(m_asking); });
    connect(m_asking, &GeoClueClient::refused, this, [this](GeoClueClient::Refusal why) {
        drop(m_asking);
        refusedWith(why);
    });
}

void LinuxLocation::requestLocation()
{
    drop(m_locating);
    m_locating = startClient(true);
    m_fixTimeout.start();
    connect(m_locating, &GeoClueClient::located, this, [this](const LocationFix& fix) {
        drop(m_locating);
        m_fixTimeout.stop();
        Q_EMIT locationUpdated(fix);
    });
    connect(m_locating, &GeoClueClient::refused, this, [this](GeoClueClient::Refusal why) {
        refusedWith(why);
        fixFailed();
    });
}

void LinuxLocation::fixFailed()
{
    drop(m_locating);
    m_fixTimeout.stop();
    Q_EMIT locationFailed();
}

void LinuxLocation::stopUpdatingLocation()
{
    drop(m_locating);
    m_fixTimeout.stop();
}

void LinuxLocation::reverseGeocode(double latitude, double longitude, Answer answer)
{
    m_geocoder->reverse(latitude, longitude, std::move(answer));
}

void LinuxLocation::cancelReverseGeocode()
{
    m_geocoder->cancelReverse();
}

void LinuxLocation::geocode(const QString& text, Answer answer)
{
    m_geocoder->search(text, std::move(answer));
}

void LinuxLocation::cancelGeocode()
{
    m_geocoder->cancelSearch();
}

bool LinuxLocation::openSettings()
{
    // GNOME's privacy panel is the one desktop settings page for GeoClue's permissions.
    const QString program = QStandardPaths::findExecutable(QStringLiteral("gnome-control-center"));
    if (program.isEmpty())
        return false;
    return QProcess::startDetached(program, {QStringLiteral("location")});
}
