#include "media/SpotifyImages.h"

#include <QHostAddress>

QString SpotifyImages::base()
{
    const QString override = qEnvironmentVariable(baseVariable);
    if (!override.isEmpty()) {
        const QUrl url(override);
        const QString host = url.host();
        if (url.isValid() && (host == QLatin1String("localhost") || QHostAddress(host).isLoopback()))
            return override.endsWith(QLatin1Char('/')) ? override : override + QLatin1Char('/');
    }
    return QString::fromLatin1(imageBase);
}

QUrl SpotifyImages::downloadUrl(const QString& artworkURL)
{
    const QUrl url(artworkURL, QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != QLatin1String("https") || url.host().isEmpty())
        return {};
    const QString prefix = QStringLiteral("/image/");
    if (url.host() == QLatin1String("open.spotify.com") && url.path().startsWith(prefix)) {
        const QString id = url.path().mid(prefix.size());
        if (id.isEmpty() || id.contains(QLatin1Char('/')))
            return {};
        return QUrl(base() + id);
    }
    return url;
}
