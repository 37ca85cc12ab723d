#include "ui/Card.h"

#include "ui/PanelTheme.h"

#include <QPainter>

Card::Card(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground, false);
}

void Card::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(PanelTheme::cardBorder(), 1));
    painter.setBrush(PanelTheme::card());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), PanelTheme::cardRadius,
                            PanelTheme::cardRadius);
}
