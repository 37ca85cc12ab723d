#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

// One answer of a music player: what it plays and where it was when the answer was read.
struct MediaSnapshot
{
    QString title;
    QString artist;
    // "Spotify" or "Music".
    QString app;
    // The player's own track identity; empty when it gives none.
    QString trackID;
    bool playing = false;
    // Seconds, never negative.
    double duration = 0;
    // Seconds at `receivedAt`, within 0 … duration.
    double position = 0;
    QDateTime receivedAt;
    // Spotify's cover address; "" for Music; absent when the player gave none.
    std::optional<QString> artworkURL;

    // Player and track: what the cover cache and the track toast key on; "" without a snapshot.
    QString identity() const { return app + QLatin1Char(':') + trackID; }
    static QString identity(const std::optional<MediaSnapshot>& snapshot)
    {
        return snapshot ? snapshot->identity() : QString();
    }
    // The position at `at`: moves on while playing, never before `receivedAt`, within the duration.
    double elapsed(const QDateTime& at) const;

    bool operator==(const MediaSnapshot&) const = default;
};
