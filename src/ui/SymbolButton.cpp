#include "ui/SymbolButton.h"

#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

#include <QPainter>

#include <algorithm>

SymbolButton::SymbolButton(const QString& symbol, const QString& hint, int diameter, QWidget* parent)
    : QAbstractButton(parent), m_symbol(symbol), m_diameter(diameter)
{
    setHint(hint);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(sizeHint());
}

void SymbolButton::setSymbol(const QString& symbol)
{
    if (m_symbol == symbol)
        return;
    m_symbol = symbol;
    update();
}

void SymbolButton::setHint(const QString& hint)
{
    setToolTip(hint);
    setAccessibleName(hint);
}

void SymbolButton::setStyle(Style style)
{
    m_style = style;
    update();
}

QSize SymbolButton::sizeHint() const
{
    return {m_diameter, m_diameter};
}

void SymbolButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF disc = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);

    QColor glyph = PanelTheme::text();
    switch (m_style) {
    case flat:
        if (isChecked())
            painter.setBrush(PanelTheme::raised());
        else if (m_hovered || isDown())
            painter.setBrush(PanelTheme::card());
        else
            painter.setBrush(Qt::NoBrush);
        if (!isChecked() && !m_hovered)
            glyph = PanelTheme::secondary();
        if (isChecked())
            glyph = PanelTheme::accent();
        break;
    case filled:
        painter.setBrush(isDown() ? PanelTheme::secondary() : PanelTheme::text());
        glyph = PanelTheme::background();
        break;
    case tinted:
        painter.setBrush(m_hovered || isDown() ? PanelTheme::raised() : PanelTheme::card());
        break;
    }
    if (!isEnabled())
        glyph = PanelTheme::tertiary();
    painter.setPen(Qt::NoPen);
    // A capsule: a circle for square buttons, a pill for the stretched tabs.
    const qreal radius = std::min(disc.width(), disc.height()) / 2;
    painter.drawRoundedRect(disc, radius, radius);

    const int glyphSize = qRound(std::min(width(), height()) * 0.6);
    const auto glyphFont = Symbol::font(glyphSize);
    painter.setFont(glyphFont ? *glyphFont : PanelTheme::font(qMax(8, m_diameter / 3)));
    painter.setPen(glyph);
    painter.drawText(rect(), Qt::AlignCenter, Symbol::text(m_symbol, glyphFont.has_value()));
}

void SymbolButton::enterEvent(QEnterEvent* event)
{
    m_hovered = true;
    update();
    QAbstractButton::enterEvent(event);
}

void SymbolButton::leaveEvent(QEvent* event)
{
    m_hovered = false;
    update();
    QAbstractButton::leaveEvent(event);
}
