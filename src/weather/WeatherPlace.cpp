#include "weather/WeatherPlace.h"

#include "settings/Json.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

double WeatherPlace::round(double degrees)
{
    return std::round(degrees * 100.0) / 100.0;
}

QByteArray WeatherPlace::encode() const
{
    QJsonObject object{{QStringLiteral("id"), id},
                       {QStringLiteral("name"), name},
                       {QStringLiteral("latitude"), latitude},
                       {QStringLiteral("longitude"), longitude}};
    if (country)
        object.insert(QStringLiteral("country"), *country);
    if (admin1)
        object.insert(QStringLiteral("admin1"), *admin1);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<WeatherPlace> WeatherPlace::decode(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    const QJsonValue id = object.value(QLatin1String("id"));
    const auto name = Json::requiredString(object, QStringLiteral("name"));
    const QJsonValue latitude = object.value(QLatin1String("latitude"));
    const QJsonValue longitude = object.value(QLatin1String("longitude"));
    if (!id.isDouble() || !name || !latitude.isDouble() || !longitude.isDouble())
        return std::nullopt;
    if (!std::isfinite(latitude.toDouble()) || !std::isfinite(longitude.toDouble()))
        return std::nullopt;
    WeatherPlace place{id.toInt(),           *name,        latitude.toDouble(),
                       longitude.toDouble(), std::nullopt, std::nullopt};
    const auto optionalText = [&object](QLatin1String key, std::optional<QString>& into) {
        const QJsonValue value = object.value(key);
        if (value.isString())
            into = value.toString();
        return value.isString() || value.isUndefined() || value.isNull();
    };
    if (!optionalText(QLatin1String("country"), place.country) ||
        !optionalText(QLatin1String("admin1"), place.admin1))
        return std::nullopt;
    return place;
}
