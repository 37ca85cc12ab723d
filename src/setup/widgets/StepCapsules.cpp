#include "setup/widgets/StepCapsules.h"

#include "ui/PanelTheme.h"

#include <QPainter>

namespace {
constexpr int dot = 6;
constexpr int longDot = 22;
constexpr int gap = 5;
} // namespace

StepCapsules::StepCapsules(int count, QWidget* parent) : QWidget(parent), m_count(count)
{
    setFixedSize(sizeHint());
}

void StepCapsules::setCurrent(int step)
{
    m_current = step;
    update();
}

QSize StepCapsules::sizeHint() const
{
    return {(m_count - 1) * (dot + gap) + longDot, dot + 2};
}

void StepCapsules::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    qreal x = 0;
    for (int i = 0; i < m_count; ++i) {
        const qreal width = i == m_current ? longDot : dot;
        painter.setBrush(i == m_current  ? PanelTheme::accent()
                         : i < m_current ? PanelTheme::secondary()
                                         : PanelTheme::raised());
        painter.drawRoundedRect(QRectF(x, 1, width, dot), dot / 2.0, dot / 2.0);
        x += width + gap;
    }
}
