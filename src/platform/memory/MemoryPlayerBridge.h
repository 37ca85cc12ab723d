#pragma once

#include "platform/PlayerBridge.h"

#include <QList>
#include <QMap>
#include <QMutex>
#include <QWaitCondition>

#include <utility>

// Players held in memory. Queries and commands arrive on worker threads while tests change the
// players, so everything is behind one lock. A command acts on the stored answer as a player would:
// play/pause flips the play state, a seek to the current track moves its position.
class MemoryPlayerBridge final : public PlayerBridge
{
    Q_OBJECT
public:
    // The seven items of a track answer, in the bridge's order.
    static QVariantList track(const QString& title, const QString& artist, bool playing, double duration,
                              double position, const QString& trackID, const QString& artworkURL = {});

    QStringList runningPlayers() override;
    PlayerReply query(const QString& player) override;
    bool command(const QString& player, const PlayerCommand& command) override;
    QByteArray coverData(const QString& player, const QString& trackID, qint64 maxBytes) override;

    // A running player and its answer; removePlayer() quits it.
    void setPlayer(const QString& player, PlayerReply reply);
    void removePlayer(const QString& player);
    PlayerReply reply(const QString& player) const;
    void setCover(const QString& player, const QString& trackID, QByteArray data);
    void setCommandsFail(bool fail);
    QList<std::pair<QString, PlayerCommand>> commands() const;
    int queries() const;
    int coverReads() const;
    // Holds queries and commands until release(): an answer still on its way.
    void hold();
    // Holds only the cover reads (they run on their own queue) until release().
    void holdCovers();
    void release();
    // A player reports a change, as the real one's signal would.
    void announceChange() { Q_EMIT playersChanged(); }

private:
    void waitWhileHeld(const bool& held);

    mutable QMutex m_mutex;
    QWaitCondition m_released;
    bool m_held = false;
    bool m_coversHeld = false;
    QMap<QString, PlayerReply> m_players;
    QMap<QString, std::pair<QString, QByteArray>> m_covers;
    QList<std::pair<QString, PlayerCommand>> m_commands;
    bool m_commandsFail = false;
    int m_queries = 0;
    int m_coverReads = 0;
};
