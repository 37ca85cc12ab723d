#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <optional>

// One answer of a player to the track query. Either an error with its number, or a list of items
// (seven for a track: title, artist, playing, duration, position, track id, artwork URL; empty for
// a stopped player), or neither when the player gave no usable answer at all.
struct PlayerReply
{
    // The numbers the rules know; any other number is just a failure.
    static constexpr int notPermitted = -1743;
    static constexpr int timedOut = -1712;
    static constexpr int failed = -1;

    std::optional<int> error;
    std::optional<QVariantList> items;

    static PlayerReply failure(int number) { return PlayerReply{number, std::nullopt}; }
    static PlayerReply list(QVariantList items) { return PlayerReply{std::nullopt, std::move(items)}; }
};

// A command for the current player. `seek` moves to `position` seconds, but only while `trackID`
// is still the current track: the player ignores it otherwise.
struct PlayerCommand
{
    enum class Kind { playPause, next, previous, seek };
    Kind kind = Kind::playPause;
    QString trackID;
    double position = 0;

    bool operator==(const PlayerCommand&) const = default;
};

// The music players of the desktop, by the names the rules use ("Spotify", "Music"). Every call
// but the signal is blocking and bounded by `timeLimit`: call them on the media or artwork queue,
// one at a time.
class PlayerBridge : public QObject
{
    Q_OBJECT
public:
    static constexpr double timeLimit = 3.0;

    using QObject::QObject;
    // The players that run now, in the order they are asked: "Spotify" first, then "Music".
    virtual QStringList runningPlayers() = 0;
    // The current track of a player (see PlayerReply).
    virtual PlayerReply query(const QString& player) = 0;
    // Sends a command; false when the player refused it or did not answer in time.
    virtual bool command(const QString& player, const PlayerCommand& command) = 0;
    // The raw cover image of the player's current track, empty when there is none or the current
    // track is no longer `trackID`. At most `maxBytes` are read.
    virtual QByteArray coverData(const QString& player, const QString& trackID, qint64 maxBytes) = 0;

Q_SIGNALS:
    // A player reported a new track or play state (main thread). A hint to ask again, nothing more.
    void playersChanged();
};
