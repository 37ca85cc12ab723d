#include "shell/widgets/WelcomeGlow.h"

#include "model/PanelState.h"
#include "shell/PanelShape.h"
#include "ui/PanelTheme.h"

#include <QConicalGradient>
#include <QPainter>
#include <QVariantAnimation>

WelcomeGlow::WelcomeGlow(PanelState& panel, QWidget* parent)
    : QWidget(parent), m_panel(panel), m_turn(new QVariantAnimation(this))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_turn->setStartValue(0.0);
    m_turn->setEndValue(1.0);
    m_turn->setDuration(2200);
    m_turn->setLoopCount(-1);
    connect(m_turn, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_phase = value.toReal();
        update();
    });
}

bool WelcomeGlow::isAnimating() const
{
    return m_turn->state() == QAbstractAnimation::Running;
}

void WelcomeGlow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_turn->start();
}

void WelcomeGlow::hideEvent(QHideEvent* event)
{
    m_turn->stop();
    QWidget::hideEvent(event);
}

void WelcomeGlow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal notchWidth = std::min<qreal>(m_panel.notchWidth(), width());
    const qreal notchHeight = std::min<qreal>(m_panel.notchHeight(), height());
    const QRectF notch((width() - notchWidth) / 2, 0, notchWidth, notchHeight);
    const QPainterPath shape = PanelShape::path(notch, PanelShape::radiusFor(notch.size()));

    QConicalGradient light(notch.center(), -360.0 * m_phase);
    light.setColorAt(0.0, PanelTheme::accent());
    light.setColorAt(0.33, QColor(191, 90, 242));
    light.setColorAt(0.66, QColor(100, 210, 255));
    light.setColorAt(1.0, PanelTheme::accent());
    // Wide faint strokes first, then narrower brighter ones: a halo without a blur pass.
    for (int ring = 6; ring >= 1; --ring) {
        painter.setOpacity(0.10 + 0.12 * (6 - ring));
        painter.setPen(QPen(QBrush(light), ring * 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(shape);
    }
    painter.setOpacity(1.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(PanelTheme::background());
    painter.drawPath(shape);
}
