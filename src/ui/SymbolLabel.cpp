#include "ui/SymbolLabel.h"

#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

SymbolLabel::SymbolLabel(const QString& symbol, int pixelSize, QWidget* parent)
    : QLabel(parent), m_pixelSize(pixelSize)
{
    setAlignment(Qt::AlignCenter);
    setSymbol(symbol);
}

void SymbolLabel::setSymbol(const QString& symbol)
{
    m_symbol = symbol;
    const auto glyphFont = Symbol::font(m_pixelSize);
    setFont(glyphFont ? *glyphFont : PanelTheme::font(qMax(9, m_pixelSize / 2)));
    setText(Symbol::text(symbol, glyphFont.has_value()));
    setMinimumSize(m_pixelSize + 2, m_pixelSize + 2);
}
