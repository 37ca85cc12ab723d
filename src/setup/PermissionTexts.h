#pragma once

#include "platform/Permissions.h"

#include <QString>

// What the tour and the settings say about permissions, and the messages of the repair actions.
class PermissionTexts
{
public:
    // The settings anchors the callers pass.
    static QString accessibilityAnchor();
    static QString automationAnchor();
    static QString screenCaptureAnchor();

    static QString accessibilityGranted();
    static QString accessibilityNotYet();
    static QString accessibilityMissing();
    static QString screenCaptureGranted();
    static QString screenCaptureMissing();
    static QString allowAccessibility();

    // An automation row: "Spotify" and "Apple Music", their state text and symbol.
    static QString spotifyTitle();
    static QString musicTitle();
    static QString automationText(AutomationAccess access);
    static QString automationSymbol(AutomationAccess access);

    static QString recheck();
    static QString checking();
    static QString restartNote();
    static QString restart();
    static QString restartHelp();
    static QString restartUnavailable();

    // What to open by hand when the settings location cannot be opened; empty for a text that
    // forms no location.
    static QString settingsFallback(const QString& anchor);
    // "App-Pfad: …" when the file manager cannot show the running program.
    static QString appPath(const QString& path);
};
