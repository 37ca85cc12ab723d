#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

// Whether this program may ask for the position.
enum class LocationAuthorization { notDetermined, restricted, denied, authorized };

// One fix of the position, in degrees; accuracy in metres (negative: not a valid fix).
struct LocationFix
{
    double latitude = 0;
    double longitude = 0;
    double horizontalAccuracy = 0;
};

// A place a geocoder found: the names it knows and, for a city search, where it is.
struct Placemark
{
    std::optional<QString> name;
    std::optional<QString> locality;
    std::optional<QString> subAdministrativeArea;
    std::optional<QString> administrativeArea;
    std::optional<QString> country;
    std::optional<double> latitude;
    std::optional<double> longitude;
};

// The geocoder's answer: its places, or that it failed (then the list is empty).
struct GeocodeAnswer
{
    QList<Placemark> placemarks;
    bool failed = false;
};

// The desktop's location: a one-shot fix with its authorization state, the place of a point and
// places for a name. Answers arrive later on the main thread; at most one fix, one reverse and
// one forward lookup run at a time, and starting another replaces the one before.
class Location : public QObject
{
    Q_OBJECT
public:
    using Answer = std::function<void(GeocodeAnswer)>;

    explicit Location(QObject* parent = nullptr) : QObject(parent) {}

    virtual LocationAuthorization authorization() const = 0;
    // Asks the desktop to let this program use the position; the answer comes as
    // authorizationChanged.
    virtual void requestAuthorization() = 0;
    // One fix: locationUpdated or locationFailed.
    virtual void requestLocation() = 0;
    virtual void stopUpdatingLocation() = 0;

    // The place of a point (only these coordinates leave the machine), in German.
    virtual void reverseGeocode(double latitude, double longitude, Answer answer) = 0;
    virtual void cancelReverseGeocode() = 0;
    // Places for a name, in German.
    virtual void geocode(const QString& text, Answer answer) = 0;
    virtual void cancelGeocode() = 0;

    // Opens the desktop's location settings; false when this desktop has none to open.
    virtual bool openSettings() = 0;

Q_SIGNALS:
    void authorizationChanged(LocationAuthorization authorization);
    void locationUpdated(const LocationFix& fix);
    void locationFailed();
};
