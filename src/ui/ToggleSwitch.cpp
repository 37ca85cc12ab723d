#include "ui/ToggleSwitch.h"

#include "ui/PanelTheme.h"

#include <QPainter>

ToggleSwitch::ToggleSwitch(QWidget* parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFixedSize(sizeHint());
}

void ToggleSwitch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? PanelTheme::accent() : PanelTheme::raised());
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);

    const qreal knob = track.height() - 4;
    const qreal x = isChecked() ? track.right() - 2 - knob : track.left() + 2;
    painter.setBrush(isEnabled() ? PanelTheme::text() : PanelTheme::secondary());
    painter.drawEllipse(QRectF(x, track.top() + 2, knob, knob));
}
