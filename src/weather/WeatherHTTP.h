#pragma once

#include <QDateTime>
#include <QNetworkRequest>
#include <QString>
#include <QUrl>

#include <optional>

struct HttpAnswer;
struct WeatherCache;

// How a forecast request is built and how the answer's headers set the cache expiry and the
// back-off. Pure functions: the store applies them.
namespace WeatherHTTP {

constexpr int timeoutSeconds = 20;
// Bodies above this are refused (while they stream).
constexpr qint64 bodyLimit = 999'999;

// "52.52,13.40": both coordinates with two decimals and a point.
QString key(double latitude, double longitude);
// A coordinate as the service sees it ("%.2f", C locale).
QString coordinate(double value);

// GET of the compact forecast under `base` with lat and lon, the identifying User-Agent,
// Accept and, for a cache of the same place that has one, If-Modified-Since.
QNetworkRequest request(double latitude, double longitude, const std::optional<WeatherCache>& cache,
                        const QUrl& base);
// The same under the configured service base.
QNetworkRequest request(double latitude, double longitude, const std::optional<WeatherCache>& cache);

// An HTTP date ("Sun, 20 Sep 2026 01:00:00 GMT"); nothing for no text or text that does not parse.
std::optional<QDateTime> date(const std::optional<QByteArray>& text);

// When the next request for this place may go out: the Expires header, else 30 minutes, and
// never sooner than a minute from now.
QDateTime expiry(const QDateTime& now, const HttpAnswer& response);
// Until when requests pause after a failure: what Retry-After asks for, but at least an hour
// after a 429 and five minutes after anything else (also without a response).
QDateTime retryDate(const QDateTime& now, const HttpAnswer* response);

} // namespace WeatherHTTP
