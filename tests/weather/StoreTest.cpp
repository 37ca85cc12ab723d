#include "StoreRig.h"
#include "WeatherTests.h"

#include "weather/WeatherTexts.h"

#include <QSignalSpy>
#include <QTest>

namespace {

bool waitIdle(WeatherStore& store)
{
    return QTest::qWaitFor([&store] { return !store.busy(); }, 30000);
}

Placemark city(const char* name, double latitude, double longitude, const char* country)
{
    Placemark place;
    place.locality = QString::fromUtf8(name);
    place.latitude = latitude;
    place.longitude = longitude;
    place.country = QString::fromUtf8(country);
    return place;
}

} // namespace

// The weather store against a local forecast server and the memory location: choosing a place,
// the forecast's cache, conditional requests and back-off, locating, and switching off.
class StoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void startsEmptyAndRefusesShortSearches()
    {
        StoreRig rig;
        WeatherStore& store = *rig.store;
        QVERIFY(!store.place());
        QVERIFY(!store.automatic());
        QVERIFY(!store.current());
        QCOMPARE(store.status(), WeatherTexts::start());
        QCOMPARE(store.temperature(), QStringLiteral("–°"));
        store.setSearchText(QStringLiteral(" a "));
        store.search();
        QCOMPARE(store.status(), QStringLiteral("Mindestens zwei Buchstaben eingeben."));
        QVERIFY(rig.memory.location.geocodeTexts().isEmpty());
        QVERIFY(!store.searching());
    }

    void searchSelectAndRestartWithoutRequest()
    {
        StoreRig rig;
        rig.memory.location.addPlaces(QStringLiteral("Berlin"),
                                      {city("Berlin", 52.524, 13.4105, "Deutschland"), Placemark{}});
        WeatherStore& store = *rig.store;
        store.setSearchText(QStringLiteral("  Berlin "));
        store.search();
        QVERIFY(store.searching());
        QTRY_VERIFY(!store.searching());
        QCOMPARE(rig.memory.location.geocodeTexts(), QStringList{QStringLiteral("Berlin")});
        QCOMPARE(store.results().size(), 1); // the placemark without a location is skipped
        QCOMPARE(store.status(), QStringLiteral("Passende Stadt auswählen."));
        const WeatherPlace found = store.results().first();
        QCOMPARE(found.latitude, 52.52);
        QCOMPARE(found.longitude, 13.41);

        store.select(found);
        QVERIFY(store.busy());
        QCOMPARE(store.status(), QStringLiteral("Wetter wird aktualisiert …"));
        QVERIFY(waitIdle(store));
        QCOMPARE(store.temperature(), QStringLiteral("-2°"));
        QCOMPARE(store.status(), QStringLiteral("Schnee · Modellprognose für die aktuelle Stunde"));
        QCOMPARE(store.symbol(), QStringLiteral("cloud.snow.fill"));
        QVERIFY(store.results().isEmpty());
        QCOMPARE(rig.server.count("/weatherapi"), 1);
        const auto& sent = rig.server.requests().last();
        QCOMPARE(sent.url.query(), QStringLiteral("lat=52.52&lon=13.41"));
        QVERIFY(sent.headers.value("user-agent").startsWith("Brenlow/"));
        QVERIFY(!sent.headers.contains("if-modified-since"));
        QCOMPARE(rig.domain.defaults->boolValue(QStringLiteral("weather.automatic")), false);

        // A restart shows the stored forecast at once, without asking the server.
        WeatherStore& again = rig.restart(true);
        QCOMPARE(again.place(), found);
        QVERIFY(!again.automatic());
        QTRY_VERIFY(again.current().has_value());
        QCOMPARE(again.temperature(), QStringLiteral("-2°"));
        QCOMPARE(rig.server.count("/weatherapi"), 1);
        QVERIFY(again.refreshInterval() >= 1800 && again.refreshInterval() < 2100);

        // Once expired, the timer asks again, conditionally; a 304 only renews the record.
        rig.forecast = FakeWebServer::Reply{304, {{"Expires", rig.httpDate(1800 + 2100)}}, {}, false};
        rig.memory.scheduler.advance(2100);
        QTRY_COMPARE(rig.server.count("/weatherapi"), 2);
        QVERIFY(waitIdle(again));
        QCOMPARE(rig.server.requests().last().headers.value("if-modified-since"),
                 QByteArray("Sun, 20 Sep 2026 01:00:00 GMT"));
        QCOMPARE(again.cache()->fetchedAt, rig.memory.clock.now());
        // The header has whole seconds.
        QVERIFY(qAbs(again.cache()->expires.msecsTo(rig.memory.clock.now().addSecs(1800))) < 1000);
        QCOMPARE(again.cache()->lastModified, QStringLiteral("Sun, 20 Sep 2026 01:00:00 GMT"));
    }

    void failuresKeepTheWeatherAndPause()
    {
        StoreRig rig;
        WeatherStore& store = *rig.store;
        store.select(berlin());
        QVERIFY(waitIdle(store));
        QVERIFY(store.current());
        const QByteArray good = *rig.storedCache();

        // Busy: an hour at least, the weather stays, the record is not touched.
        rig.memory.clock.advance(1801);
        rig.forecast = FakeWebServer::json("{}", 429);
        rig.forecast.with("Retry-After", "120");
        store.refresh();
        QVERIFY(waitIdle(store));
        QCOMPARE(store.status(),
                 QStringLiteral("Wetterdienst ausgelastet. Abrufe werden vorübergehend pausiert."));
        QCOMPARE(store.retryAfter(), rig.memory.clock.now().addSecs(3600));
        QVERIFY(store.current());
        QCOMPARE(*rig.storedCache(), good);

        // Paused, also across a restart: no request, the time of the next try in the line.
        WeatherStore& again = rig.restart(false);
        QCOMPARE(again.retryAfter(), rig.memory.clock.now().addSecs(3600));
        again.refresh();
        QCOMPARE(again.status(), QStringLiteral("Wetterdienst pausiert. Nächster Versuch ab ") +
                                     again.retryAfter().toLocalTime().toString(QStringLiteral("HH:mm")) +
                                     ".");
        QVERIFY(again.current());
        QCOMPARE(rig.server.count("/weatherapi"), 2);

        // Down: five minutes.
        rig.memory.clock.advance(3601);
        rig.forecast = FakeWebServer::json("oops", 500);
        again.refresh();
        QVERIFY(waitIdle(again));
        QCOMPARE(again.status(),
                 QStringLiteral("Wetter nicht erreichbar. Erneuter Versuch in einigen Minuten."));
        QCOMPARE(again.retryAfter(), rig.memory.clock.now().addSecs(300));

        // A 203 is a success that asks for an update; the pause is forgotten.
        rig.memory.clock.advance(301);
        rig.forecast = rig.ok(ForecastSample::twoSteps(), 203);
        again.refresh();
        QVERIFY(waitIdle(again));
        QCOMPARE(again.status(),
                 QStringLiteral("Klar · Modellprognose für die aktuelle Stunde · Wetteranbindung "
                                "benötigt ein App-Update."));
        QVERIFY(!rig.domain.defaults->contains(QStringLiteral("weather.met.retryAfter")));
        QVERIFY(again.retryAfter() < rig.memory.clock.now());
    }

    void badAnswersAreRefused_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("declared too large") << 0;
        QTest::newRow("streams too large") << 1;
        QTest::newRow("truncated") << 2;
        QTest::newRow("another time") << 3;
        QTest::newRow("304 without record") << 4;
        QTest::newRow("gzip is fine") << 5;
    }
    void badAnswersAreRefused()
    {
        QFETCH(int, kind);
        StoreRig rig;
        const QByteArray big(1'500'000, ' ');
        const QByteArray doc = ForecastSample::twoSteps();
        switch (kind) {
        case 0:
            rig.forecast = rig.ok(doc + big);
            break;
        case 1:
            rig.forecast = rig.ok(doc + QByteArray(5'000'000, ' '));
            rig.forecast.closeWithoutLength = true;
            break;
        case 2:
            rig.forecast = rig.ok(doc.left(doc.size() / 2));
            break;
        case 3:
            rig.forecast = rig.ok(ForecastSample::realistic(utc("2026-09-25T00:00:00Z")));
            break;
        case 4:
            rig.forecast = FakeWebServer::Reply{304, {}, {}, false};
            break;
        case 5:
            rig.forecast = rig.ok(FakeWebServer::gzip(doc));
            rig.forecast.with("Content-Encoding", "gzip");
            break;
        }
        WeatherStore& store = *rig.store;
        store.select(berlin());
        QVERIFY(waitIdle(store));
        if (kind == 5) {
            QCOMPARE(store.temperature(), QStringLiteral("-2°"));
            QCOMPARE(WeatherCache::decode(*rig.storedCache())->data, doc);
            QVERIFY(rig.server.requests().last().headers.value("accept-encoding").contains("gzip"));
            return;
        }
        QCOMPARE(store.status(),
                 QStringLiteral("Wetter nicht erreichbar. Erneuter Versuch in einigen Minuten."));
        QVERIFY(!store.current());
        QVERIFY(!rig.storedCache());
        QCOMPARE(rig.domain.defaults->dateValue(QStringLiteral("weather.met.retryAfter")),
                 rig.memory.clock.now().addSecs(300));
    }

    void stalledServerTimesOut()
    {
        StoreRig rig;
        rig.forecast.stall = true;
        WeatherStore& store = *rig.store;
        store.select(berlin());
        QVERIFY(store.busy());
        // Only one request is ever in flight: refreshing while busy does nothing.
        store.refresh();
        QVERIFY(waitIdle(store));
        QCOMPARE(rig.server.count("/weatherapi"), 1);
        QCOMPARE(store.status(),
                 QStringLiteral("Wetter nicht erreichbar. Erneuter Versuch in einigen Minuten."));
    }

    void placesChangeTheShownWeatherOnlyWhenTheyMove()
    {
        StoreRig rig;
        WeatherStore& store = *rig.store;
        store.select(berlin());
        QVERIFY(waitIdle(store));
        QVERIFY(store.current());

        // The same coordinates keep the weather until the answer comes.
        rig.memory.clock.advance(1900);
        rig.forecast.stall = true;
        WeatherPlace renamed = berlin();
        renamed.name = QStringLiteral("Berlin-Mitte");
        store.select(renamed);
        QVERIFY(store.busy());
        QVERIFY(store.current());
        // Another place clears it at once; its place and the flag are stored.
        WeatherPlace munich{1,     QStringLiteral("München"),     48.14,
                            11.58, QStringLiteral("Deutschland"), std::nullopt};
        store.select(munich);
        QVERIFY(!store.current());
        QCOMPARE(WeatherPlace::decode(*rig.domain.defaults->dataValue(QStringLiteral("weather.place"))),
                 munich);
        // The old record stays for its own place until a new one replaces it.
        QCOMPARE(store.cache()->coordinateKey, QStringLiteral("52.52,13.41"));
    }

    void locatesAndNamesThePlace()
    {
        StoreRig rig;
        MemoryLocation& location = rig.memory.location;
        location.setFix(LocationFix{52.520008, 13.404954, 35});
        Placemark named;
        named.locality = QStringLiteral("Berlin");
        named.administrativeArea = QStringLiteral("Berlin");
        named.country = QStringLiteral("Deutschland");
        location.setReverseAnswer(GeocodeAnswer{{named}, false});
        WeatherStore& store = *rig.store;
        QSignalSpy activation(&store, &WeatherStore::activationRequested);

        store.useCurrentLocation();
        QCOMPARE(activation.size(), 1);
        QCOMPARE(store.status(),
                 QStringLiteral("Standortfreigabe in macOS bestätigen oder eine Stadt suchen."));
        QTRY_VERIFY(store.place().has_value());
        QCOMPARE(store.authorization(), LocationAuthorization::authorized);
        QCOMPARE(store.place()->latitude, 52.52);
        QCOMPARE(store.place()->longitude, 13.4);
        QCOMPARE(store.place()->id, 0);
        QCOMPARE(location.reversePoints().size(), 1);
        QCOMPARE(location.reversePoints().first(), qMakePair(52.52, 13.4));
        QVERIFY(waitIdle(store));
        QCOMPARE(rig.server.requests().last().url.query(), QStringLiteral("lat=52.52&lon=13.40"));
        QVERIFY(store.automatic());
        QCOMPARE(rig.domain.defaults->boolValue(QStringLiteral("weather.automatic")), true);

        // Without a placemark there is no city; a fix without accuracy is ignored until the time-out.
        location.setReverseAnswer(GeocodeAnswer{});
        rig.memory.clock.advance(1900);
        store.refresh();
        QCOMPARE(store.status(), QStringLiteral("Standort wird ermittelt …"));
        QTRY_COMPARE(store.status(),
                     QStringLiteral("Stadt konnte nicht ermittelt werden. Bitte über die Suche auswählen."));
        QVERIFY(!store.busy());
        location.setFix(LocationFix{1, 2, -1});
        store.refresh();
        QTest::qWait(20);
        QVERIFY(store.busy());
        rig.memory.scheduler.advance(20);
        QCOMPARE(store.status(),
                 QStringLiteral("Standort momentan nicht verfügbar. Du kannst eine Stadt auswählen."));
        QVERIFY(!store.busy());
        QVERIFY(location.stops() > 0);
        // A location error.
        location.setFailing(true);
        store.refresh();
        QTRY_COMPARE(store.status(), QStringLiteral("Standort nicht verfügbar. Bitte eine Stadt suchen."));
        // Taking away the permission while automatic.
        location.changeAuthorization(LocationAuthorization::denied);
        QCOMPARE(
            store.status(),
            QStringLiteral("Standort nicht freigegeben. Wähle eine Stadt oder öffne die Ortungsdienste."));
        store.refresh();
        QCOMPARE(
            store.status(),
            QStringLiteral("Standort nicht freigegeben. Stadt suchen oder Ortungsdienste in macOS öffnen."));
        QVERIFY(!store.busy());
    }

    void searchAnswersTellWhatHappened()
    {
        StoreRig rig;
        MemoryLocation& location = rig.memory.location;
        WeatherStore& store = *rig.store;
        location.addPlaces(QStringLiteral("Zürich"), {city("Zürich", 47.36667, 8.55, "Schweiz")});
        location.addPlaces(QStringLiteral("東京"), {city("東京", 35.6895, 139.69171, "日本")});
        store.setSearchText(QStringLiteral("東京"));
        store.search();
        QTRY_VERIFY(!store.searching());
        QCOMPARE(store.results().first().name, QStringLiteral("東京"));
        QCOMPARE(store.results().first().latitude, 35.69);
        store.setSearchText(QStringLiteral("Atlantis"));
        store.search();
        QTRY_COMPARE(store.status(), QStringLiteral("Keine Stadt gefunden."));
        location.setGeocodeFailing(true);
        store.search();
        QTRY_COMPARE(store.status(), QStringLiteral("Stadtsuche nicht verfügbar. Bitte erneut versuchen."));
        QVERIFY(store.results().isEmpty());
        // A newer search replaces the one still running: only its answer counts.
        location.setGeocodeFailing(false);
        location.setHolding(true);
        store.setSearchText(QStringLiteral("Atlantis"));
        store.search();
        store.setSearchText(QStringLiteral("Zürich"));
        store.search();
        location.release();
        QCOMPARE(store.results().size(), 1);
        QCOMPARE(store.results().first().name, QStringLiteral("Zürich"));
    }

    void disableForgetsPlaceAndCacheButNotThePause()
    {
        StoreRig rig;
        WeatherStore& store = *rig.store;
        store.select(berlin());
        QVERIFY(waitIdle(store));
        rig.domain.defaults->setDate(QStringLiteral("weather.met.retryAfter"),
                                     rig.memory.clock.now().addSecs(60));
        store.disable();
        QVERIFY(!store.place());
        QVERIFY(!store.current());
        QVERIFY(!store.cache());
        QCOMPARE(store.status(),
                 QStringLiteral("Wetter ausgeschaltet. Standort verwenden oder Stadt auswählen."));
        QVERIFY(!rig.domain.defaults->contains(QStringLiteral("weather.place")));
        QVERIFY(!rig.domain.defaults->contains(QStringLiteral("weather.met.cache.v1")));
        QVERIFY(rig.domain.defaults->contains(QStringLiteral("weather.met.retryAfter")));
        WeatherStore& again = rig.restart(true);
        QTest::qWait(20);
        QVERIFY(!again.place());
        QCOMPARE(rig.server.count("/weatherapi"), 1);
    }
};

int runStoreTests(int argc, char** argv)
{
    StoreTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "StoreTest.moc"
