#include "ui/Divider.h"

#include "ui/PanelTheme.h"

#include <QPainter>

Divider::Divider(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(9);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Divider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(QRect(0, height() / 2, width(), 1), PanelTheme::cardBorder());
}
