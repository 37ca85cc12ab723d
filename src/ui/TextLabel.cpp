#include "ui/TextLabel.h"

#include "ui/PanelTheme.h"

TextLabel::TextLabel(const QString& text, int pixelSize, Tone tone, QFont::Weight weight, QWidget* parent)
    : QLabel(text, parent)
{
    setFont(PanelTheme::font(pixelSize, tone == caps ? QFont::DemiBold : weight));
    if (tone == secondary)
        setProperty("role", QStringLiteral("secondary"));
    else if (tone == caps)
        setProperty("role", QStringLiteral("caps"));
    setTextFormat(Qt::PlainText);
}

TextLabel* TextLabel::wrapping()
{
    setWordWrap(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    return this;
}
