#pragma once

#include <QList>
#include <QString>

// Texts and rules of the focus card and the mini overview's timer button.
class FocusTexts
{
public:
    static QString header();
    static QString caption(bool running);
    static QString toggleSymbol(bool running);
    static QString toggleHint();
    static QString resetHint();
    // The mini overview's start/pause button.
    static QString miniToggleHint();

    // Preset lengths in minutes, in chip order.
    static QList<int> presets();
    static QString presetLabel(int minutes);
    // A chip is highlighted when its length is the current one.
    static bool presetSelected(int minutes, qint64 durationSeconds);

    // The settings' default length: "Standard-Fokus: 25 Minuten", stepped by one minute.
    static QString focusStepper(int minutes);
    static int stepFocusMinutes(int minutes, int delta);
    static constexpr int focusMinutesLowest = 1;
    static constexpr int focusMinutesHighest = 120;
    static QString focusReset();
    static QString focusSoundToggle();
};
