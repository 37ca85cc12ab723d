#include "media/MediaSnapshot.h"

#include <algorithm>
#include <cmath>

double MediaSnapshot::elapsed(const QDateTime& at) const
{
    const double advance = playing ? std::max(0.0, double(receivedAt.msecsTo(at)) / 1000.0) : 0.0;
    const double value = position + advance;
    if (!std::isfinite(value) || !std::isfinite(duration) || duration <= 0)
        return 0;
    return std::clamp(value, 0.0, duration);
}
