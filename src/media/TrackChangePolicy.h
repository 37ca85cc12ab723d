#pragma once

#include "media/MediaSnapshot.h"

#include <optional>

// Which snapshot changes count as a new track worth announcing: a different player and track that
// is playing, after a track was already seen. Seeks, pauses, resumes and the first track after start
// are not announced; a new track that arrives paused is remembered, so it is not announced later.
class TrackChangePolicy
{
public:
    std::optional<QString> changed(const std::optional<MediaSnapshot>& snapshot);
    const std::optional<QString>& previous() const { return m_previous; }

private:
    std::optional<QString> m_previous;
};
