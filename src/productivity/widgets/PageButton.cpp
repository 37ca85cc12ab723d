#include "productivity/widgets/PageButton.h"

#include "ui/PanelTheme.h"

#include <QPushButton>

QPushButton* PageButton::make(const QString& text, const QString& kind)
{
    auto* button = new QPushButton(text);
    button->setCursor(Qt::PointingHandCursor);
    button->setFont(PanelTheme::font(12, kind == u"primary" ? QFont::DemiBold : QFont::Normal));
    // The panel takes the keyboard only for text fields; buttons are for the pointer.
    button->setFocusPolicy(Qt::NoFocus);
    if (!kind.isEmpty())
        button->setProperty("kind", kind);
    return button;
}
