#include "media/PlayerAnswers.h"

#include "media/MediaTexts.h"

#include <algorithm>
#include <cmath>

namespace {

std::optional<QString> text(const QVariant& item)
{
    if (item.metaType() == QMetaType::fromType<QString>())
        return item.toString();
    return std::nullopt;
}

std::optional<double> number(const QVariant& item)
{
    switch (item.metaType().id()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return item.toDouble();
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<MediaSnapshot> PlayerAnswers::parse(const QString& app, const QVariantList& items,
                                                  const QDateTime& now)
{
    if (items.size() != 7)
        return std::nullopt;
    MediaSnapshot snapshot;
    const double rawDuration = number(items[3]).value_or(0);
    if (std::isfinite(rawDuration))
        snapshot.duration =
            std::max(0.0, app == QLatin1String("Spotify") ? rawDuration / 1000.0 : rawDuration);
    snapshot.title = text(items[0]).value_or(MediaTexts::unknownTitle());
    snapshot.artist = text(items[1]).value_or(QString());
    snapshot.trackID = text(items[5]).value_or(QString());
    snapshot.playing = items[2].metaType() == QMetaType::fromType<bool>() && items[2].toBool();
    const double rawPosition = number(items[4]).value_or(0);
    if (std::isfinite(rawPosition) && std::isfinite(snapshot.duration) && snapshot.duration > 0)
        snapshot.position = std::min(std::max(rawPosition, 0.0), snapshot.duration);
    snapshot.artworkURL = text(items[6]);
    snapshot.app = app;
    snapshot.receivedAt = now;
    return snapshot;
}

PollResult PlayerAnswers::choose(const QList<std::pair<QString, PlayerReply>>& replies, const QDateTime& now)
{
    PollResult result;
    for (const auto& [app, reply] : replies) {
        if (reply.error) {
            result.failed = true;
            if (*reply.error == PlayerReply::notPermitted)
                result.denied = true;
            continue;
        }
        if (!reply.items)
            continue;
        std::optional<MediaSnapshot> answer = parse(app, *reply.items, now);
        if (answer && (!result.candidate || answer->playing))
            result.candidate = std::move(answer);
    }
    return result;
}

PollResult PlayerAnswers::poll(PlayerBridge& bridge, const QDateTime& now)
{
    QList<std::pair<QString, PlayerReply>> replies;
    for (const QString& player : bridge.runningPlayers())
        replies.append({player, bridge.query(player)});
    return choose(replies, now);
}
