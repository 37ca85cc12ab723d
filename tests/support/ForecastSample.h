#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

// Forecast documents in the shape MET Norway's compact Locationforecast sends: hourly steps with
// the next hour's symbol, then six-hourly steps without it, the units and the point.
namespace ForecastSample {

struct StepSpec
{
    QString time;
    double temperature;
    QString symbol; // empty: no next_1_hours
};

inline QJsonObject stepObject(const QDateTime& time, double temperature, const QString& symbol)
{
    QJsonObject details{{"air_pressure_at_sea_level", 1013.2}, {"air_temperature", temperature},
                        {"cloud_area_fraction", 41.4},         {"relative_humidity", 77.3},
                        {"wind_from_direction", 233.1},        {"wind_speed", 4.2}};
    QJsonObject data{
        {"instant", QJsonObject{{"details", details}}},
        {"next_6_hours", QJsonObject{{"summary", QJsonObject{{"symbol_code", "cloudy"}}},
                                     {"details", QJsonObject{{"precipitation_amount", 0.4}}}}},
        {"next_12_hours", QJsonObject{{"summary", QJsonObject{{"symbol_code", "partlycloudy_day"}}},
                                      {"details", QJsonObject{}}}}};
    if (!symbol.isEmpty())
        data.insert("next_1_hours", QJsonObject{{"summary", QJsonObject{{"symbol_code", symbol}}},
                                                {"details", QJsonObject{{"precipitation_amount", 0.1}}}});
    return QJsonObject{{"time", time.toUTC().toString(Qt::ISODate)}, {"data", data}};
}

inline QByteArray wrap(const QJsonArray& steps)
{
    QJsonObject meta{{"updated_at", "2026-09-20T00:31:12Z"},
                     {"units", QJsonObject{{"air_pressure_at_sea_level", "hPa"},
                                           {"air_temperature", "celsius"},
                                           {"cloud_area_fraction", "%"},
                                           {"precipitation_amount", "mm"},
                                           {"relative_humidity", "%"},
                                           {"wind_from_direction", "degrees"},
                                           {"wind_speed", "m/s"}}}};
    QJsonObject root{
        {"type", "Feature"},
        {"geometry", QJsonObject{{"type", "Point"}, {"coordinates", QJsonArray{13.4, 52.52, 34}}}},
        {"properties", QJsonObject{{"meta", meta}, {"timeseries", steps}}}};
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

// The document every weather test knows: 01:00 UTC −2.3 °C snow at night, 02:00 UTC 4 °C clear.
inline QByteArray twoSteps()
{
    return wrap({stepObject(QDateTime::fromString("2026-09-20T01:00:00Z", Qt::ISODate), -2.3, "snow_night"),
                 stepObject(QDateTime::fromString("2026-09-20T02:00:00Z", Qt::ISODate), 4, "clearsky_day")});
}

// A realistic document: `hourly` hourly steps from `start`, then six-hourly steps for ten days.
inline QByteArray realistic(const QDateTime& start, int hourly = 60)
{
    static const QStringList symbols = {
        "clearsky_day", "fair_day",       "partlycloudy_day",   "cloudy", "lightrain", "rainshowers_day",
        "fog",          "clearsky_night", "partlycloudy_night", "snow"};
    QJsonArray steps;
    for (int i = 0; i < hourly; ++i)
        steps.append(
            stepObject(start.addSecs(3600 * i), 12.0 + (i % 9) * 0.7 - 3, symbols.at(i % symbols.size())));
    for (int i = 0; i < 20; ++i)
        steps.append(stepObject(start.addSecs(3600 * hourly + 21600 * i), 9.5, QString()));
    return wrap(steps);
}

} // namespace ForecastSample
