#pragma once

#include <QLabel>

// A label in one of the panel's text styles.
class TextLabel : public QLabel
{
    Q_OBJECT
public:
    enum Tone {
        primary,
        secondary,
        caps, // small upper-case section headers
    };

    TextLabel(const QString& text, int pixelSize, Tone tone = primary, QFont::Weight weight = QFont::Normal,
              QWidget* parent = nullptr);

    // Long notes wrap instead of widening the panel.
    TextLabel* wrapping();
};
