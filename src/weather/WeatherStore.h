#pragma once

#include "common/Scheduler.h"
#include "platform/Location.h"
#include "weather/WeatherCache.h"
#include "weather/WeatherPlace.h"
#include "weather/WeatherResponse.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class BoundedDownload;
class Clock;
class Defaults;
struct HttpAnswer;
class QNetworkAccessManager;

// The weather card's state: the chosen place (located or picked from a city search), the current
// forecast for it, refreshed about every half hour with the service's cache rules and back-off,
// and one German status line. Only coordinates rounded to two decimals leave the machine.
// Main thread only; late answers carry a revision and are dropped once a newer action started.
class WeatherStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(bool automatic READ automatic NOTIFY automaticChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool searching READ searching NOTIFY searchingChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
public:
    static constexpr const char* automaticKey = "weather.automatic";
    static constexpr const char* retryAfterKey = "weather.met.retryAfter";
    static constexpr double locationTimeout = 20.0;
    static constexpr double shortestInterval = 1800.0;
    static constexpr double longestInterval = 2100.0;

    // `network` may be shared; without one the store makes its own.
    WeatherStore(Defaults& defaults, Clock& clock, Scheduler& scheduler, Location& location,
                 bool startServices, QNetworkAccessManager* network = nullptr, QObject* parent = nullptr);
    ~WeatherStore() override;

    const std::optional<WeatherPlace>& place() const { return m_place; }
    const std::optional<WeatherResponse::Current>& current() const { return m_current; }
    const std::optional<QDateTime>& updatedAt() const { return m_updatedAt; }
    const QString& status() const { return m_status; }
    LocationAuthorization authorization() const { return m_authorization; }
    bool automatic() const { return m_automatic; }
    bool busy() const { return m_busy; }
    bool searching() const { return m_searching; }
    const QList<WeatherPlace>& results() const { return m_results; }
    const QString& searchText() const { return m_searchText; }
    void setSearchText(const QString& text);

    // Derived texts for the views.
    QString temperature() const;
    QString description() const;
    QString symbol() const;

    // Locates or fetches, as the settings say; nothing while busy.
    void refresh();
    // City search for searchText.
    void search();
    // Takes a search result: automatic location goes off.
    void select(const WeatherPlace& place);
    // Weather off: the place and the cached forecast are forgotten.
    void disable();
    // "Aktuellen Standort verwenden".
    void useCurrentLocation();

    // The repeating refresh's interval, drawn once per start; 0 without services.
    double refreshInterval() const { return m_interval; }
    const std::optional<WeatherCache>& cache() const { return m_cache; }
    // Distant past while no back-off is running.
    const QDateTime& retryAfter() const { return m_retryAfter; }
    // Forecast requests that went out since creation.
    int requestCount() const { return m_requests; }

Q_SIGNALS:
    void placeChanged();
    // current or updatedAt.
    void weatherChanged();
    void statusChanged();
    void authorizationChanged();
    void automaticChanged();
    void busyChanged();
    void searchingChanged();
    void resultsChanged();
    void searchTextChanged();
    // The user asked for the location: the panel comes to the front so a prompt is seen.
    void activationRequested();

private:
    void load();
    void scheduleRefresh();
    void refreshAuthorization();
    void locate();
    void locationArrived(const LocationFix& fix);
    void placeFound(const GeocodeAnswer& answer, double latitude, double longitude);
    void locationFailedNow();
    void authorizationChangedNow(LocationAuthorization authorization);
    void save(const WeatherPlace& place);
    void fetchWeather(const WeatherPlace& place);
    void apply(const HttpAnswer& answer, const std::optional<WeatherCache>& previous, const QString& key);
    void show(const WeatherCache& cache);
    void searchAnswered(const GeocodeAnswer& answer);
    void stopLocating();

    void setStatus(const QString& status);
    void setBusy(bool busy);
    void setSearching(bool searching);
    void setAutomatic(bool automatic);
    void setResults(QList<WeatherPlace> results);
    void setWeather(std::optional<WeatherResponse::Current> current, std::optional<QDateTime> updatedAt);
    void setRetryAfter(const QDateTime& until);

    Defaults& m_defaults;
    Clock& m_clock;
    Scheduler& m_scheduler;
    Location& m_location;
    QNetworkAccessManager* m_network;

    std::optional<WeatherPlace> m_place;
    std::optional<WeatherResponse::Current> m_current;
    std::optional<QDateTime> m_updatedAt;
    QString m_status;
    LocationAuthorization m_authorization = LocationAuthorization::notDetermined;
    bool m_automatic = false;
    bool m_busy = false;
    bool m_searching = false;
    QList<WeatherPlace> m_results;
    QString m_searchText;

    std::optional<WeatherCache> m_cache;
    QDateTime m_retryAfter;
    std::unique_ptr<BoundedDownload> m_task;
    quint64 m_revision = 0;
    quint64 m_searchRevision = 0;
    ScheduledWork m_timer;
    ScheduledWork m_locationTimeout;
    double m_interval = 0;
    int m_requests = 0;
};
