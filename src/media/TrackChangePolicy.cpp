#include "media/TrackChangePolicy.h"

std::optional<QString> TrackChangePolicy::changed(const std::optional<MediaSnapshot>& snapshot)
{
    // A player that goes away for a while and comes back with the same track is not news.
    if (!snapshot || snapshot->trackID.isEmpty())
        return std::nullopt;
    const QString identity = snapshot->identity();
    const bool announce = m_previous && *m_previous != identity && snapshot->playing;
    m_previous = identity;
    return announce ? std::optional<QString>(identity) : std::nullopt;
}
