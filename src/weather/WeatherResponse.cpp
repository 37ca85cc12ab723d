#include "weather/WeatherResponse.h"

#include <cmath>

QJsonObject WeatherResponse::Current::toJson() const
{
    return QJsonObject{{QStringLiteral("temperature_2m"), temperature_2m},
                       {QStringLiteral("weather_code"), weather_code},
                       {QStringLiteral("is_day"), is_day}};
}

std::optional<WeatherResponse::Current> WeatherResponse::Current::fromJson(const QJsonObject& object)
{
    const QJsonValue temperature = object.value(QLatin1String("temperature_2m"));
    const QJsonValue code = object.value(QLatin1String("weather_code"));
    const QJsonValue day = object.value(QLatin1String("is_day"));
    if (!temperature.isDouble() || !code.isDouble() || !day.isDouble())
        return std::nullopt;
    const double c = code.toDouble();
    const double d = day.toDouble();
    if (c != std::floor(c) || d != std::floor(d))
        return std::nullopt;
    return Current{temperature.toDouble(), int(c), int(d)};
}
