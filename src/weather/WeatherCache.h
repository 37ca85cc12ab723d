#pragma once

#include "weather/WeatherResponse.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

// The last forecast document received, for the place it belongs to: lets the card show weather
// without a request and across restarts. Stored as JSON under "weather.met.cache.v1".
struct WeatherCache
{
    static constexpr const char* defaultsKey = "weather.met.cache.v1";

    QString coordinateKey;
    QByteArray data;
    QDateTime expires;
    std::optional<QString> lastModified;
    QDateTime fetchedAt;

    bool operator==(const WeatherCache&) const = default;

    // The stored document's current value; nothing when it does not decode.
    std::optional<WeatherResponse::Current> current(const QDateTime& now) const;

    QByteArray encode() const;
    // Nothing for anything that is not a complete record.
    static std::optional<WeatherCache> decode(const QByteArray& json);
};
