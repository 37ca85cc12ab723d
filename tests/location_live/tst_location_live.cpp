#include "FakeWebServer.h"
#include "ForecastSample.h"
#include "LiveGeoClue.h"
#include "TestSupport.h"

#include "platform/linux/LinuxLocation.h"
#include "weather/WeatherStore.h"
#include "weather/WeatherTexts.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

namespace {

// What Nominatim's `reverse` sends for a point in Berlin at city zoom, in German.
QByteArray berlinReverse()
{
    const QJsonObject address{
        {"city", "Berlin"}, {"ISO3166-2-lvl4", "DE-BE"}, {"country", "Deutschland"}, {"country_code", "de"}};
    const QJsonObject place{
        {"place_id", 240109189},
        {"licence", "Data \u00a9 OpenStreetMap contributors, ODbL 1.0. http://osm.org/copyright"},
        {"osm_type", "relation"},
        {"osm_id", 62422},
        {"lat", "52.5170365"},
        {"lon", "13.3888599"},
        {"category", "boundary"},
        {"type", "administrative"},
        {"place_rank", 8},
        {"importance", 0.8875},
        {"addresstype", "city"},
        {"name", "Berlin"},
        {"display_name", "Berlin, Deutschland"},
        {"address", address},
        {"boundingbox", QJsonArray{"52.3382448", "52.6755087", "13.0883450", "13.7611609"}}};
    return QJsonDocument(place).toJson(QJsonDocument::Compact);
}

QList<LocationAuthorization> answers(const QSignalSpy& spy)
{
    QList<LocationAuthorization> list;
    for (const QList<QVariant>& arguments : spy)
        list.append(arguments.first().value<LocationAuthorization>());
    return list;
}

// A weather store on the real location service, with manual time, real settings and a local
// server for the forecast and the reverse geocoding.
struct StoreOnGeoClue
{
    StoreOnGeoClue()
    {
        qputenv("BRENLOW_MET_BASE_URL", server.base().toEncoded());
        qputenv("BRENLOW_REVERSE_GEOCODE_BASE_URL", server.base().toEncoded());
        memory.clock.setNow(QDateTime::fromString(QStringLiteral("2026-09-20T01:30:00Z"), Qt::ISODate));
        server.route("/weatherapi", [this](const FakeWebServer::Request&) {
            FakeWebServer::Reply reply = FakeWebServer::json(ForecastSample::twoSteps());
            reply.with("Expires", "Sun, 20 Sep 2026 02:00:00 GMT");
            return reply;
        });
        server.route("/reverse",
                     [](const FakeWebServer::Request&) { return FakeWebServer::json(berlinReverse()); });
        store =
            std::make_unique<WeatherStore>(*domain.defaults, memory.clock, memory.scheduler, location, false);
    }
    ~StoreOnGeoClue()
    {
        store.reset();
        qunsetenv("BRENLOW_MET_BASE_URL");
        qunsetenv("BRENLOW_REVERSE_GEOCODE_BASE_URL");
    }

    MemoryPlatform memory;
    ScratchDomain domain;
    FakeWebServer server;
    LinuxLocation location;
    std::unique_ptr<WeatherStore> store;
};

} // namespace

// The live cases need the services; the rest of the program runs anywhere.
#define REQUIRE_GEOCLUE()                                                                                    \
    do {                                                                                                     \
        if (!m_services)                                                                                     \
            QSKIP(qPrintable(QStringLiteral("GeoClue cannot run here: ") + m_missing));                      \
    } while (false)

// The location path on a real GeoClue 2: its answers as LinuxLocation reads them, and the weather
// store from "use the current location" to a shown forecast, each against services started here.
class LocationLiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        qRegisterMetaType<LocationAuthorization>();
        qRegisterMetaType<LocationFix>();
        m_missing = LiveGeoClue::missing();
        if (!m_missing.isEmpty())
            return;
        m_services = std::make_unique<LiveGeoClue>();
        QVERIFY2(m_services->startBus(), "the private system bus did not start");
    }
    void cleanup()
    {
        if (m_services)
            m_services->stopGeoClue();
    }
    void cleanupTestCase() { m_services.reset(); }

    // How GeoClue's answers are read: a slow GeoClue is not a missing one, and a location
    // without a usable accuracy is no fix.
    void answersAsTheyAreRead()
    {
        using Refusal = GeoClueClient::Refusal;
        QCOMPARE(GeoClueClient::refusal(QStringLiteral("org.freedesktop.DBus.Error.AccessDenied")),
                 Refusal::denied);
        QCOMPARE(GeoClueClient::refusal(QStringLiteral("org.freedesktop.DBus.Error.Spawn.ChildExited")),
                 Refusal::absent);
        QCOMPARE(GeoClueClient::refusal(QStringLiteral("org.freedesktop.DBus.Error.NoReply")),
                 Refusal::failed);
        QCOMPARE(GeoClueClient::refusal(QString()), Refusal::failed);

        const QVariantMap berlin{{"Latitude", 52.52}, {"Longitude", 13.405}, {"Accuracy", 3.0}};
        const LocationFix fix = GeoClueClient::fix(berlin);
        QCOMPARE(fix.latitude, 52.52);
        QCOMPARE(fix.longitude, 13.405);
        QCOMPARE(fix.horizontalAccuracy, 3.0);
        QVariantMap unusable = berlin;
        unusable.remove("Accuracy");
        QVERIFY(GeoClueClient::fix(unusable).horizontalAccuracy < 0);
        unusable = berlin;
        unusable.insert("Accuracy", qQNaN());
        QVERIFY(GeoClueClient::fix(unusable).horizontalAccuracy < 0);
        unusable = berlin;
        unusable.insert("Latitude", 91.0);
        QVERIFY(GeoClueClient::fix(unusable).horizontalAccuracy < 0);
    }

    // Without GeoClue nothing can locate: that is decided at once, and the store asks no server.
    void withoutGeoClueNothingLocates()
    {
        REQUIRE_GEOCLUE();
        m_services->stopGeoClue();
        QVERIFY(!LiveGeoClue::onBus());
        {
            LinuxLocation location;
            QSignalSpy changes(&location, &Location::authorizationChanged);
            QSignalSpy failures(&location, &Location::locationFailed);
            location.requestAuthorization();
            QTRY_COMPARE_WITH_TIMEOUT(location.authorization(), LocationAuthorization::restricted, 5000);
            QCOMPARE(answers(changes), QList{LocationAuthorization::restricted});
            location.requestLocation();
            QTRY_COMPARE_WITH_TIMEOUT(failures.size(), 1, 5000);
        }

        StoreOnGeoClue rig;
        rig.store->useCurrentLocation();
        QTRY_COMPARE_WITH_TIMEOUT(rig.store->authorization(), LocationAuthorization::restricted, 5000);
        QCOMPARE(rig.store->status(), WeatherTexts::refusedOnChange());
        QVERIFY(!rig.store->busy());
        QVERIFY(!rig.store->place());
        QTest::qWait(100);
        QVERIFY(rig.server.requests().isEmpty());
    }

    // The desktop allows locating: the state goes from not determined to authorized, and a fix
    // is the NMEA receiver's position with the accuracy GeoClue gives it.
    void allowedGivesAFix()
    {
        REQUIRE_GEOCLUE();
        QVERIFY2(m_services->startGeoClue(LiveGeoClue::Nmea::berlin), m_services->geoclueLog().constData());
        QVERIFY(m_services->startAgent(LiveGeoClue::Agent::allow));

        LinuxLocation location;
        QSignalSpy changes(&location, &Location::authorizationChanged);
        QSignalSpy fixes(&location, &Location::locationUpdated);
        QSignalSpy failures(&location, &Location::locationFailed);
        QCOMPARE(location.authorization(), LocationAuthorization::notDetermined);
        location.requestAuthorization();
        QTRY_COMPARE_WITH_TIMEOUT(location.authorization(), LocationAuthorization::authorized, 5000);
        QCOMPARE(answers(changes), QList{LocationAuthorization::authorized});

        location.requestLocation();
        QTRY_COMPARE_WITH_TIMEOUT(fixes.size(), 1, 5000);
        const auto fix = fixes.first().first().value<LocationFix>();
        QVERIFY2(qAbs(fix.latitude - 52.52) < 1e-4, qPrintable(QString::number(fix.latitude, 'f', 6)));
        QVERIFY2(qAbs(fix.longitude - 13.405) < 1e-4, qPrintable(QString::number(fix.longitude, 'f', 6)));
        QVERIFY2(fix.horizontalAccuracy > 0 && fix.horizontalAccuracy < 100,
                 qPrintable(QString::number(fix.horizontalAccuracy)));
        // One fix per request: nothing more comes while GeoClue keeps reading the receiver.
        QTest::qWait(1500);
        QCOMPARE(fixes.size(), 1);
        QCOMPARE(failures.size(), 0);
        QCOMPARE(answers(changes), QList{LocationAuthorization::authorized});
    }

    // A GeoClue that has no position yet when the client starts: the fix comes as its update,
    // and starting counts as the authorization.
    void firstFixOfAFreshGeoClue()
    {
        REQUIRE_GEOCLUE();
        QVERIFY2(m_services->startGeoClue(LiveGeoClue::Nmea::berlin), m_services->geoclueLog().constData());
        QVERIFY(m_services->startAgent(LiveGeoClue::Agent::allow));
        QCOMPARE(m_services->nmea().count("client"), 0);

        LinuxLocation location;
        QSignalSpy changes(&location, &Location::authorizationChanged);
        QSignalSpy fixes(&location, &Location::locationUpdated);
        location.requestLocation();
        QTRY_COMPARE_WITH_TIMEOUT(fixes.size(), 1, 5000);
        QCOMPARE(answers(changes), QList{LocationAuthorization::authorized});
        const auto fix = fixes.first().first().value<LocationFix>();
        QVERIFY(qAbs(fix.latitude - 52.52) < 1e-4 && qAbs(fix.longitude - 13.405) < 1e-4);
    }

    // "Aktuellen Standort verwenden" end to end: GeoClue's fix, the rounded point to the
    // geocoder, the place saved, the forecast asked for the same rounded point and shown.
    void storeLocatesAndShowsTheWeather()
    {
        REQUIRE_GEOCLUE();
        QVERIFY2(m_services->startGeoClue(LiveGeoClue::Nmea::berlin), m_services->geoclueLog().constData());
        QVERIFY(m_services->startAgent(LiveGeoClue::Agent::allow));
        StoreOnGeoClue rig;
        WeatherStore& store = *rig.store;

        store.useCurrentLocation();
        QTRY_VERIFY_WITH_TIMEOUT(store.current().has_value(), 8000);
        QCOMPARE(store.authorization(), LocationAuthorization::authorized);
        QVERIFY(store.place().has_value());
        QCOMPARE(store.place()->name, QStringLiteral("Berlin"));
        QCOMPARE(store.place()->country, QStringLiteral("Deutschland"));
        QCOMPARE(store.place()->latitude, 52.52);
        QCOMPARE(store.place()->longitude, 13.41);
        QCOMPARE(store.temperature(), QStringLiteral("-2°"));
        QVERIFY2(store.status().endsWith(QStringLiteral(" · Modellprognose für die aktuelle Stunde")),
                 qPrintable(store.status()));
        QVERIFY(!store.busy());

        // Saved: a store made again over the same settings knows the place.
        const auto saved = rig.domain.defaults->dataValue(QString::fromLatin1(WeatherPlace::defaultsKey));
        QVERIFY(saved.has_value());
        QCOMPARE(WeatherPlace::decode(*saved), store.place());

        // What left the machine: one reverse lookup and one forecast, both with the rounded point.
        const QList<FakeWebServer::Request>& requests = rig.server.requests();
        QCOMPARE(requests.size(), 2);
        const FakeWebServer::Request& reverse = requests.at(0);
        QCOMPARE(reverse.url.path(), QStringLiteral("/reverse"));
        const QUrlQuery query(reverse.url);
        QCOMPARE(query.queryItemValue(QStringLiteral("format")), QStringLiteral("jsonv2"));
        QCOMPARE(query.queryItemValue(QStringLiteral("accept-language")), QStringLiteral("de"));
        QCOMPARE(query.queryItemValue(QStringLiteral("lat")), QStringLiteral("52.52"));
        QCOMPARE(query.queryItemValue(QStringLiteral("lon")), QStringLiteral("13.41"));
        QVERIFY2(reverse.headers.value("user-agent").startsWith("Brenlow/"),
                 reverse.headers.value("user-agent"));
        const FakeWebServer::Request& forecast = requests.at(1);
        QCOMPARE(forecast.url.path(), QStringLiteral("/weatherapi/locationforecast/2.0/compact"));
        QCOMPARE(forecast.url.query(), QStringLiteral("lat=52.52&lon=13.41"));
        const QRegularExpression twoDecimals(QStringLiteral("^-?\\d+\\.\\d\\d$"));
        for (const FakeWebServer::Request& request : requests) {
            const QUrlQuery sent(request.url);
            for (const char* key : {"lat", "lon"})
                QVERIFY2(twoDecimals.match(sent.queryItemValue(QString::fromLatin1(key))).hasMatch(),
                         request.url.toEncoded().constData());
        }
    }

    // The desktop's location switch is off: GeoClue refuses, and the store says so without
    // asking any server. Switched on again, the next refresh finds it out.
    void refusedByTheDesktop()
    {
        REQUIRE_GEOCLUE();
        QVERIFY2(m_services->startGeoClue(LiveGeoClue::Nmea::berlin), m_services->geoclueLog().constData());
        QVERIFY(m_services->startAgent(LiveGeoClue::Agent::deny));
        {
            LinuxLocation location;
            QSignalSpy changes(&location, &Location::authorizationChanged);
            location.requestAuthorization();
            QTRY_COMPARE_WITH_TIMEOUT(location.authorization(), LocationAuthorization::denied, 5000);
            QCOMPARE(answers(changes), QList{LocationAuthorization::denied});
        }

        StoreOnGeoClue rig;
        rig.store->useCurrentLocation();
        QTRY_COMPARE_WITH_TIMEOUT(rig.store->authorization(), LocationAuthorization::denied, 5000);
        QCOMPARE(rig.store->status(), WeatherTexts::refusedOnChange());
        QVERIFY(!rig.store->busy());
        QVERIFY(!rig.store->place());
        QTest::qWait(100);
        QVERIFY(rig.server.requests().isEmpty());

        rig.store->refresh();
        QCOMPARE(rig.store->status(), WeatherTexts::refusedOnRefresh());
        QTest::qWait(200);
        QCOMPARE(rig.store->authorization(), LocationAuthorization::denied);
        QVERIFY(rig.server.requests().isEmpty());

        QVERIFY(m_services->startAgent(LiveGeoClue::Agent::allow));
        rig.store->refresh();
        QTRY_VERIFY_WITH_TIMEOUT(rig.store->current().has_value(), 8000);
        QCOMPARE(rig.store->authorization(), LocationAuthorization::authorized);
        QCOMPARE(rig.store->place()->name, QStringLiteral("Berlin"));
        QCOMPARE(rig.server.requests().size(), 2);
    }

    // Allowed, but the receiver never has a fix: the store gives up after its 20 seconds (of
    // manual time) and asks no server.
    void noFixTimesOut()
    {
        REQUIRE_GEOCLUE();
        QVERIFY2(m_services->startGeoClue(LiveGeoClue::Nmea::silent), m_services->geoclueLog().constData());
        QVERIFY(m_services->startAgent(LiveGeoClue::Agent::allow));
        StoreOnGeoClue rig;
        WeatherStore& store = *rig.store;

        store.useCurrentLocation();
        QTRY_COMPARE_WITH_TIMEOUT(store.status(), WeatherTexts::locating(), 5000);
        QCOMPARE(store.authorization(), LocationAuthorization::authorized);
        QVERIFY(store.busy());
        QTRY_VERIFY_WITH_TIMEOUT(m_services->nmea().count("client") > 0, 5000);
        rig.memory.scheduler.advance(WeatherStore::locationTimeout - 0.5);
        QCOMPARE(store.status(), WeatherTexts::locating());
        rig.memory.scheduler.advance(0.5);
        QCOMPARE(store.status(), WeatherTexts::locationTimedOut());
        QVERIFY(!store.busy());
        QVERIFY(!store.place());
        QVERIFY(rig.server.requests().isEmpty());
    }

private:
    QString m_missing;
    std::unique_ptr<LiveGeoClue> m_services;
};

QTEST_GUILESS_MAIN(LocationLiveTest)
#include "tst_location_live.moc"
