#include "capture/widgets/MirrorPreview.h"

#include "capture/MirrorTexts.h"

#include <QPainter>

MirrorPreview::MirrorPreview(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(MirrorTexts::previewLabel());
    setMinimumSize(160, 120);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void MirrorPreview::setFrame(const QImage& frame)
{
    m_frame = frame;
    update();
}

void MirrorPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (m_frame.isNull())
        return;
    // Aspect fill: the picture covers the view and its overflow is cut off evenly.
    const QSizeF source = m_frame.size();
    const qreal scale = std::max(width() / source.width(), height() / source.height());
    const QSizeF shown = source * scale;
    const QRectF target((width() - shown.width()) / 2, (height() - shown.height()) / 2, shown.width(),
                        shown.height());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(width(), 0);
    painter.scale(-1, 1);
    painter.drawImage(target, m_frame);
}
