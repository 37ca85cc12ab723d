#pragma once

#include "platform/Permissions.h"
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

    // What a step's buttons ask for.
    enum class Action {
        openAccessibility,
        revealApp,
        openAutomation,
        requestScreenCapture,
        openScreenCaptureSettings,
    };

    struct Button
    {
        Action action;
        QString label;
    };

    // A player's automation state.
    struct AutomationRow
    {
        QString title;
        QString text;
        QString symbol;
        bool allowed;
    };

    // The permission states a step shows.
    struct States
    {
        bool accessibility = false;
        bool screenCapture = false;
        AutomationAccess spotify = AutomationAccess::notRunning;
        AutomationAccess music = AutomationAccess::notRunning;
    };

    struct Content
    {
        QString symbol;              // large symbol on top; may be empty
        std::optional<bool> granted; // a permission state line, when the step has one
        QString state;               // its text
        QList<AutomationRow> automation;
        QString lead; // emphasised first line; may be empty
        QStringList paragraphs;
        QList<Button> buttons;
        // "Status erneut prüfen", and with it the restart note while accessibility is missing.
        bool refreshRow = false;
        bool restartNote = false;
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

    static Content content(int step, const States& states, HistoryShortcut shortcut);
    // The settings anchor an action opens; empty for the actions that open none.
    static QString anchor(Action action);
};
