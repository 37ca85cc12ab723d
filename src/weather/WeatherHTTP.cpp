#include "weather/WeatherHTTP.h"

#include "common/BoundedDownload.h"
#include "common/ServiceEndpoints.h"
#include "weather/WeatherCache.h"

#include <QRegularExpression>
#include <QUrlQuery>

QString WeatherHTTP::coordinate(double value)
{
    return QString::asprintf("%.2f", value);
}

QString WeatherHTTP::key(double latitude, double longitude)
{
    return coordinate(latitude) + QLatin1Char(',') + coordinate(longitude);
}

QNetworkRequest WeatherHTTP::request(double latitude, double longitude,
                                     const std::optional<WeatherCache>& cache, const QUrl& base)
{
    QUrl url = base;
    QString path = url.path();
    while (path.endsWith(QLatin1Char('/')))
        path.chop(1);
    url.setPath(path + QStringLiteral("/weatherapi/locationforecast/2.0/compact"));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("lat"), coordinate(latitude));
    query.addQueryItem(QStringLiteral("lon"), coordinate(longitude));
    url.setQuery(query);

    QNetworkRequest request(url);
    // No local HTTP cache: the conditional request is the cache.
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setTransferTimeout(timeoutSeconds * 1000);
    request.setRawHeader("User-Agent", ServiceEndpoints::userAgent().toUtf8());
    request.setRawHeader("Accept", "application/json");
    if (cache && cache->coordinateKey == key(latitude, longitude) && cache->lastModified)
        request.setRawHeader("If-Modified-Since", cache->lastModified->toUtf8());
    return request;
}

QNetworkRequest WeatherHTTP::request(double latitude, double longitude,
                                     const std::optional<WeatherCache>& cache)
{
    return request(latitude, longitude, cache, ServiceEndpoints::forecastBase());
}

std::optional<QDateTime> WeatherHTTP::date(const std::optional<QByteArray>& text)
{
    if (!text)
        return std::nullopt;
    // IMF-fixdate, the only form servers are allowed to send; GMT (or UTC) is the only zone.
    static const QRegularExpression pattern(QStringLiteral(
        R"(^(Mon|Tue|Wed|Thu|Fri|Sat|Sun), (\d{2}) ([A-Za-z]{3}) (\d{4}) (\d{2}):(\d{2}):(\d{2}) (GMT|UTC)$)"));
    const auto match = pattern.match(QString::fromLatin1(text->trimmed()));
    if (!match.hasMatch())
        return std::nullopt;
    static const QStringList months = {QStringLiteral("Jan"), QStringLiteral("Feb"), QStringLiteral("Mar"),
                                       QStringLiteral("Apr"), QStringLiteral("May"), QStringLiteral("Jun"),
                                       QStringLiteral("Jul"), QStringLiteral("Aug"), QStringLiteral("Sep"),
                                       QStringLiteral("Oct"), QStringLiteral("Nov"), QStringLiteral("Dec")};
    const int month = int(months.indexOf(match.captured(3))) + 1;
    const QDate day(match.captured(4).toInt(), month, match.captured(2).toInt());
    const QTime time(match.captured(5).toInt(), match.captured(6).toInt(), match.captured(7).toInt());
    if (month == 0 || !day.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(day, time, Qt::UTC);
}

QDateTime WeatherHTTP::expiry(const QDateTime& now, const HttpAnswer& response)
{
    const QDateTime candidate = date(response.header("Expires")).value_or(now.addSecs(1800));
    return std::max(candidate, now.addSecs(60));
}

QDateTime WeatherHTTP::retryDate(const QDateTime& now, const HttpAnswer* response)
{
    QDateTime candidate = now;
    if (response) {
        if (const auto header = response->header("Retry-After")) {
            static const QRegularExpression decimal(QStringLiteral(R"(^\d+(\.\d+)?$)"));
            const QString text = QString::fromLatin1(header->trimmed());
            if (decimal.match(text).hasMatch()) {
                // Far beyond any sensible pause: capped so the date stays representable.
                const double seconds = std::min(text.toDouble(), 10.0 * 365 * 86400);
                candidate = now.addMSecs(qint64(seconds * 1000));
            } else if (const auto when = date(header)) {
                candidate = *when;
            }
        }
    }
    const bool busy = response && response->hasResponse && response->status == 429;
    const QDateTime floor = now.addSecs(busy ? 3600 : 300);
    return std::max(candidate, floor);
}
