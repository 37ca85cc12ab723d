#include "platform/memory/MemoryPlayerBridge.h"

#include <QMutexLocker>

QVariantList MemoryPlayerBridge::track(const QString& title, const QString& artist, bool playing,
                                       double duration, double position, const QString& trackID,
                                       const QString& artworkURL)
{
    return {title, artist, playing, duration, position, trackID, artworkURL};
}

void MemoryPlayerBridge::waitWhileHeld(const bool& held)
{
    while (held)
        m_released.wait(&m_mutex);
}

QStringList MemoryPlayerBridge::runningPlayers()
{
    QMutexLocker lock(&m_mutex);
    QStringList players;
    for (const char* name : {"Spotify", "Music"})
        if (m_players.contains(QLatin1String(name)))
            players.append(QLatin1String(name));
    return players;
}

PlayerReply MemoryPlayerBridge::query(const QString& player)
{
    QMutexLocker lock(&m_mutex);
    ++m_queries;
    waitWhileHeld(m_held);
    return m_players.value(player);
}

bool MemoryPlayerBridge::command(const QString& player, const PlayerCommand& command)
{
    QMutexLocker lock(&m_mutex);
    waitWhileHeld(m_held);
    m_commands.append({player, command});
    auto found = m_players.find(player);
    if (m_commandsFail || found == m_players.end())
        return false;
    if (!found->items || found->items->size() != 7)
        return true;
    QVariantList& items = *found->items;
    if (command.kind == PlayerCommand::Kind::playPause)
        items[2] = !items[2].toBool();
    else if (command.kind == PlayerCommand::Kind::seek && items[5].toString() == command.trackID)
        items[4] = command.position;
    return true;
}

QByteArray MemoryPlayerBridge::coverData(const QString& player, const QString& trackID, qint64 maxBytes)
{
    QMutexLocker lock(&m_mutex);
    ++m_coverReads;
    waitWhileHeld(m_coversHeld);
    const auto cover = m_covers.value(player);
    if (cover.first != trackID || cover.second.size() > maxBytes)
        return {};
    return cover.second;
}

void MemoryPlayerBridge::setPlayer(const QString& player, PlayerReply reply)
{
    QMutexLocker lock(&m_mutex);
    m_players.insert(player, std::move(reply));
}

void MemoryPlayerBridge::removePlayer(const QString& player)
{
    QMutexLocker lock(&m_mutex);
    m_players.remove(player);
}

PlayerReply MemoryPlayerBridge::reply(const QString& player) const
{
    QMutexLocker lock(&m_mutex);
    return m_players.value(player);
}

void MemoryPlayerBridge::setCover(const QString& player, const QString& trackID, QByteArray data)
{
    QMutexLocker lock(&m_mutex);
    m_covers.insert(player, {trackID, std::move(data)});
}

void MemoryPlayerBridge::setCommandsFail(bool fail)
{
    QMutexLocker lock(&m_mutex);
    m_commandsFail = fail;
}

QList<std::pair<QString, PlayerCommand>> MemoryPlayerBridge::commands() const
{
    QMutexLocker lock(&m_mutex);
    return m_commands;
}

int MemoryPlayerBridge::queries() const
{
    QMutexLocker lock(&m_mutex);
    return m_queries;
}

int MemoryPlayerBridge::coverReads() const
{
    QMutexLocker lock(&m_mutex);
    return m_coverReads;
}

void MemoryPlayerBridge::hold()
{
    QMutexLocker lock(&m_mutex);
    m_held = true;
}

void MemoryPlayerBridge::holdCovers()
{
    QMutexLocker lock(&m_mutex);
    m_coversHeld = true;
}

void MemoryPlayerBridge::release()
{
    QMutexLocker lock(&m_mutex);
    m_held = false;
    m_coversHeld = false;
    m_released.wakeAll();
}
