#pragma once

#include "platform/Displays.h"

#include <QList>
#include <QRectF>

#include <optional>

// Where the wing goes: left of the notch, overlapping it by 2 points, exactly as tall as it, at most
// 230 wide and never past the display's left edge.
class WingPlacement
{
public:
    static constexpr double wingWidth = 230;
    static constexpr double overlap = 2;
    // A wing this narrow or narrower has no room for anything.
    static constexpr double minimumWidth = 80;

    // With `screenMain` the first display; otherwise the first with a notch, else the first.
    static std::optional<int> chooseDisplay(const QList<DisplayInfo>& displays, bool screenMain);
    // The wing beside the display's notch (or its fallback rectangle); none without room.
    static std::optional<QRectF> wingFrame(const DisplayInfo& display);
    // The 1-point sliver at the right edge of `frame` that the wing slides out of and back into.
    static QRectF sliver(const QRectF& frame);
};
