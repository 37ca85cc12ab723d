#pragma once

#include <QJsonObject>

#include <optional>

// The weather the card shows, under the keys the forecast service's neighbours use.
struct WeatherResponse
{
    struct Current
    {
        double temperature_2m = 0; // °C, unrounded
        int weather_code = -1;     // WMO-style code, −1 when unknown
        int is_day = 1;            // 1 by day, 0 by night

        bool day() const { return is_day == 1; }
        bool operator==(const Current&) const = default;

        QJsonObject toJson() const;
        static std::optional<Current> fromJson(const QJsonObject& object);
    };
};
