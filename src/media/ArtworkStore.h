#pragma once

#include "common/SerialQueue.h"
#include "media/MediaSnapshot.h"

#include <QCache>
#include <QDateTime>
#include <QImage>
#include <QObject>
#include <QPointer>

#include <optional>

class Clock;
class PlayerBridge;
class QNetworkAccessManager;
class QNetworkReply;

// The cover of the current track, loaded once per track: Spotify's over HTTPS, the other player's
// from the file its metadata names (read on the "Brenlow.artwork" queue). Covers stay in a small
// cache by track identity; a failed load waits a minute before it is tried again.
class ArtworkStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
public:
    static constexpr const char* queueLabel = "Brenlow.artwork";
    static constexpr qint64 maxBytes = 10'000'000;
    static constexpr int cacheLimit = 24;
    static constexpr double retryPause = 60;
    static constexpr int downloadTimeoutMs = 12'000;
    static constexpr int maxRedirects = 5;
    // Covers are shown at most a few dozen points wide; larger images are scaled down on arrival.
    static constexpr int maxSide = 256;

    ArtworkStore(PlayerBridge& players, Clock& clock, QObject* parent = nullptr);
    ~ArtworkStore() override;

    const QImage& image() const { return m_image; }
    bool hasImage() const { return !m_image.isNull(); }
    // The identity of the track the store works for ("" for none).
    const QString& key() const { return m_key; }
    bool busy() const { return m_busy; }
    int cachedCount() const { return m_cache.count(); }

    // Called with every applied poll: starts a load for a new track, at most one at a time.
    void update(const std::optional<MediaSnapshot>& snapshot);

    // Decodes an image off the main thread; undecodable or absurdly large data gives a null image.
    static QImage decode(const QByteArray& data);

Q_SIGNALS:
    void imageChanged();

private:
    void download(const QUrl& url, const QString& identity);
    void downloaded(QNetworkReply* reply, const QString& identity);
    void decodeLater(QByteArray data, const QString& identity);
    void finish(const QImage& image, const QString& identity);
    void setImage(const QImage& image);

    PlayerBridge& m_players;
    Clock& m_clock;
    QImage m_image;
    QString m_key;
    bool m_busy = false;
    QDateTime m_retryAfter;
    QCache<QString, QImage> m_cache{cacheLimit};
    QNetworkAccessManager* m_network = nullptr;
    QPointer<QNetworkReply> m_request;
    SerialQueue m_queue{QString::fromLatin1(queueLabel)};
};
