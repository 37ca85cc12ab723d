#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// A place the weather is shown for: the located one (id 0) or a search result (its position in
// the list). Coordinates are already rounded to two decimals. Stored as JSON under "weather.place".
struct WeatherPlace
{
    static constexpr const char* defaultsKey = "weather.place";

    int id = 0;
    QString name;
    double latitude = 0;
    double longitude = 0;
    std::optional<QString> country;
    std::optional<QString> admin1;

    bool operator==(const WeatherPlace&) const = default;
    bool sameCoordinates(const WeatherPlace& other) const
    {
        return latitude == other.latitude && longitude == other.longitude;
    }

    QByteArray encode() const;
    // Nothing for anything that is not a complete record with finite coordinates.
    static std::optional<WeatherPlace> decode(const QByteArray& json);

    // Two decimals, half away from zero: the only precision that leaves the machine.
    static double round(double degrees);
};
