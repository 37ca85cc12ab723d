#pragma once

#include "platform/LoginItems.h"

#include <QString>

// What the settings say about start at login.
class LoginItemTexts
{
public:
    static QString switchTitle();
    static QString statusLine(LoginItemStatus status);
    static QString changeFailed(const QString& systemError);
    static QString openSettings();
    // The button shows while the desktop holds the entry back or a change failed.
    static bool offersSettings(LoginItemStatus status, bool hasError);
    // When the desktop has no page for its autostart programs.
    static QString settingsUnavailable();
};
