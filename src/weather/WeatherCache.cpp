#include "weather/WeatherCache.h"

#include "settings/Json.h"
#include "weather/METForecast.h"

#include <QJsonDocument>
#include <QJsonObject>

std::optional<WeatherResponse::Current> WeatherCache::current(const QDateTime& now) const
{
    const auto forecast = METForecast::decode(data);
    if (!forecast)
        return std::nullopt;
    return forecast->current(now);
}

QByteArray WeatherCache::encode() const
{
    QJsonObject object{{QStringLiteral("coordinateKey"), coordinateKey},
                       {QStringLiteral("data"), Json::encodeData(data)},
                       {QStringLiteral("expires"), Json::encodeDate(expires)},
                       {QStringLiteral("fetchedAt"), Json::encodeDate(fetchedAt)}};
    if (lastModified)
        object.insert(QStringLiteral("lastModified"), *lastModified);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<WeatherCache> WeatherCache::decode(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    const auto key = Json::requiredString(object, QStringLiteral("coordinateKey"));
    const auto data = Json::decodeData(object.value(QLatin1String("data")));
    const auto expires = Json::decodeDate(object.value(QLatin1String("expires")));
    const auto fetchedAt = Json::decodeDate(object.value(QLatin1String("fetchedAt")));
    if (!key || !data || !expires || !fetchedAt)
        return std::nullopt;
    WeatherCache cache{*key, *data, *expires, std::nullopt, *fetchedAt};
    const QJsonValue modified = object.value(QLatin1String("lastModified"));
    if (modified.isString())
        cache.lastModified = modified.toString();
    else if (!modified.isUndefined() && !modified.isNull())
        return std::nullopt;
    return cache;
}
