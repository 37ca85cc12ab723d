#pragma once

#include "media/MediaSnapshot.h"
#include "platform/PlayerBridge.h"

#include <QList>

#include <optional>

// What one poll of the players came to: the chosen track and whether any player failed.
struct PollResult
{
    std::optional<MediaSnapshot> candidate;
    bool denied = false;
    bool failed = false;
};

// Turning the players' raw answers into one snapshot.
class PlayerAnswers
{
public:
    // A track answer (seven items) as a snapshot; anything else is no answer.
    static std::optional<MediaSnapshot> parse(const QString& app, const QVariantList& items,
                                              const QDateTime& now);
    // Walks the answers in the players' order: a playing answer replaces the candidate, a paused one
    // only fills an empty candidate. Errors set the flags; other answers count only when parsed.
    static PollResult choose(const QList<std::pair<QString, PlayerReply>>& replies, const QDateTime& now);
    // The whole poll on the media queue: every running player asked once, in order.
    // `now` stamps the snapshots; an invalid one leaves the stamping to the caller.
    static PollResult poll(PlayerBridge& bridge, const QDateTime& now);
};
