#pragma once

#include "weather/WeatherResponse.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// The few fields of MET Norway's compact Locationforecast document that the card uses, and the
// choice of the step that describes the present moment.
struct METForecast
{
    struct Step
    {
        QDateTime time;
        double airTemperature = 0;
        // next_1_hours.summary.symbol_code; absent on far-future steps.
        std::optional<QString> symbolCode;
    };

    // Steps in document order (the service's order is not relied upon).
    QList<Step> timeseries;

    // The document, or nothing when a required key is missing, has the wrong type or a date does
    // not parse. Unknown keys are ignored.
    static std::optional<METForecast> decode(const QByteArray& json);

    // The latest step at or before `now`, when it is less than 90 minutes old and complete.
    std::optional<WeatherResponse::Current> current(const QDateTime& now) const;

    // The WMO-style code of a MET symbol ("lightrainshowers_day" → 80), −1 when unknown.
    static int weatherCode(const QString& symbolCode);
    // 0 for symbols ending in "_night", else 1.
    static int isDay(const QString& symbolCode);

    static constexpr qint64 staleAfter = 5400;
};
