#include "shell/PanelShape.h"

#include <algorithm>

QPainterPath PanelShape::path(const QRectF& rect, qreal radius)
{
    const qreal r = std::clamp(radius, 0.0, std::min(rect.width(), rect.height()) / 2);
    QPainterPath path;
    path.moveTo(rect.topLeft());
    path.lineTo(rect.topRight());
    path.lineTo(rect.right(), rect.bottom() - r);
    path.quadTo(rect.bottomRight(), QPointF(rect.right() - r, rect.bottom()));
    path.lineTo(rect.left() + r, rect.bottom());
    path.quadTo(rect.bottomLeft(), QPointF(rect.left(), rect.bottom() - r));
    path.closeSubpath();
    return path;
}

qreal PanelShape::radiusFor(const QSizeF& size)
{
    // 9 for the 24-point notch, up to 22 once the panel is open.
    return std::clamp(size.height() * 0.38, 6.0, 22.0);
}
