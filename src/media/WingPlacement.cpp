#include "media/WingPlacement.h"

#include "shell/NotchGeometry.h"

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

std::optional<QRectF> WingPlacement::wingFrame(const DisplayInfo& display)
{
    const QRectF notch = NotchGeometry::notchRect(display);
    const double width = std::max(std::min(notch.left() + overlap - display.frame.left(), wingWidth), 0.0);
    if (width <= minimumWidth || notch.height() <= 0)
        return std::nullopt;
    return QRectF(notch.left() + overlap - width, notch.top(), width, notch.height());
}

QRectF WingPlacement::sliver(const QRectF& frame)
{
    return QRectF(frame.right() - 1, frame.top(), 1, frame.height());
}
