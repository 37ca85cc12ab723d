#include "platform/linux/LinuxLocation.h"

#include "common/Log.h"
#include "platform/linux/WebGeocoder.h"

#include <QGeoPositionInfo>
#include <QGeoPositionInfoSource>
#include <QProcess>
#include <QStandardPaths>

#include <cmath>

namespace {

// Longer than the store's own 20 s, so that its "not available now" decides first.
constexpr int fixTimeoutMs = 25'000;

} // namespace

LinuxLocation::LinuxLocation(QObject* parent) : Location(parent), m_geocoder(new WebGeocoder(this)) {}

LinuxLocation::~LinuxLocation() = default;

bool LinuxLocation::ensureSource()
{
    if (m_sourceTried)
        return m_source != nullptr;
    m_sourceTried = true;
    const QVariantMap parameters{{QStringLiteral("desktopId"), QString::fromLatin1(desktopId)}};
    m_source = QGeoPositionInfoSource::createSource(QStringLiteral("geoclue2"), parameters, this);
    if (!m_source) {
        qCInfo(lcPlatform) << "no GeoClue 2 positioning on this desktop";
        return false;
    }
    // The default asks GeoClue for country accuracy, which only its network source serves.
    m_source->setPreferredPositioningMethods(QGeoPositionInfoSource::AllPositioningMethods);
    connect(m_source, &QGeoPositionInfoSource::positionUpdated, this, &LinuxLocation::positionArrived);
    connect(m_source, &QGeoPositionInfoSource::errorOccurred, this,
            [this](QGeoPositionInfoSource::Error error) { sourceFailed(int(error)); });
    return true;
}

void LinuxLocation::setAuthorization(LocationAuthorization authorization)
{
    if (m_authorization == authorization)
        return;
    m_authorization = authorization;
    Q_EMIT authorizationChanged(authorization);
}

void LinuxLocation::requestAuthorization()
{
    if (!ensureSource()) {
        setAuthorization(LocationAuthorization::restricted);
        return;
    }
    // Starting a client is what makes the agent ask the user.
    m_asking = true;
    m_source->requestUpdate(fixTimeoutMs);
}

void LinuxLocation::requestLocation()
{
    if (!ensureSource()) {
        setAuthorization(LocationAuthorization::restricted);
        return;
    }
    m_locating = true;
    m_source->requestUpdate(fixTimeoutMs);
}

void LinuxLocation::stopUpdatingLocation()
{
    m_locating = false;
    m_asking = false;
    if (m_source)
        m_source->stopUpdates();
}

void LinuxLocation::positionArrived(const QGeoPositionInfo& info)
{
    m_asking = false;
    setAuthorization(LocationAuthorization::authorized);
    if (!std::exchange(m_locating, false))
        return;
    LocationFix fix;
    const QGeoCoordinate coordinate = info.coordinate();
    fix.latitude = coordinate.latitude();
    fix.longitude = coordinate.longitude();
    const double accuracy = info.attribute(QGeoPositionInfo::HorizontalAccuracy);
    fix.horizontalAccuracy = !coordinate.isValid() ? -1.0 : std::isnan(accuracy) ? 0.0 : accuracy;
    Q_EMIT locationUpdated(fix);
}

void LinuxLocation::sourceFailed(int code)
{
    const auto error = QGeoPositionInfoSource::Error(code);
    qCInfo(lcPlatform) << "positioning error" << error;
    const bool asking = std::exchange(m_asking, false);
    const bool locating = std::exchange(m_locating, false);
    switch (error) {
    case QGeoPositionInfoSource::AccessError:
        setAuthorization(LocationAuthorization::denied);
        return;
    case QGeoPositionInfoSource::ClosedError:
    case QGeoPositionInfoSource::UnknownSourceError:
        // GeoClue is not there (or went away): nothing on this desktop can locate us.
        if (asking && m_authorization == LocationAuthorization::notDetermined)
            setAuthorization(LocationAuthorization::restricted);
        break;
    case QGeoPositionInfoSource::UpdateTimeoutError:
    case QGeoPositionInfoSource::NoError:
        break;
    }
    if (locating)
        Q_EMIT locationFailed();
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
