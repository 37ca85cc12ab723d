#pragma once

#include <QColor>
#include <QFont>
#include <QString>

// The panel's look in one place: black, white text, one accent, slightly lighter cards.
class PanelTheme
{
public:
    static QColor background() { return QColor(0, 0, 0); }
    static QColor card() { return QColor(255, 255, 255, 16); }
    static QColor cardBorder() { return QColor(255, 255, 255, 20); }
    static QColor raised() { return QColor(255, 255, 255, 30); }
    static QColor text() { return QColor(245, 245, 247); }
    static QColor secondary() { return QColor(161, 161, 168); }
    static QColor tertiary() { return QColor(104, 104, 112); }
    static QColor accent() { return QColor(124, 156, 255); }
    static QColor accentText() { return QColor(10, 12, 24); }
    static QColor active() { return QColor(255, 159, 10); }

    static constexpr int panelRadius = 22;
    static constexpr int closedRadius = 9;
    static constexpr int cardRadius = 14;

    // Text faces: the first installed of a few calm sans-serifs.
    static QFont font(int pixelSize, QFont::Weight weight = QFont::Normal);
    // Times and counters: digits of equal width so they do not jitter.
    static QFont digits(int pixelSize, QFont::Weight weight = QFont::Medium);
    // Button texts show "&" as written instead of taking it for a mnemonic marker.
    static QString buttonText(QString text);
    // Rules for the standard controls inside the panel.
    static QString styleSheet();
};
