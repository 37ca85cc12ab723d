#include "media/ArtworkStore.h"

#include "common/Clock.h"
#include "media/SpotifyImages.h"
#include "platform/PlayerBridge.h"

#include <QBuffer>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

ArtworkStore::ArtworkStore(PlayerBridge& players, Clock& clock, QObject* parent)
    : QObject(parent), m_players(players), m_clock(clock)
{}

ArtworkStore::~ArtworkStore()
{
    if (m_request)
        m_request->abort();
}

void ArtworkStore::update(const std::optional<MediaSnapshot>& snapshot)
{
    const QString identity = MediaSnapshot::identity(snapshot);
    if (identity != m_key) {
        if (m_request) {
            // Abort first: the reply's finished signal must not reach a store that moved on.
            QNetworkReply* running = m_request;
            m_request = nullptr;
            running->disconnect(this);
            running->abort();
            running->deleteLater();
        }
        m_key = identity;
        setImage(QImage());
        m_busy = false;
        m_retryAfter = QDateTime();
    }
    if (!snapshot || hasImage() || m_busy)
        return;
    const QDateTime now = m_clock.now();
    if (m_retryAfter.isValid() && now < m_retryAfter)
        return;
    if (const QImage* cached = m_cache.object(identity)) {
        setImage(*cached);
        return;
    }
    m_busy = true;
    m_retryAfter = now.addMSecs(qint64(retryPause * 1000));

    if (snapshot->app == QLatin1String("Spotify") && snapshot->artworkURL) {
        const QUrl url = SpotifyImages::downloadUrl(*snapshot->artworkURL);
        if (url.isValid()) {
            download(url, identity);
            return;
        }
    }
    if (snapshot->app == QLatin1String("Music")) {
        PlayerBridge* players = &m_players;
        const QString trackID = snapshot->trackID;
        m_queue.run<QImage>(
            this,
            [players, trackID] {
                return decode(players->coverData(QStringLiteral("Music"), trackID, maxBytes));
            },
            [this, identity](QImage image) { finish(image, identity); });
        return;
    }
    finish(QImage(), identity);
}

void ArtworkStore::download(const QUrl& url, const QString& identity)
{
    if (!m_network) {
        // No disk cache is set and cookies stay in memory: nothing of the downloads outlives the run.
        m_network = new QNetworkAccessManager(this);
    }
    QNetworkRequest request(url);
    request.setTransferTimeout(downloadTimeoutMs);
    request.setMaximumRedirectsAllowed(maxRedirects);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferNetwork);
    QNetworkReply* reply = m_network->get(request);
    m_request = reply;
    // A server that sends more than the cap is cut off as soon as it says so or passes it.
    connect(reply, &QNetworkReply::downloadProgress, this, [reply](qint64 received, qint64 total) {
        if (received > maxBytes || total > maxBytes)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply, identity] { downloaded(reply, identity); });
}

void ArtworkStore::downloaded(QNetworkReply* reply, const QString& identity)
{
    reply->deleteLater();
    if (m_request == reply)
        m_request = nullptr;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (reply->error() != QNetworkReply::NoError || status < 200 || status > 299) {
        finish(QImage(), identity);
        return;
    }
    QByteArray data = reply->read(maxBytes + 1);
    if (data.isEmpty() || data.size() > maxBytes) {
        finish(QImage(), identity);
        return;
    }
    decodeLater(std::move(data), identity);
}

void ArtworkStore::decodeLater(QByteArray data, const QString& identity)
{
    m_queue.run<QImage>(
        this, [data = std::move(data)] { return decode(data); },
        [this, identity](QImage image) { finish(image, identity); });
}

QImage ArtworkStore::decode(const QByteArray& data)
{
    if (data.isEmpty())
        return {};
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    // An image that claims a huge size is refused before its pixels are allocated.
    reader.setAllocationLimit(64);
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty() || qint64(size.width()) * size.height() > 40'000'000)
        return {};
    if (size.width() > maxSide || size.height() > maxSide)
        reader.setScaledSize(size.scaled(maxSide, maxSide, Qt::KeepAspectRatio));
    QImage image = reader.read();
    if (image.isNull())
        return {};
    if (image.width() > maxSide || image.height() > maxSide)
        image = image.scaled(maxSide, maxSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

void ArtworkStore::finish(const QImage& image, const QString& identity)
{
    if (identity != m_key)
        return;
    m_busy = false;
    m_request = nullptr;
    setImage(image);
    if (!image.isNull())
        m_cache.insert(identity, new QImage(image));
}

void ArtworkStore::setImage(const QImage& image)
{
    if (image.isNull() && m_image.isNull())
        return;
    m_image = image;
    Q_EMIT imageChanged();
}
