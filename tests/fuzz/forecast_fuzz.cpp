// libFuzzer target: the forecast decoder and the choice of the present step must take any bytes
// without crashing or tripping a sanitizer.
#include "weather/METForecast.h"
#include "weather/WeatherCache.h"

#include <QByteArray>
#include <QDateTime>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    static const QDateTime now = QDateTime::fromString(QStringLiteral("2026-09-20T01:30:00Z"), Qt::ISODate);
    if (const auto forecast = METForecast::decode(bytes)) {
        for (const auto& step : forecast->timeseries) {
            if (step.symbolCode)
                METForecast::weatherCode(*step.symbolCode);
        }
        forecast->current(now);
    }
    // The same bytes as a stored cache record.
    if (const auto cache = WeatherCache::decode(bytes))
        cache->current(now);
    return 0;
}
