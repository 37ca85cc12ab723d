#include "platform/linux/WebGeocoder.h"

#include "common/BoundedDownload.h"
#include "common/Log.h"
#include "common/ServiceEndpoints.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QUrlQuery>

#include <cmath>

namespace {

QUrl withPath(const QUrl& base, const QString& path)
{
    QUrl url = base;
    QString prefix = url.path();
    while (prefix.endsWith(QLatin1Char('/')))
        prefix.chop(1);
    url.setPath(prefix + path);
    return url;
}

QNetworkRequest jsonRequest(const QUrl& url)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(20'000);
    request.setRawHeader("User-Agent", ServiceEndpoints::userAgent().toUtf8());
    request.setRawHeader("Accept", "application/json");
    return request;
}

std::optional<QString> text(const QJsonObject& object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString() || value.toString().trimmed().isEmpty())
        return std::nullopt;
    return value.toString().trimmed();
}

std::optional<QString> firstText(const QJsonObject& object, std::initializer_list<QLatin1String> keys)
{
    for (QLatin1String key : keys) {
        if (auto found = text(object, key))
            return found;
    }
    return std::nullopt;
}

std::optional<double> degrees(const QJsonValue& value, double limit)
{
    // Nominatim sends numbers as strings, Open-Meteo as numbers.
    bool ok = value.isDouble();
    double number = value.toDouble();
    if (value.isString())
        number = value.toString().toDouble(&ok);
    if (!ok || !std::isfinite(number) || std::abs(number) > limit)
        return std::nullopt;
    return number;
}

GeocodeAnswer failed()
{
    GeocodeAnswer answer;
    answer.failed = true;
    return answer;
}

std::optional<QJsonObject> documentObject(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    return document.object();
}

// The answer of a finished download: the document when it came whole with 200.
std::optional<QByteArray> body(const HttpAnswer& answer, const char* service)
{
    if (answer.hasResponse && answer.status == 200 && !answer.oversized)
        return answer.body;
    qCInfo(lcPlatform) << service << "answered" << answer.status << answer.errorText
                       << (answer.oversized ? "(too large)" : "");
    return std::nullopt;
}

} // namespace

WebGeocoder::WebGeocoder(QObject* parent) : QObject(parent), m_network(new QNetworkAccessManager(this))
{
    m_reverseDelay.setSingleShot(true);
    connect(&m_reverseDelay, &QTimer::timeout, this, &WebGeocoder::startReverse);
}

WebGeocoder::~WebGeocoder() = default;

QUrl WebGeocoder::reverseUrl(const QUrl& base, double latitude, double longitude)
{
    QUrl url = withPath(base, QStringLiteral("/reverse"));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("format"), QStringLiteral("jsonv2"));
    query.addQueryItem(QStringLiteral("lat"), QString::asprintf("%.2f", latitude));
    query.addQueryItem(QStringLiteral("lon"), QString::asprintf("%.2f", longitude));
    // City level: street and house number of the rounded point mean nothing.
    query.addQueryItem(QStringLiteral("zoom"), QStringLiteral("10"));
    query.addQueryItem(QStringLiteral("accept-language"), QStringLiteral("de"));
    url.setQuery(query);
    return url;
}

QUrl WebGeocoder::searchUrl(const QUrl& base, const QString& text)
{
    QUrl url = withPath(base, QStringLiteral("/v1/search"));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("name"), QString::fromLatin1(QUrl::toPercentEncoding(text)));
    query.addQueryItem(QStringLiteral("count"), QString::number(resultCount));
    query.addQueryItem(QStringLiteral("language"), QStringLiteral("de"));
    query.addQueryItem(QStringLiteral("format"), QStringLiteral("json"));
    url.setQuery(query.query(QUrl::FullyEncoded), QUrl::StrictMode);
    return url;
}

GeocodeAnswer WebGeocoder::parseReverse(const QByteArray& json)
{
    const auto document = documentObject(json);
    if (!document)
        return failed();
    GeocodeAnswer answer;
    // {"error": "Unable to geocode"} is the sea or the ice: no place, not a failure.
    if (document->contains(QLatin1String("error")))
        return answer;
    const QJsonValue address = document->value(QLatin1String("address"));
    if (!address.isObject())
        return failed();
    const QJsonObject parts = address.toObject();
    Placemark place;
    place.name = text(*document, QLatin1String("name"));
    place.locality = firstText(parts, {QLatin1String("city"), QLatin1String("town"), QLatin1String("village"),
                                       QLatin1String("municipality"), QLatin1String("hamlet")});
    place.subAdministrativeArea =
        firstText(parts, {QLatin1String("county"), QLatin1String("state_district")});
    place.administrativeArea = text(parts, QLatin1String("state"));
    place.country = text(parts, QLatin1String("country"));
    place.latitude = degrees(document->value(QLatin1String("lat")), 90);
    place.longitude = degrees(document->value(QLatin1String("lon")), 180);
    answer.placemarks.append(place);
    return answer;
}

GeocodeAnswer WebGeocoder::parseSearch(const QByteArray& json)
{
    const auto document = documentObject(json);
    if (!document)
        return failed();
    GeocodeAnswer answer;
    // No "results" key at all is how the service says it found nothing.
    const QJsonValue results = document->value(QLatin1String("results"));
    if (results.isUndefined() || results.isNull())
        return answer;
    if (!results.isArray())
        return failed();
    for (const QJsonValue& value : results.toArray()) {
        if (!value.isObject())
            continue;
        const QJsonObject result = value.toObject();
        Placemark place;
        place.name = text(result, QLatin1String("name"));
        place.locality = place.name;
        place.subAdministrativeArea = text(result, QLatin1String("admin2"));
        place.administrativeArea = text(result, QLatin1String("admin1"));
        place.country = text(result, QLatin1String("country"));
        place.latitude = degrees(result.value(QLatin1String("latitude")), 90);
        place.longitude = degrees(result.value(QLatin1String("longitude")), 180);
        answer.placemarks.append(place);
    }
    return answer;
}

void WebGeocoder::reverse(double latitude, double longitude, Location::Answer answer)
{
    cancelReverse();
    m_reverseUrl = reverseUrl(ServiceEndpoints::reverseGeocodeBase(), latitude, longitude);
    m_reverseAnswer = std::move(answer);
    const qint64 since = m_lastReverse.isValid() ? m_lastReverse.elapsed() : 1000;
    m_reverseDelay.start(int(std::max<qint64>(0, 1000 - since)));
}

void WebGeocoder::startReverse()
{
    m_lastReverse.start();
    m_reverse = std::make_unique<BoundedDownload>(*m_network, jsonRequest(m_reverseUrl), answerLimit,
                                                  [this](HttpAnswer reply) {
                                                      auto answer = std::exchange(m_reverseAnswer, nullptr);
                                                      const auto json = body(reply, "reverse geocoding");
                                                      if (answer)
                                                          answer(json ? parseReverse(*json) : failed());
                                                  });
}

void WebGeocoder::cancelReverse()
{
    m_reverseDelay.stop();
    m_reverseAnswer = nullptr;
    if (m_reverse)
        m_reverse->cancel();
}

void WebGeocoder::search(const QString& text, Location::Answer answer)
{
    cancelSearch();
    if (text.size() > longestName) {
        QTimer::singleShot(0, this, [answer = std::move(answer)] { answer(GeocodeAnswer{}); });
        return;
    }
    m_search = std::make_unique<BoundedDownload>(
        *m_network, jsonRequest(searchUrl(ServiceEndpoints::geocodeBase(), text)), answerLimit,
        [answer = std::move(answer)](HttpAnswer reply) {
            const auto json = body(reply, "city search");
            answer(json ? parseSearch(*json) : failed());
        });
}

void WebGeocoder::cancelSearch()
{
    if (m_search)
        m_search->cancel();
}
