#pragma once

#include "platform/Location.h"

#include <QHash>
#include <QList>

// The desktop's location in memory: the answer the user would give to the prompt, a fixed
// position, and geocoders with canned places. Answers come later on the main thread, like the
// real ones; held answers wait for release().
class MemoryLocation final : public Location
{
    Q_OBJECT
public:
    explicit MemoryLocation(QObject* parent = nullptr) : Location(parent) {}

    LocationAuthorization authorization() const override { return m_authorization; }
    void requestAuthorization() override;
    void requestLocation() override;
    void stopUpdatingLocation() override { ++m_stops; }
    void reverseGeocode(double latitude, double longitude, Answer answer) override;
    void cancelReverseGeocode() override;
    void geocode(const QString& text, Answer answer) override;
    void cancelGeocode() override;
    bool openSettings() override;

    // What the prompt answers; notDetermined leaves it open.
    void setPromptAnswer(LocationAuthorization answer) { m_promptAnswer = answer; }
    // Changes the authorization as the user would in the desktop's settings.
    void changeAuthorization(LocationAuthorization authorization);
    // The position a request finds; nothing means no fix ever arrives.
    void setFix(std::optional<LocationFix> fix) { m_fix = fix; }
    void setFailing(bool failing) { m_failing = failing; }
    // The place of every point; a failed answer when `failed`.
    void setReverseAnswer(GeocodeAnswer answer) { m_reverse = std::move(answer); }
    // The places a name (compared case-insensitively, trimmed) finds; unknown names find none.
    void addPlaces(const QString& text, QList<Placemark> places)
    {
        m_places.insert(text.toCaseFolded(), places);
    }
    void setGeocodeFailing(bool failing) { m_geocodeFailing = failing; }
    void setSettingsAvailable(bool available) { m_settingsAvailable = available; }

    // Answers wait until release() while held.
    void setHolding(bool holding) { m_holding = holding; }
    void release();

    int authorizationRequests() const { return m_authorizationRequests; }
    int locationRequests() const { return m_locationRequests; }
    int stops() const { return m_stops; }
    int settingsOpened() const { return m_settingsOpened; }
    // Every point reverse-geocoded and every name looked up, in order.
    const QList<QPair<double, double>>& reversePoints() const { return m_reversePoints; }
    const QStringList& geocodeTexts() const { return m_geocodeTexts; }

private:
    void later(std::function<void()> work);

    LocationAuthorization m_authorization = LocationAuthorization::notDetermined;
    LocationAuthorization m_promptAnswer = LocationAuthorization::authorized;
    std::optional<LocationFix> m_fix;
    bool m_failing = false;
    GeocodeAnswer m_reverse;
    QHash<QString, QList<Placemark>> m_places;
    bool m_geocodeFailing = false;
    bool m_settingsAvailable = false;
    bool m_holding = false;
    QList<std::function<void()>> m_held;
    // Bumped by a cancel: answers of an older number are dropped, as the real lookups are.
    quint64 m_reverseNumber = 0;
    quint64 m_forwardNumber = 0;
    int m_authorizationRequests = 0;
    int m_locationRequests = 0;
    int m_stops = 0;
    int m_settingsOpened = 0;
    QList<QPair<double, double>> m_reversePoints;
    QStringList m_geocodeTexts;
};
