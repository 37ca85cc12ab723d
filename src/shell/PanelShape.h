#pragma once

#include <QPainterPath>
#include <QRectF>

// The panel's outline: square where it meets the top edge of the screen, rounded below.
class PanelShape
{
public:
    static QPainterPath path(const QRectF& rect, qreal radius);
    // Smaller panels get smaller corners, so the closed notch stays a notch.
    static qreal radiusFor(const QSizeF& size);
};
