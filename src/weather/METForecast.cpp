#include "weather/METForecast.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

// ISO 8601 as the service sends it ("2026-09-20T01:00:00Z"); anything Qt cannot place in time
// counts as a bad date.
std::optional<QDateTime> isoDate(const QJsonValue& value)
{
    if (!value.isString())
        return std::nullopt;
    const QDateTime date = QDateTime::fromString(value.toString(), Qt::ISODate);
    if (!date.isValid())
        return std::nullopt;
    return date.toUTC();
}

std::optional<QJsonObject> object(const QJsonObject& parent, QLatin1String key)
{
    const QJsonValue value = parent.value(key);
    if (!value.isObject())
        return std::nullopt;
    return value.toObject();
}

std::optional<METForecast::Step> decodeStep(const QJsonValue& value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject step = value.toObject();
    const auto time = isoDate(step.value(QLatin1String("time")));
    const auto data = object(step, QLatin1String("data"));
    if (!time || !data)
        return std::nullopt;
    const auto instant = object(*data, QLatin1String("instant"));
    const auto details = instant ? object(*instant, QLatin1String("details")) : std::nullopt;
    if (!details)
        return std::nullopt;
    const QJsonValue temperature = details->value(QLatin1String("air_temperature"));
    if (!temperature.isDouble())
        return std::nullopt;

    METForecast::Step result{*time, temperature.toDouble(), std::nullopt};
    // An absent or null hour is the far future's normal shape; a present one must be whole.
    const QJsonValue hour = data->value(QLatin1String("next_1_hours"));
    if (hour.isUndefined() || hour.isNull())
        return result;
    if (!hour.isObject())
        return std::nullopt;
    const auto summary = object(hour.toObject(), QLatin1String("summary"));
    const QJsonValue symbol = summary ? summary->value(QLatin1String("symbol_code")) : QJsonValue();
    if (!symbol.isString())
        return std::nullopt;
    result.symbolCode = symbol.toString();
    return result;
}

} // namespace

std::optional<METForecast> METForecast::decode(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const auto properties = object(document.object(), QLatin1String("properties"));
    if (!properties)
        return std::nullopt;
    const QJsonValue series = properties->value(QLatin1String("timeseries"));
    if (!series.isArray())
        return std::nullopt;

    METForecast forecast;
    const QJsonArray steps = series.toArray();
    forecast.timeseries.reserve(steps.size());
    for (const QJsonValue& value : steps) {
        auto step = decodeStep(value);
        if (!step)
            return std::nullopt;
        forecast.timeseries.append(std::move(*step));
    }
    return forecast;
}

std::optional<WeatherResponse::Current> METForecast::current(const QDateTime& now) const
{
    const Step* chosen = nullptr;
    for (const Step& step : timeseries) {
        // Strictly later only: on equal times the first in document order stays.
        if (step.time <= now && (!chosen || step.time > chosen->time))
            chosen = &step;
    }
    if (!chosen || chosen->time.secsTo(now) >= staleAfter)
        return std::nullopt;
    if (!std::isfinite(chosen->airTemperature) || !chosen->symbolCode)
        return std::nullopt;
    return WeatherResponse::Current{chosen->airTemperature, weatherCode(*chosen->symbolCode),
                                    isDay(*chosen->symbolCode)};
}

int METForecast::weatherCode(const QString& symbolCode)
{
    const qsizetype underscore = symbolCode.indexOf(QLatin1Char('_'));
    const QStringView base =
        underscore < 0 ? QStringView(symbolCode) : QStringView(symbolCode).left(underscore);
    if (base.contains(QLatin1String("thunder")))
        return 95;
    if (base.contains(QLatin1String("snow")) || base.contains(QLatin1String("sleet")))
        return 71;
    if (base.contains(QLatin1String("rain")))
        return base.contains(QLatin1String("showers")) ? 80 : 61;
    if (base == QLatin1String("clearsky"))
        return 0;
    if (base == QLatin1String("fair"))
        return 1;
    if (base == QLatin1String("partlycloudy"))
        return 2;
    if (base == QLatin1String("cloudy"))
        return 3;
    if (base == QLatin1String("fog"))
        return 45;
    return -1;
}

int METForecast::isDay(const QString& symbolCode)
{
    return symbolCode.endsWith(QLatin1String("_night")) ? 0 : 1;
}
