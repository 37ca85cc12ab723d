#include "common/ServiceEndpoints.h"

#include "common/Log.h"

#include <QHostAddress>

#ifndef BRENLOW_VERSION
#define BRENLOW_VERSION "0.7.2"
#endif
#ifndef BRENLOW_WEATHER_CONTACT
#define BRENLOW_WEATHER_CONTACT ""
#endif

namespace {

bool isLoopback(const QString& host)
{
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        return true;
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

} // namespace

QUrl ServiceEndpoints::acceptedOverride(const QString& text)
{
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty())
        return {};
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("https") || (scheme == QLatin1String("http") && isLoopback(url.host())))
        return url;
    return {};
}

QUrl ServiceEndpoints::fromEnvironment(const char* variable, const QUrl& fallback)
{
    const QString text = qEnvironmentVariable(variable);
    if (text.isEmpty())
        return fallback;
    const QUrl url = acceptedOverride(text);
    if (url.isValid())
        return url;
    qCWarning(lcPlatform) << variable << "ignored: only HTTPS or HTTP to this machine is accepted";
    return fallback;
}

QUrl ServiceEndpoints::forecastBase()
{
    return fromEnvironment("BRENLOW_MET_BASE_URL", QUrl(QStringLiteral("https://api.met.no")));
}

QUrl ServiceEndpoints::geocodeBase()
{
    return fromEnvironment("BRENLOW_GEOCODE_BASE_URL",
                           QUrl(QStringLiteral("https://geocoding-api.open-meteo.com")));
}

QUrl ServiceEndpoints::reverseGeocodeBase()
{
    return fromEnvironment("BRENLOW_REVERSE_GEOCODE_BASE_URL",
                           QUrl(QStringLiteral("https://nominatim.openstreetmap.org")));
}

QString ServiceEndpoints::userAgent()
{
    QString version = QStringLiteral(BRENLOW_VERSION);
    if (version.trimmed().isEmpty())
        version = QStringLiteral("0.7.2");
    QString agent = QStringLiteral("Brenlow/") + version;
    const QString contact = QStringLiteral(BRENLOW_WEATHER_CONTACT).trimmed();
    if (!contact.isEmpty())
        agent += QStringLiteral(" (") + contact + QLatin1Char(')');
    return agent;
}
