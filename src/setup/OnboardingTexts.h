#pragma once

#include "settings/PreferenceValues.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// Titles, navigation and the texts of the six tour steps.
class OnboardingTexts
{
public:
    static constexpr int stepCount = 6;

    struct Tip
    {
        QString symbol;
        QString title;
        QString text;
    };

    struct Content
    {
        QString symbol;              // large symbol on top; may be empty
        std::optional<bool> granted; // a permission state line, when the step has one
        QString state;               // its text
        QString lead;                // emphasised first line; may be empty
        QStringList paragraphs;
        QList<Tip> tips;
        QString note; // small print at the end; may be empty
    };

    static QString brand();
    // For assistive technologies: "Einführung, Schritt 3 von 6".
    static QString stepDescription(int step);
    static QString title(int step);
    static QString subtitle(int step);
    static bool hasBack(int step);
    static QString back();
    // "Optional · später änderbar" on the steps that ask for something optional.
    static std::optional<QString> badge(int step);
    static QString primary(int step);
    // The last step's primary button ends the tour instead of moving on.
    static bool primaryFinishes(int step);
    static QString later();

    static Content content(int step, bool accessibilityTrusted, bool screenCaptureAllowed,
                           HistoryShortcut shortcut);
};
