#pragma once

#include "settings/PreferenceValues.h"

#include <QString>
#include <QStringList>

// Sections, labels, ranges and formats of the settings page.
class SettingsTexts
{
public:
    // Section identifiers are also their labels, in switcher order.
    static QStringList sections();
    static QString switcherName();
    static QString productLine();
    static QString quit();

    // "Ansicht"
    static QString replayWelcome();
    static QString formHeader();
    // The selected layout's description, then that changes apply at once.
    static QString layoutCaption(PanelLayout layout);
    static QString layoutSymbol(PanelLayout layout);
    static QString miniToggle();
    static QString rememberPageToggle();
    static QString screenMainToggle();
    static QString screenMainNote();
    static QString animateToggle();

    // "Bedienung"
    static QString hoverToggle();
    static QString openDelayLabel();
    static QString closeDelayLabel();
    static QString hoverNote();
    static QString commandsToggle();
    static QString commandDelayLabel();
    static QString shortcutPicker();
    // The picker's entry; `off` has no key label, so it reads "Aus".
    static QString shortcutChoice(HistoryShortcut shortcut);

    // A delay row's range in seconds and its value text ("0.00 s").
    struct DelayRange
    {
        double lowest;
        double highest;
    };
    static DelayRange openDelayRange() { return {0.0, 0.8}; }
    static DelayRange closeDelayRange() { return {0.2, 1.5}; }
    static DelayRange commandDelayRange() { return {0.5, 2.0}; }
    static QString delayText(double seconds);
    // The sliders move in hundredths of a second, the precision the value text shows.
    static int delayToSlider(double seconds);
    static double sliderToDelay(int position);
};
