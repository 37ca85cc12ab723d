#include "media/widgets/NotchWing.h"

#include "ui/PanelTheme.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

NotchWing::NotchWing(const QImage& image, const QString& title, const QString& subtitle, double height,
                     QWidget* parent)
    : QWidget(parent), m_image(image), m_title(title), m_subtitle(subtitle)
{
    setFixedSize(wingWidth, int(std::lround(height)));
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

bool NotchWing::showsSubtitle() const
{
    return height() >= 28 && !m_subtitle.isEmpty();
}

void NotchWing::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = rect();
    const double radius = 14;
    // Square corners except the lower left, away from the notch.
    QPainterPath shape;
    shape.moveTo(frame.topLeft());
    shape.lineTo(frame.topRight());
    shape.lineTo(frame.bottomRight());
    shape.lineTo(frame.left() + radius, frame.bottom());
    shape.quadTo(frame.bottomLeft(), QPointF(frame.left(), frame.bottom() - radius));
    shape.closeSubpath();
    painter.fillPath(shape, PanelTheme::background());

    double x = 10;
    const double side = std::min(std::max(frame.height() - 6, 1.0), 26.0);
    if (!m_image.isNull()) {
        const QRectF cover(x, (frame.height() - side) / 2, side, side);
        QPainterPath clip;
        clip.addRoundedRect(cover, 6, 6);
        painter.save();
        painter.setClipPath(clip);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const QSizeF scaled = QSizeF(m_image.size()).scaled(cover.size(), Qt::KeepAspectRatioByExpanding);
        painter.drawImage(QRectF(cover.center().x() - scaled.width() / 2,
                                 cover.center().y() - scaled.height() / 2, scaled.width(), scaled.height()),
                          m_image);
        painter.restore();
        x += side + 8;
    }
    const double textWidth = frame.width() - x - 14;
    const QFont titleFont = PanelTheme::font(11, QFont::DemiBold);
    const QFont subtitleFont = PanelTheme::font(9);
    const bool subtitle = showsSubtitle();
    const double lines = subtitle ? QFontMetricsF(titleFont).height() + QFontMetricsF(subtitleFont).height()
                                  : QFontMetricsF(titleFont).height();
    double y = (frame.height() - lines) / 2;
    painter.setFont(titleFont);
    painter.setPen(PanelTheme::text());
    const QFontMetricsF titleMetrics(titleFont);
    painter.drawText(QRectF(x, y, textWidth, titleMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                     titleMetrics.elidedText(m_title, Qt::ElideRight, textWidth));
    if (subtitle) {
        y += titleMetrics.height();
        const QFontMetricsF metrics(subtitleFont);
        painter.setFont(subtitleFont);
        painter.setPen(PanelTheme::secondary());
        painter.drawText(QRectF(x, y, textWidth, metrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(m_subtitle, Qt::ElideRight, textWidth));
    }
}
