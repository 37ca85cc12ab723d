#include "shell/widgets/LayoutButton.h"

#include "shell/SettingsTexts.h"
#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

#include <QPainter>

LayoutButton::LayoutButton(PanelLayout layout, QWidget* parent) : QAbstractButton(parent), m_layout(layout)
{
    setText(PanelLayouts::label(layout));
    setAccessibleName(text());
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setMinimumSize(90, 54);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LayoutButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(isChecked() ? QPen(PanelTheme::accent(), 2) : QPen(PanelTheme::cardBorder(), 1));
    painter.setBrush(isDown() ? PanelTheme::raised() : PanelTheme::card());
    painter.drawRoundedRect(frame, 10, 10);

    const QColor tone = isChecked() ? PanelTheme::accent() : PanelTheme::secondary();
    const auto glyphFont = Symbol::font(20);
    painter.setPen(tone);
    painter.setFont(glyphFont ? *glyphFont : PanelTheme::font(10));
    const QRect upper(0, 6, width(), 24);
    painter.drawText(upper, Qt::AlignCenter,
                     Symbol::text(SettingsTexts::layoutSymbol(m_layout), glyphFont.has_value()));
    painter.setPen(isChecked() ? PanelTheme::text() : PanelTheme::secondary());
    painter.setFont(PanelTheme::font(12, isChecked() ? QFont::DemiBold : QFont::Normal));
    painter.drawText(QRect(0, 30, width(), height() - 34), Qt::AlignHCenter | Qt::AlignTop, text());
}
