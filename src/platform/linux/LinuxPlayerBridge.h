#pragma once

#include "platform/PlayerBridge.h"

#include <QDBusMessage>
#include <QElapsedTimer>
#include <QHash>
#include <QMutex>
#include <QVariantMap>

// The players over MPRIS 2 on the session bus. "Spotify" owns org.mpris.MediaPlayer2.spotify;
// "Music" is the first other MPRIS player that is not a web browser. Blocking calls run on the
// queues that call them; the caches they share are behind one lock.
class LinuxPlayerBridge final : public PlayerBridge
{
    Q_OBJECT
public:
    explicit LinuxPlayerBridge(QObject* parent = nullptr);

    QStringList runningPlayers() override;
    PlayerReply query(const QString& player) override;
    bool command(const QString& player, const PlayerCommand& command) override;
    QByteArray coverData(const QString& player, const QString& trackID, qint64 maxBytes) override;

    // Whether a bus name or a desktop entry belongs to a web browser, whose players never count.
    static bool isBrowser(const QString& text);

private Q_SLOTS:
    void propertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated);
    void nameOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);

private:
    // The bus name that answers for `player` now, or "" when none runs.
    QString busName(const QString& player);
    QStringList mprisNames();
    bool ownerIsBrowser(const QString& name);
    QDBusMessage call(const QString& service, const QString& interface, const QString& method,
                      const QVariantList& arguments);
    std::optional<QVariant> property(const QString& service, const QString& name,
                                     QDBusMessage* failure = nullptr);
    // Spotify's Position stays 0: the position moves on from what we saw last, per track.
    double spotifyPosition(const QString& trackID, bool playing);
    void setSpotifyPosition(const QString& trackID, double position, bool playing);

    struct Estimate
    {
        QString trackID;
        double position = 0;
        qint64 at = 0;
        bool playing = false;
    };

    QMutex m_mutex;
    QHash<QString, bool> m_browserOwners; // unique owner name → is a browser
    Estimate m_spotify;
    QElapsedTimer m_uptime;
};
