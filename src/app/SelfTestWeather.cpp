// Self-test groups for the weather: the forecast's decoding and rules, and the store on private
// state (a fresh cache is shown without any request).
#include "app/SelfTest.h"

#include "common/BoundedDownload.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"
#include "weather/METForecast.h"
#include "weather/WeatherCache.h"
#include "weather/WeatherCode.h"
#include "weather/WeatherHTTP.h"
#include "weather/WeatherStore.h"

#include <QUuid>

namespace {

QDateTime at(const char* iso)
{
    return QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate);
}

const QByteArray sample =
    R"({"properties":{"timeseries":[)"
    R"({"time":"2026-09-20T01:00:00Z","data":{"instant":{"details":{"air_temperature":-2.3}},"next_1_hours":{"summary":{"symbol_code":"snow_night"}}}},)"
    R"({"time":"2026-09-20T02:00:00Z","data":{"instant":{"details":{"air_temperature":4}},"next_1_hours":{"summary":{"symbol_code":"clearsky_day"}}}}]}})";

} // namespace

namespace SelfTestGroups {

QString metForecast()
{
    const auto forecast = METForecast::decode(sample);
    selfCheck(forecast.has_value(), "the sample decodes");
    const auto night = forecast->current(at("2026-09-20T01:30:00Z"));
    selfCheck(night && night->temperature_2m == -2.3 && night->weather_code == 71 && night->is_day == 0,
              "01:30 is snow at night");
    selfCheck(WeatherCode::symbol(71, false) == u"cloud.snow.fill" && WeatherCode::description(0) == u"Klar",
              "codes map to texts and symbols");
    selfCheck(!forecast->current(at("2026-09-19T23:30:00Z")) &&
                  !forecast->current(at("2026-09-20T03:30:00Z")),
              "future and stale steps give nothing");
    selfCheck(!METForecast::decode(sample.left(sample.size() - 3)), "a truncated document gives nothing");

    selfCheck(WeatherHTTP::key(52.52001, 13.40001) == u"52.52,13.40", "coordinates go out with two decimals");
    const QDateTime now = at("2026-09-20T01:30:00Z");
    HttpAnswer busy;
    busy.hasResponse = true;
    busy.status = 429;
    busy.headers = {{"Retry-After", "60"}};
    selfCheck(WeatherHTTP::retryDate(now, &busy) == now.addSecs(3600), "a 429 pauses an hour");
    selfCheck(WeatherHTTP::retryDate(now, nullptr) == now.addSecs(300), "a failure pauses five minutes");
    HttpAnswer fresh;
    fresh.hasResponse = true;
    fresh.status = 200;
    fresh.headers = {{"Expires", "Sun, 20 Sep 2026 03:00:00 GMT"}};
    selfCheck(WeatherHTTP::expiry(now, fresh) == now.addSecs(5400), "Expires sets the cache's life");
    return QStringLiteral("MET forecast decoding and HTTP rules");
}

QString weatherStore()
{
    const QString domain =
        QStringLiteral("Brenlow.WeatherTests.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        Defaults defaults(domain);
        MemoryPlatform memory;
        memory.clock.setNow(at("2026-09-20T01:30:00Z"));
        {
            WeatherStore store(defaults, memory.clock, memory.scheduler, memory.location, false);
            selfCheck(!store.place() && !store.automatic() &&
                          store.status() == u"Standort verwenden oder eine Stadt auswählen.",
                      "a fresh store has nothing chosen");
            store.setSearchText(QStringLiteral(" a "));
            store.search();
            selfCheck(store.status() == u"Mindestens zwei Buchstaben eingeben." &&
                          memory.location.geocodeTexts().isEmpty(),
                      "short searches ask nobody");
        }
        // A place with a fresh forecast is shown at once and asks nobody.
        const WeatherCache cache{QStringLiteral("52.52,13.41"), sample, at("2026-09-20T02:00:00Z"),
                                 std::nullopt, at("2026-09-20T01:10:00Z")};
        defaults.setData(QString::fromLatin1(WeatherCache::defaultsKey), cache.encode());
        WeatherStore store(defaults, memory.clock, memory.scheduler, memory.location, false);
        store.select(WeatherPlace{0, QStringLiteral("Berlin"), 52.52, 13.41, std::nullopt, std::nullopt});
        selfCheck(store.requestCount() == 0 && !store.busy() && store.temperature() == u"-2°" &&
                      store.status() == u"Schnee · Modellprognose für die aktuelle Stunde",
                  "a fresh cache is shown without a request");
        selfCheck(defaults.boolValue(QStringLiteral("weather.automatic")) == false &&
                      defaults.contains(QStringLiteral("weather.place")),
                  "the chosen place is stored");
        store.disable();
        selfCheck(!defaults.contains(QStringLiteral("weather.place")) &&
                      !defaults.contains(QString::fromLatin1(WeatherCache::defaultsKey)) && !store.current(),
                  "switching off forgets place and cache");
    }
    Defaults(domain).removeDomain();
    return QStringLiteral("Weather store");
}

} // namespace SelfTestGroups
