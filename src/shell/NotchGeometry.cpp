#include "shell/NotchGeometry.h"

std::optional<int> NotchGeometry::chooseDisplay(const QList<DisplayInfo>& displays,
                                                std::optional<int> focused, bool screenMain)
{
    if (displays.isEmpty())
        return std::nullopt;
    if (screenMain)
        return 0;
    for (int i = 0; i < displays.size(); ++i) {
        if (displays[i].topInset > 0)
            return i;
    }
    if (focused && *focused >= 0 && *focused < displays.size())
        return *focused;
    return 0;
}

QRectF NotchGeometry::notchRect(const DisplayInfo& display)
{
    const QRectF& frame = display.frame;
    const bool measurable = display.topInset > 0 && display.auxiliaryTopLeft && display.auxiliaryTopRight &&
                            display.auxiliaryTopLeft->right() < display.auxiliaryTopRight->left();
    if (!measurable)
        return QRectF(frame.center().x() - fallbackWidth / 2, frame.top(), fallbackWidth, fallbackHeight);
    const double left = display.auxiliaryTopLeft->right();
    const double right = display.auxiliaryTopRight->left();
    return QRectF(left, frame.top(), right - left, display.topInset);
}

QRectF NotchGeometry::activationRect(const QRectF& notch)
{
    return QRectF(notch.x() - activationSide, notch.y(), notch.width() + 2 * activationSide,
                  notch.height() + activationBelow);
}

QSizeF NotchGeometry::panelSize(const PanelSizeInputs& state, QSizeF notch)
{
    if (state.introActive)
        return QSizeF(notch.width() + welcomeGrowthWidth, notch.height() + welcomeGrowthHeight);
    if (!state.expanded)
        return notch;
    if (state.page == Page::onboarding)
        return QSizeF(640, 528);
    if (state.page == Page::home && state.mini)
        return QSizeF(440, 112);
    const bool home = state.page == Page::home;
    switch (state.layout) {
    case PanelLayout::wide:
        return QSizeF(800, (home ? 222 : 270) + openHeightAddition);
    case PanelLayout::balanced:
        return QSizeF(620, (home ? 222 : 310) + openHeightAddition);
    case PanelLayout::tall:
        break;
    }
    return QSizeF(520, 400 + openHeightAddition);
}

QRectF NotchGeometry::panelFrame(const QRectF& notch, const QRectF& displayFrame, QSizeF size)
{
    return QRectF(notch.center().x() - size.width() / 2, displayFrame.top(), size.width(), size.height());
}

bool NotchGeometry::contains(const QRectF& rect, QPointF point)
{
    if (rect.isEmpty())
        return false;
    return point.x() >= rect.left() && point.x() <= rect.right() && point.y() >= rect.top() &&
           point.y() <= rect.bottom();
}
