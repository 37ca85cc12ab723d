#include "media/WingPlacement.h"

#include <algorithm>

std::optional<int> WingPlacement::chooseDisplay(const QList<DisplayInfo>& displays, bool screenMain)
{
    if (displays.isEmpty())
        return std::nullopt;
    if (!screenMain)
        for (int index = 0; index < displays.size(); ++index)
            if (displays[index].topInset > 0)
                return index;
    return 0;
}

namespace {

// The camera housing between the two top areas, or the 160 × 24 fallback centred at the top edge:
// the same measurement the panel uses.
QRectF notchRect(const DisplayInfo& display)
{
    const QRectF& frame = display.frame;
    const bool measurable = display.topInset > 0 && display.auxiliaryTopLeft && display.auxiliaryTopRight &&
                            display.auxiliaryTopLeft->right() < display.auxiliaryTopRight->left();
    if (!measurable)
        return QRectF(frame.center().x() - 80, frame.top(), 160, 24);
    const double left = display.auxiliaryTopLeft->right();
    return QRectF(left, frame.top(), display.auxiliaryTopRight->left() - left, display.topInset);
}

} // namespace

std::optional<QRectF> WingPlacement::wingFrame(const DisplayInfo& display)
{
    const QRectF notch = notchRect(display);
    const double width = std::max(std::min(notch.left() + overlap - display.frame.left(), wingWidth), 0.0);
    if (width <= minimumWidth || notch.height() <= 0)
        return std::nullopt;
    return QRectF(notch.left() + overlap - width, notch.top(), width, notch.height());
}

QRectF WingPlacement::sliver(const QRectF& frame)
{
    return QRectF(frame.right() - 1, frame.top(), 1, frame.height());
}
