#include "ForecastSample.h"
#include "WeatherTests.h"

#include "common/BoundedDownload.h"
#include "common/ServiceEndpoints.h"
#include "weather/METForecast.h"
#include "weather/WeatherCache.h"
#include "weather/WeatherCode.h"
#include "weather/WeatherHTTP.h"
#include "weather/WeatherPlace.h"

#include <QTest>

#include <cmath>

namespace {

HttpAnswer answer(int status, QList<QPair<QByteArray, QByteArray>> headers = {})
{
    HttpAnswer result;
    result.hasResponse = true;
    result.status = status;
    result.headers = std::move(headers);
    return result;
}

QByteArray withStep(const QString& time, const QByteArray& temperature, const QByteArray& hour)
{
    return R"({"properties":{"timeseries":[{"time":")" + time.toUtf8() +
           R"(","data":{"instant":{"details":{"air_temperature":)" + temperature + "}}" + hour + "}}]}}";
}

} // namespace

// Decoding MET's document, choosing the present step, the codes' texts and symbols, and the
// request, header and cache rules around it.
class ForecastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosesThePresentStep()
    {
        const auto forecast = METForecast::decode(ForecastSample::twoSteps());
        QVERIFY(forecast);
        const auto night = forecast->current(utc("2026-09-20T01:30:00Z"));
        QVERIFY(night);
        QCOMPARE(night->temperature_2m, -2.3);
        QCOMPARE(night->weather_code, 71);
        QCOMPARE(night->is_day, 0);
        QCOMPARE(WeatherCode::description(night->weather_code), QStringLiteral("Schnee"));
        QCOMPARE(WeatherCode::symbol(night->weather_code, night->day()), QStringLiteral("cloud.snow.fill"));

        const auto day = forecast->current(utc("2026-09-20T02:30:00Z"));
        QVERIFY(day);
        QCOMPARE(day->temperature_2m, 4.0);
        QCOMPARE(WeatherCode::description(day->weather_code), QStringLiteral("Klar"));
        QCOMPARE(WeatherCode::symbol(day->weather_code, day->day()), QStringLiteral("sun.max.fill"));

        // Only future data, stale data, and the boundary of ninety minutes.
        QVERIFY(!forecast->current(utc("2026-09-19T23:30:00Z")));
        QVERIFY(!forecast->current(utc("2026-09-20T05:30:00Z")));
        QVERIFY(forecast->current(utc("2026-09-20T03:29:59Z")));
        QVERIFY(!forecast->current(utc("2026-09-20T03:30:00Z")));
    }

    void orderAndTiesFollowTime()
    {
        // Out of order: the latest past step wins wherever it stands; on a tie the first stays.
        const QByteArray doc =
            ForecastSample::wrap({ForecastSample::stepObject(utc("2026-09-20T02:00:00Z"), 7, "fog"),
                                  ForecastSample::stepObject(utc("2026-09-20T01:00:00Z"), 1, "cloudy"),
                                  ForecastSample::stepObject(utc("2026-09-20T02:00:00Z"), 9, "rain"),
                                  ForecastSample::stepObject(utc("2026-09-20T04:00:00Z"), 3, "sleet")});
        const auto current = METForecast::decode(doc)->current(utc("2026-09-20T02:10:00Z"));
        QVERIFY(current);
        QCOMPARE(current->temperature_2m, 7.0);
        QCOMPARE(current->weather_code, 45);
        // An offset in the time is the same instant.
        const auto shifted = METForecast::decode(withStep(
            "2026-09-20T03:00:00+02:00", "5", R"(,"next_1_hours":{"summary":{"symbol_code":"fair_day"}})"));
        QVERIFY(shifted);
        QCOMPARE(shifted->current(utc("2026-09-20T01:10:00Z"))->weather_code, 1);
    }

    void symbolCodes_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("weather");
        QTest::addColumn<int>("day");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("showers at night") << "rainshowers_night" << 80 << 0 << "cloud.rain.fill";
        QTest::newRow("snow before rain") << "heavysnowshowers_day" << 71 << 1 << "cloud.snow.fill";
        QTest::newRow("thunder") << "rainandthunder" << 95 << 1 << "cloud.bolt.rain.fill";
        QTest::newRow("sleet") << "sleet" << 71 << 1 << "cloud.snow.fill";
        QTest::newRow("partly cloudy night") << "partlycloudy_night" << 2 << 0 << "cloud.moon.fill";
        QTest::newRow("clear night") << "clearsky_night" << 0 << 0 << "moon.stars.fill";
        QTest::newRow("light rain") << "lightrain" << 61 << 1 << "cloud.rain.fill";
        QTest::newRow("cloudy has no night") << "cloudy" << 3 << 1 << "cloud.fill";
        QTest::newRow("fog") << "fog" << 45 << 1 << "cloud.fog.fill";
        QTest::newRow("suffix does not count") << "fair_polartwilight" << 1 << 1 << "cloud.sun.fill";
        QTest::newRow("unknown") << "volcanicash_day" << -1 << 1 << "cloud";
        QTest::newRow("empty") << "" << -1 << 1 << "cloud";
    }
    void symbolCodes()
    {
        QFETCH(QString, code);
        QFETCH(int, weather);
        QFETCH(int, day);
        QFETCH(QString, symbol);
        QCOMPARE(METForecast::weatherCode(code), weather);
        QCOMPARE(METForecast::isDay(code), day);
        QCOMPARE(WeatherCode::symbol(weather, day == 1), symbol);
    }

    void descriptionsCoverTheRanges()
    {
        const QList<QPair<int, const char*>> table = {{0, "Klar"},
                                                      {1, "Heiter bis wolkig"},
                                                      {2, "Heiter bis wolkig"},
                                                      {3, "Bewölkt"},
                                                      {45, "Nebel"},
                                                      {48, "Nebel"},
                                                      {51, "Nieselregen"},
                                                      {57, "Nieselregen"},
                                                      {61, "Regen"},
                                                      {67, "Regen"},
                                                      {71, "Schnee"},
                                                      {77, "Schnee"},
                                                      {80, "Regenschauer"},
                                                      {82, "Regenschauer"},
                                                      {85, "Schneeschauer"},
                                                      {86, "Schneeschauer"},
                                                      {95, "Gewitter"},
                                                      {99, "Gewitter"},
                                                      {-1, "Wetter"},
                                                      {4, "Wetter"},
                                                      {58, "Wetter"},
                                                      {83, "Wetter"},
                                                      {100, "Wetter"}};
        for (const auto& [code, text] : table)
            QCOMPARE(WeatherCode::description(code), QString::fromUtf8(text));
        QCOMPARE(WeatherCode::symbol(3, false), QStringLiteral("cloud.fill"));
        QCOMPARE(WeatherCode::symbol(86, false), QStringLiteral("cloud.snow.fill"));
        QCOMPARE(WeatherCode::symbol(52, true), QStringLiteral("cloud.rain.fill"));
    }

    void badDocumentsGiveNothing_data()
    {
        QTest::addColumn<QByteArray>("json");
        const QByteArray hour = R"(,"next_1_hours":{"summary":{"symbol_code":"fog"}})";
        const QByteArray good = withStep("2026-09-20T01:00:00Z", "1", hour);
        QTest::newRow("truncated") << good.left(good.size() - 7);
        QTest::newRow("not an object") << QByteArray("[1,2]");
        QTest::newRow("no properties") << QByteArray(R"({"type":"Feature"})");
        QTest::newRow("timeseries not a list") << QByteArray(R"({"properties":{"timeseries":{}}})");
        QTest::newRow("temperature as text") << withStep("2026-09-20T01:00:00Z", "\"1\"", hour);
        QTest::newRow("temperature missing") << QByteArray(
            R"({"properties":{"timeseries":[{"time":"2026-09-20T01:00:00Z","data":{"instant":{"details":{}}}}]}})");
        QTest::newRow("bad date") << withStep("2026-09-31T01:00:00Z", "1", hour);
        QTest::newRow("date as number") << QByteArray(
            R"({"properties":{"timeseries":[{"time":1,"data":{"instant":{"details":{"air_temperature":1}}}}]}})");
        QTest::newRow("symbol not text")
            << withStep("2026-09-20T01:00:00Z", "1", R"(,"next_1_hours":{"summary":{"symbol_code":3}})");
        QTest::newRow("hour without summary")
            << withStep("2026-09-20T01:00:00Z", "1", R"(,"next_1_hours":{})");
    }
    void badDocumentsGiveNothing()
    {
        QFETCH(QByteArray, json);
        QVERIFY(!METForecast::decode(json));
        WeatherCache cache{"52.52,13.40", json, utc("2026-09-20T02:00:00Z"), std::nullopt,
                           utc("2026-09-20T01:00:00Z")};
        QVERIFY(!cache.current(utc("2026-09-20T01:30:00Z")));
    }

    void decodableButUnusable()
    {
        const QDateTime at = utc("2026-09-20T01:30:00Z");
        // No hour, an explicit null hour, an overflowing temperature: decodes, but no value.
        for (const QByteArray& json : {withStep("2026-09-20T01:00:00Z", "1", ""),
                                       withStep("2026-09-20T01:00:00Z", "1", R"(,"next_1_hours":null)"),
                                       withStep("2026-09-20T01:00:00Z", "1e999",
                                                R"(,"next_1_hours":{"summary":{"symbol_code":"fog"}})"),
                                       withStep("2026-09-20T01:00:00Z", "-1e999",
                                                R"(,"next_1_hours":{"summary":{"symbol_code":"fog"}})")}) {
            const auto forecast = METForecast::decode(json);
            if (forecast)
                QVERIFY2(!forecast->current(at), json.constData());
        }
        // A huge but finite temperature is what the document says.
        const auto huge = METForecast::decode(withStep(
            "2026-09-20T01:00:00Z", "1e308", R"(,"next_1_hours":{"summary":{"symbol_code":"fog"}})"));
        QVERIFY(huge);
        QCOMPARE(huge->current(at)->temperature_2m, 1e308);
        // The realistic document of sixty hours has a value in its first hours and none beyond.
        const QByteArray real = ForecastSample::realistic(utc("2026-09-20T00:00:00Z"));
        QVERIFY(real.size() > 20000);
        QVERIFY(METForecast::decode(real)->current(utc("2026-09-21T10:20:00Z")));
        QVERIFY(!METForecast::decode(real)->current(utc("2026-09-24T10:20:00Z")));
    }

    void requestCarriesKeyAgentAndCondition()
    {
        const WeatherCache cache{"52.52,13.40", ForecastSample::twoSteps(), utc("2026-09-20T02:00:00Z"),
                                 QStringLiteral("Sun, 20 Sep 2026 01:00:00 GMT"),
                                 utc("2026-09-20T01:00:00Z")};
        QCOMPARE(WeatherHTTP::key(52.52001, 13.40001), QStringLiteral("52.52,13.40"));
        QCOMPARE(WeatherHTTP::key(-33.8688, 151.2093), QStringLiteral("-33.87,151.21"));
        const QNetworkRequest request =
            WeatherHTTP::request(52.52001, 13.40001, cache, QUrl("https://api.met.no"));
        QCOMPARE(
            request.url().toString(),
            QStringLiteral("https://api.met.no/weatherapi/locationforecast/2.0/compact?lat=52.52&lon=13.40"));
        QVERIFY(request.rawHeader("User-Agent").startsWith("Brenlow/"));
        QCOMPARE(request.rawHeader("Accept"), QByteArray("application/json"));
        QCOMPARE(request.rawHeader("If-Modified-Since"), QByteArray("Sun, 20 Sep 2026 01:00:00 GMT"));
        QCOMPARE(request.transferTimeout(), 20000);
        // Another place ignores the cache; a base with a path keeps it.
        const QNetworkRequest other =
            WeatherHTTP::request(48.14, 11.58, cache, QUrl("http://127.0.0.1:9/met/"));
        QVERIFY(!other.hasRawHeader("If-Modified-Since"));
        QCOMPARE(other.url().path(), QStringLiteral("/met/weatherapi/locationforecast/2.0/compact"));
    }

    void endpointsAcceptOnlySafeOverrides()
    {
        QVERIFY(ServiceEndpoints::acceptedOverride("http://127.0.0.1:8080").isValid());
        QVERIFY(ServiceEndpoints::acceptedOverride("http://[::1]:8080").isValid());
        QVERIFY(ServiceEndpoints::acceptedOverride("http://localhost:1").isValid());
        QVERIFY(ServiceEndpoints::acceptedOverride("https://met.example.org").isValid());
        QVERIFY(!ServiceEndpoints::acceptedOverride("http://met.example.org").isValid());
        QVERIFY(!ServiceEndpoints::acceptedOverride("http://192.168.1.2").isValid());
        QVERIFY(!ServiceEndpoints::acceptedOverride("ftp://127.0.0.1").isValid());
        QVERIFY(!ServiceEndpoints::acceptedOverride("not a url").isValid());
        qputenv("BRENLOW_MET_BASE_URL", "http://10.0.0.1");
        QCOMPARE(ServiceEndpoints::forecastBase(), QUrl("https://api.met.no"));
        qputenv("BRENLOW_MET_BASE_URL", "http://127.0.0.1:4711");
        QCOMPARE(ServiceEndpoints::forecastBase(), QUrl("http://127.0.0.1:4711"));
        qunsetenv("BRENLOW_MET_BASE_URL");
    }

    void headerDatesExpiryAndBackOff()
    {
        const QDateTime now = utc("2026-09-20T01:30:00Z");
        QCOMPARE(WeatherHTTP::date(QByteArray("Sun, 20 Sep 2026 01:00:00 GMT")), utc("2026-09-20T01:00:00Z"));
        QVERIFY(!WeatherHTTP::date(std::nullopt));
        QVERIFY(!WeatherHTTP::date(QByteArray("20 Sep 2026")));
        QVERIFY(!WeatherHTTP::date(QByteArray("Sun, 31 Sep 2026 01:00:00 GMT")));

        const HttpAnswer busy = answer(429, {{"Retry-After", "7200"}});
        QCOMPARE(WeatherHTTP::retryDate(now, &busy), now.addSecs(7200));
        const HttpAnswer unavailable = answer(503, {{"retry-after", "Sun, 20 Sep 2026 03:00:00 GMT"}});
        QCOMPARE(WeatherHTTP::retryDate(now, &unavailable), now.addSecs(5400));
        const HttpAnswer shortBusy = answer(429, {{"Retry-After", "60"}});
        QCOMPARE(WeatherHTTP::retryDate(now, &shortBusy), now.addSecs(3600));
        const HttpAnswer plain = answer(500);
        QCOMPARE(WeatherHTTP::retryDate(now, &plain), now.addSecs(300));
        QCOMPARE(WeatherHTTP::retryDate(now, nullptr), now.addSecs(300));
        const HttpAnswer garbage = answer(500, {{"Retry-After", "soon"}});
        QCOMPARE(WeatherHTTP::retryDate(now, &garbage), now.addSecs(300));

        QCOMPARE(WeatherHTTP::expiry(now, answer(200, {{"Expires", "Sun, 20 Sep 2026 03:00:00 GMT"}})),
                 now.addSecs(5400));
        QCOMPARE(WeatherHTTP::expiry(now, answer(200, {{"Expires", "Sun, 20 Sep 2026 00:00:00 GMT"}})),
                 now.addSecs(60));
        QCOMPARE(WeatherHTTP::expiry(now, answer(200, {{"Expires", "never"}})), now.addSecs(1800));
        QCOMPARE(WeatherHTTP::expiry(now, answer(200)), now.addSecs(1800));
    }

    void recordsSurviveTheirEncoding()
    {
        const WeatherCache cache{"52.52,13.40", ForecastSample::twoSteps(), utc("2026-09-20T02:00:00Z"),
                                 QStringLiteral("Sun, 20 Sep 2026 01:00:00 GMT"),
                                 utc("2026-09-20T01:10:00Z")};
        const auto back = WeatherCache::decode(cache.encode());
        QVERIFY(back);
        QCOMPARE(*back, cache);
        QCOMPARE(back->current(utc("2026-09-20T01:30:00Z"))->temperature_2m, -2.3);
        QVERIFY(!WeatherCache::decode(R"({"coordinateKey":"1,2","data":"@@","expires":0,"fetchedAt":0})"));
        QVERIFY(!WeatherCache::decode(cache.encode().left(40)));

        const WeatherPlace place{3,      QStringLiteral("東京"),  35.69,
                                 139.69, QStringLiteral("Japan"), std::nullopt};
        QCOMPARE(WeatherPlace::decode(place.encode()), place);
        QVERIFY(!WeatherPlace::decode(R"({"id":0,"name":"X","latitude":"52","longitude":13})"));
        QCOMPARE(WeatherPlace::round(52.520008), 52.52);
        QCOMPARE(WeatherPlace::round(13.404954), 13.4);
        QCOMPARE(WeatherPlace::round(-0.125), -0.13);

        const WeatherResponse::Current current{-2.3, 71, 0};
        QCOMPARE(WeatherResponse::Current::fromJson(current.toJson()), current);
        QVERIFY(current.toJson().contains("temperature_2m"));
    }
};

int runForecastTests(int argc, char** argv)
{
    ForecastTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ForecastTest.moc"
