#include "FakeWebServer.h"
#include "WeatherTests.h"

#include "platform/linux/WebGeocoder.h"

#include <QElapsedTimer>
#include <QTest>
#include <QUrlQuery>

namespace {

struct Collected
{
    bool done = false;
    GeocodeAnswer answer;
    Location::Answer sink()
    {
        return [this](GeocodeAnswer a) {
            answer = std::move(a);
            done = true;
        };
    }
};

} // namespace

// The web geocoders against local stand-ins of Nominatim and Open-Meteo.
class GeocoderTest : public QObject
{
    Q_OBJECT

    FakeWebServer m_server;

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("BRENLOW_GEOCODE_BASE_URL", m_server.base().toEncoded());
        qputenv("BRENLOW_REVERSE_GEOCODE_BASE_URL", m_server.base().toEncoded());
    }
    void cleanupTestCase()
    {
        qunsetenv("BRENLOW_GEOCODE_BASE_URL");
        qunsetenv("BRENLOW_REVERSE_GEOCODE_BASE_URL");
    }

    void searchSendsTheNameAndReadsResults()
    {
        m_server.route("/v1/search", [](const FakeWebServer::Request& request) {
            const QString name = QUrlQuery(request.url).queryItemValue("name", QUrl::FullyDecoded);
            if (name == QStringLiteral("Zürich & Île-de-France"))
                return FakeWebServer::json(
                    R"({"results":[{"id":1,"name":"Zürich","latitude":47.36667,"longitude":8.55,"country":"Schweiz","admin1":"Zürich"},
                                   {"id":2,"name":"Paris","latitude":"48.85","longitude":2.35,"admin1":"Île-de-France"},
                                   {"id":3,"latitude":1,"longitude":2},
                                   {"id":4,"name":"Nowhere","latitude":91,"longitude":2}]})");
            if (name == QStringLiteral("broken"))
                return FakeWebServer::json(R"({"results":[)");
            if (name == QStringLiteral("huge"))
                return FakeWebServer::json(QByteArray(10'000'000, ' ') + "{}");
            if (name == QStringLiteral("down"))
                return FakeWebServer::json("{}", 500);
            return FakeWebServer::json(R"({"generationtime_ms":0.2})");
        });
        WebGeocoder geocoder;
        Collected found;
        geocoder.search(QStringLiteral("Zürich & Île-de-France"), found.sink());
        QTRY_VERIFY(found.done);
        const QUrlQuery sent(m_server.requests().last().url);
        QCOMPARE(sent.queryItemValue("language"), QStringLiteral("de"));
        QCOMPARE(sent.queryItemValue("count"), QStringLiteral("10"));
        QVERIFY(m_server.requests().last().headers.value("user-agent").startsWith("Brenlow/"));
        QVERIFY(!found.answer.failed);
        QCOMPARE(found.answer.placemarks.size(), 4);
        QCOMPARE(found.answer.placemarks[0].locality, QStringLiteral("Zürich"));
        QCOMPARE(found.answer.placemarks[0].country, QStringLiteral("Schweiz"));
        QCOMPARE(*found.answer.placemarks[0].latitude, 47.36667);
        QCOMPARE(found.answer.placemarks[1].administrativeArea, QStringLiteral("Île-de-France"));
        QCOMPARE(*found.answer.placemarks[1].latitude, 48.85); // numbers as text, as Nominatim sends them
        QVERIFY(!found.answer.placemarks[2].locality);
        QVERIFY(!found.answer.placemarks[3].latitude); // beyond the pole

        for (const char* failing : {"broken", "huge", "down"}) {
            Collected answer;
            geocoder.search(QString::fromLatin1(failing), answer.sink());
            QTRY_VERIFY(answer.done);
            QVERIFY2(answer.answer.failed, failing);
        }
        Collected none;
        geocoder.search(QStringLiteral("Atlantis"), none.sink());
        QTRY_VERIFY(none.done);
        QVERIFY(!none.answer.failed);
        QVERIFY(none.answer.placemarks.isEmpty());

        // A name no place has is answered without a request.
        const int before = m_server.count("/v1/search");
        Collected endless;
        geocoder.search(QString(10'000, QLatin1Char('x')), endless.sink());
        QTRY_VERIFY(endless.done);
        QVERIFY(endless.answer.placemarks.isEmpty());
        QCOMPARE(m_server.count("/v1/search"), before);
    }

    void reverseNamesThePointAtMostOncePerSecond()
    {
        m_server.route("/reverse", [](const FakeWebServer::Request& request) {
            const QUrlQuery query(request.url);
            if (query.queryItemValue("lat") == QStringLiteral("0.00"))
                return FakeWebServer::json(R"({"error":"Unable to geocode"})");
            return FakeWebServer::json(
                R"({"lat":"52.5200","lon":"13.4000","name":"Berlin","address":{"city":"Berlin","state":"Berlin","country":"Deutschland"}})");
        });
        WebGeocoder geocoder;
        QElapsedTimer clock;
        clock.start();
        Collected first;
        geocoder.reverse(52.52, 13.4, first.sink());
        QTRY_VERIFY(first.done);
        const QUrlQuery sent(m_server.requests().last().url);
        QCOMPARE(sent.queryItemValue("lat"), QStringLiteral("52.52"));
        QCOMPARE(sent.queryItemValue("lon"), QStringLiteral("13.40"));
        QCOMPARE(sent.queryItemValue("format"), QStringLiteral("jsonv2"));
        QCOMPARE(sent.queryItemValue("accept-language"), QStringLiteral("de"));
        QCOMPARE(first.answer.placemarks.size(), 1);
        QCOMPARE(first.answer.placemarks[0].locality, QStringLiteral("Berlin"));
        QCOMPARE(first.answer.placemarks[0].administrativeArea, QStringLiteral("Berlin"));
        QCOMPARE(*first.answer.placemarks[0].latitude, 52.52);

        // The sea has no place; the second request waits for its second.
        const qint64 firstSent = clock.elapsed();
        Collected sea;
        geocoder.reverse(0, 0, sea.sink());
        QTRY_VERIFY(sea.done);
        QVERIFY(clock.elapsed() - firstSent >= 900);
        QVERIFY(!sea.answer.failed);
        QVERIFY(sea.answer.placemarks.isEmpty());

        // A cancelled lookup never answers.
        Collected cancelled;
        geocoder.reverse(52.52, 13.4, cancelled.sink());
        geocoder.cancelReverse();
        QTest::qWait(1200);
        QVERIFY(!cancelled.done);
    }

    void documentsOfOtherShapes()
    {
        QVERIFY(WebGeocoder::parseReverse("nonsense").failed);
        QVERIFY(WebGeocoder::parseReverse(R"({"address":[]})").failed);
        const auto county = WebGeocoder::parseReverse(
            R"({"address":{"village":"Kleinmachnow","county":"Potsdam-Mittelmark"}})");
        QCOMPARE(county.placemarks[0].locality, QStringLiteral("Kleinmachnow"));
        QCOMPARE(county.placemarks[0].subAdministrativeArea, QStringLiteral("Potsdam-Mittelmark"));
        const auto onlyCounty =
            WebGeocoder::parseReverse(R"({"address":{"county":"Landkreis X","city":"  "}})");
        QVERIFY(!onlyCounty.placemarks[0].locality);
        QVERIFY(WebGeocoder::parseSearch(R"({"results":"x"})").failed);
        QVERIFY(WebGeocoder::parseSearch(R"({"results":null})").placemarks.isEmpty());
    }
};

int runGeocoderTests(int argc, char** argv)
{
    GeocoderTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "GeocoderTest.moc"
