#include "weather/WeatherStore.h"

#include "common/BoundedDownload.h"
#include "common/Clock.h"
#include "settings/Defaults.h"
#include "weather/WeatherHTTP.h"
#include "weather/WeatherTexts.h"

#include <QLoggingCategory>
#include <QNetworkAccessManager>
#include <QPointer>
#include <QRandomGenerator>
#include <QTimer>

namespace {

Q_LOGGING_CATEGORY(lcWeather, "brenlow.weather", QtInfoMsg)

const QString placeKey = QString::fromLatin1(WeatherPlace::defaultsKey);
const QString cacheKey = QString::fromLatin1(WeatherCache::defaultsKey);

QDateTime distantPast()
{
    return QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
}

} // namespace

WeatherStore::WeatherStore(Defaults& defaults, Clock& clock, Scheduler& scheduler, Location& location,
                           bool startServices, QNetworkAccessManager* network, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_clock(clock), m_scheduler(scheduler), m_location(location),
      m_network(network ? network : new QNetworkAccessManager(this)), m_status(WeatherTexts::start()),
      m_retryAfter(distantPast()), m_timer(scheduler, this), m_locationTimeout(scheduler, this)
{
    load();
    connect(&location, &Location::authorizationChanged, this, &WeatherStore::authorizationChangedNow);
    connect(&location, &Location::locationUpdated, this, &WeatherStore::locationArrived);
    connect(&location, &Location::locationFailed, this, &WeatherStore::locationFailedNow);
    if (!startServices)
        return;
    if (m_automatic || m_place)
        QTimer::singleShot(0, this, &WeatherStore::refresh);
    m_interval = shortestInterval + QRandomGenerator::global()->bounded(longestInterval - shortestInterval);
    scheduleRefresh();
}

WeatherStore::~WeatherStore() = default;

void WeatherStore::load()
{
    // Records that do not decode are treated as absent; they are replaced by the next good one.
    if (const auto data = m_defaults.dataValue(cacheKey))
        m_cache = WeatherCache::decode(*data);
    if (const auto until = m_defaults.dateValue(QString::fromLatin1(retryAfterKey)))
        m_retryAfter = *until;
    m_automatic = m_defaults.boolValue(QString::fromLatin1(automaticKey)).value_or(false);
    if (const auto data = m_defaults.dataValue(placeKey))
        m_place = WeatherPlace::decode(*data);
}

void WeatherStore::scheduleRefresh()
{
    m_timer.schedule(m_interval, [this] {
        scheduleRefresh();
        refresh();
    });
}

void WeatherStore::setSearchText(const QString& text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
}

QString WeatherStore::temperature() const
{
    return WeatherTexts::temperature(m_current);
}
QString WeatherStore::description() const
{
    return WeatherTexts::description(m_current);
}
QString WeatherStore::symbol() const
{
    return WeatherTexts::symbol(m_current);
}

void WeatherStore::refresh()
{
    if (m_busy)
        return;
    if (m_automatic) {
        refreshAuthorization();
        switch (m_authorization) {
        case LocationAuthorization::authorized:
            locate();
            return;
        case LocationAuthorization::notDetermined:
            setStatus(WeatherTexts::awaitingPermission());
            m_location.requestAuthorization();
            return;
        case LocationAuthorization::restricted:
        case LocationAuthorization::denied:
            setStatus(WeatherTexts::refusedOnRefresh());
            setBusy(false);
            // A desktop that cannot announce a changed mind (GeoClue answers each start anew)
            // is asked again; one that remembers its answer ignores the question.
            m_location.requestAuthorization();
            return;
        }
    }
    if (m_place)
        fetchWeather(*m_place);
}

void WeatherStore::refreshAuthorization()
{
    const LocationAuthorization now = m_location.authorization();
    if (m_authorization == now)
        return;
    m_authorization = now;
    Q_EMIT authorizationChanged();
}

void WeatherStore::useCurrentLocation()
{
    setAutomatic(true);
    Q_EMIT activationRequested();
    refresh();
}

void WeatherStore::locate()
{
    if (!m_automatic || m_busy)
        return;
    setBusy(true);
    setStatus(WeatherTexts::locating());
    const quint64 revision = ++m_revision;
    m_locationTimeout.schedule(locationTimeout, [this, revision] {
        if (revision != m_revision || !m_busy)
            return;
        setBusy(false);
        m_location.stopUpdatingLocation();
        m_location.cancelReverseGeocode();
        setStatus(WeatherTexts::locationTimedOut());
    });
    m_location.requestLocation();
}

void WeatherStore::locationArrived(const LocationFix& fix)
{
    // A fix without accuracy is no fix: the time-out decides.
    if (!m_automatic || fix.horizontalAccuracy < 0)
        return;
    const double latitude = WeatherPlace::round(fix.latitude);
    const double longitude = WeatherPlace::round(fix.longitude);
    const quint64 revision = m_revision;
    QPointer<WeatherStore> self(this);
    m_location.reverseGeocode(latitude, longitude,
                              [self, revision, latitude, longitude](GeocodeAnswer answer) {
                                  if (self && revision == self->m_revision && self->m_automatic)
                                      self->placeFound(answer, latitude, longitude);
                              });
}

void WeatherStore::placeFound(const GeocodeAnswer& answer, double latitude, double longitude)
{
    m_locationTimeout.cancel();
    std::optional<QString> name;
    if (!answer.placemarks.isEmpty()) {
        const Placemark& first = answer.placemarks.first();
        name = first.locality ? first.locality : first.subAdministrativeArea;
    }
    setBusy(false);
    if (!name) {
        setStatus(WeatherTexts::noCity());
        return;
    }
    const Placemark& first = answer.placemarks.first();
    const WeatherPlace place{0, *name, latitude, longitude, first.country, first.administrativeArea};
    save(place);
    fetchWeather(place);
}

void WeatherStore::locationFailedNow()
{
    // Only a live attempt can fail; a failure after the time-out changes nothing.
    if (!m_automatic || !m_locationTimeout.isPending())
        return;
    m_locationTimeout.cancel();
    setBusy(false);
    setStatus(WeatherTexts::locationFailed());
}

void WeatherStore::authorizationChangedNow(LocationAuthorization authorization)
{
    if (m_authorization != authorization) {
        m_authorization = authorization;
        Q_EMIT authorizationChanged();
    }
    if (!m_automatic)
        return;
    if (authorization == LocationAuthorization::restricted ||
        authorization == LocationAuthorization::denied) {
        m_locationTimeout.cancel();
        setBusy(false);
        setStatus(WeatherTexts::refusedOnChange());
    } else if (authorization == LocationAuthorization::authorized) {
        locate();
    }
}

void WeatherStore::save(const WeatherPlace& place)
{
    // Old weather must not be shown for a new place.
    if (!m_place || !m_place->sameCoordinates(place))
        setWeather(std::nullopt, std::nullopt);
    const bool changed = m_place != place;
    m_place = place;
    m_defaults.setData(placeKey, place.encode());
    if (changed)
        Q_EMIT placeChanged();
}

void WeatherStore::fetchWeather(const WeatherPlace& place)
{
    m_task.reset();
    setBusy(false);
    const quint64 revision = ++m_revision;
    const QString key = WeatherHTTP::key(place.latitude, place.longitude);
    std::optional<WeatherCache> previous;
    if (m_cache && m_cache->coordinateKey == key)
        previous = m_cache;
    const QDateTime now = m_clock.now();
    if (previous && previous->expires > now) {
        show(*previous);
        return;
    }
    if (now < m_retryAfter) {
        if (previous)
            show(*previous);
        setStatus(WeatherTexts::paused(m_retryAfter));
        return;
    }
    setBusy(true);
    setStatus(WeatherTexts::updating());
    ++m_requests;
    m_task = std::make_unique<BoundedDownload>(
        *m_network, WeatherHTTP::request(place.latitude, place.longitude, previous), WeatherHTTP::bodyLimit,
        [this, revision, previous, key](HttpAnswer answer) {
            // The download dies with the store; a newer action replaced this one.
            if (revision != m_revision)
                return;
            setBusy(false);
            apply(answer, previous, key);
        });
}

void WeatherStore::apply(const HttpAnswer& answer, const std::optional<WeatherCache>& previous,
                         const QString& key)
{
    const QDateTime now = m_clock.now();
    std::optional<WeatherCache> fresh;
    if (answer.hasResponse && answer.status == 304 && previous) {
        fresh = previous;
        fresh->expires = WeatherHTTP::expiry(now, answer);
        fresh->fetchedAt = now;
        if (const auto modified = answer.header("Last-Modified"))
            fresh->lastModified = QString::fromLatin1(*modified);
    } else if (answer.hasResponse && (answer.status == 200 || answer.status == 203) && !answer.oversized &&
               answer.body.size() <= WeatherHTTP::bodyLimit) {
        WeatherCache candidate{key, answer.body, WeatherHTTP::expiry(now, answer), std::nullopt, now};
        if (const auto modified = answer.header("Last-Modified"))
            candidate.lastModified = QString::fromLatin1(*modified);
        if (candidate.current(now))
            fresh = candidate;
    }

    if (fresh) {
        m_cache = fresh;
        m_defaults.setData(cacheKey, fresh->encode());
        setRetryAfter(distantPast());
        m_defaults.remove(QString::fromLatin1(retryAfterKey));
        show(*fresh);
        if (answer.status == 203)
            setStatus(m_status + WeatherTexts::updateNeeded());
        return;
    }

    qCInfo(lcWeather) << "forecast not usable:" << (answer.hasResponse ? answer.status : -1)
                      << answer.errorText << (answer.oversized ? "body too large" : "");
    setRetryAfter(WeatherHTTP::retryDate(now, answer.hasResponse ? &answer : nullptr));
    m_defaults.setDate(QString::fromLatin1(retryAfterKey), m_retryAfter);
    if (previous)
        show(*previous);
    setStatus(answer.hasResponse && answer.status == 429 ? WeatherTexts::serviceBusy()
                                                         : WeatherTexts::unreachable());
}

void WeatherStore::show(const WeatherCache& cache)
{
    const auto current = cache.current(m_clock.now());
    setWeather(current, cache.fetchedAt);
    setStatus(current ? WeatherTexts::shown(*current) : WeatherTexts::noCurrentForecast());
}

void WeatherStore::search()
{
    const QString text = m_searchText.trimmed();
    if (text.size() < 2) {
        setStatus(WeatherTexts::searchTooShort());
        return;
    }
    m_location.cancelGeocode();
    setSearching(true);
    setResults({});
    const quint64 revision = ++m_searchRevision;
    QPointer<WeatherStore> self(this);
    m_location.geocode(text, [self, revision](GeocodeAnswer answer) {
        if (self && revision == self->m_searchRevision)
            self->searchAnswered(answer);
    });
}

void WeatherStore::searchAnswered(const GeocodeAnswer& answer)
{
    setSearching(false);
    QList<WeatherPlace> places;
    for (qsizetype index = 0; index < answer.placemarks.size(); ++index) {
        const Placemark& mark = answer.placemarks.at(index);
        if (!mark.latitude || !mark.longitude)
            continue;
        const auto name = mark.locality                ? mark.locality
                          : mark.subAdministrativeArea ? mark.subAdministrativeArea
                                                       : mark.name;
        if (!name)
            continue;
        places.append(WeatherPlace{int(index), *name, WeatherPlace::round(*mark.latitude),
                                   WeatherPlace::round(*mark.longitude), mark.country,
                                   mark.administrativeArea});
    }
    setResults(places);
    if (!m_results.isEmpty())
        setStatus(WeatherTexts::chooseCity());
    else
        setStatus(answer.failed ? WeatherTexts::searchUnavailable() : WeatherTexts::noCityFound());
}

void WeatherStore::stopLocating()
{
    m_locationTimeout.cancel();
    m_location.stopUpdatingLocation();
    m_location.cancelReverseGeocode();
}

void WeatherStore::select(const WeatherPlace& place)
{
    setAutomatic(false);
    stopLocating();
    m_location.cancelGeocode();
    ++m_searchRevision;
    setSearching(false);
    setResults({});
    save(place);
    fetchWeather(place);
}

void WeatherStore::disable()
{
    setAutomatic(false);
    m_defaults.remove(placeKey);
    m_task.reset();
    stopLocating();
    m_location.cancelGeocode();
    ++m_revision;
    ++m_searchRevision;
    m_defaults.remove(cacheKey);
    m_cache.reset();
    if (std::exchange(m_place, std::nullopt))
        Q_EMIT placeChanged();
    setWeather(std::nullopt, std::nullopt);
    setResults({});
    setBusy(false);
    setSearching(false);
    setStatus(WeatherTexts::switchedOff());
}

void WeatherStore::setStatus(const QString& status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

void WeatherStore::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}

void WeatherStore::setSearching(bool searching)
{
    if (m_searching == searching)
        return;
    m_searching = searching;
    Q_EMIT searchingChanged();
}

void WeatherStore::setAutomatic(bool automatic)
{
    m_defaults.setBool(QString::fromLatin1(automaticKey), automatic);
    if (m_automatic == automatic)
        return;
    m_automatic = automatic;
    Q_EMIT automaticChanged();
}

void WeatherStore::setResults(QList<WeatherPlace> results)
{
    if (m_results == results)
        return;
    m_results = std::move(results);
    Q_EMIT resultsChanged();
}

void WeatherStore::setWeather(std::optional<WeatherResponse::Current> current,
                              std::optional<QDateTime> updatedAt)
{
    if (m_current == current && m_updatedAt == updatedAt)
        return;
    m_current = current;
    m_updatedAt = updatedAt;
    Q_EMIT weatherChanged();
}

void WeatherStore::setRetryAfter(const QDateTime& until)
{
    m_retryAfter = until;
}
