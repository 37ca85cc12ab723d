#include "productivity/widgets/ElidedTextLabel.h"

#include <QFontMetrics>

ElidedTextLabel::ElidedTextLabel(const QString& text, int pixelSize, Tone tone, QFont::Weight weight,
                                 QWidget* parent)
    : TextLabel(text, pixelSize, tone, weight, parent), m_fullText(text)
{
    // The row decides the width; the text never widens the panel.
    setMinimumWidth(40);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedTextLabel::resizeEvent(QResizeEvent* event)
{
    TextLabel::resizeEvent(event);
    elide();
}

void ElidedTextLabel::elide()
{
    const QString shown = fontMetrics().elidedText(m_fullText, Qt::ElideRight, contentsRect().width());
    if (shown != text())
        setText(shown);
}
