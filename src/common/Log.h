#pragma once

#include <QLoggingCategory>

// One logging category per area, so a user's report can switch on just the part in question:
//   QT_LOGGING_RULES="brenlow.clipboard.debug=true" brenlow
// Every failure that ends in a German status text logs its underlying error here once.
Q_DECLARE_LOGGING_CATEGORY(lcClipboard)    // brenlow.clipboard: capture, archive (SQLite)
Q_DECLARE_LOGGING_CATEGORY(lcSettings)     // brenlow.settings: the settings domain on disk
Q_DECLARE_LOGGING_CATEGORY(lcPanel)        // brenlow.panel: window, hover, hot key
Q_DECLARE_LOGGING_CATEGORY(lcProductivity) // brenlow.productivity: notes, workspaces, shelf
Q_DECLARE_LOGGING_CATEGORY(lcSetup)        // brenlow.setup: permissions, tour
Q_DECLARE_LOGGING_CATEGORY(lcPlatform)     // brenlow.platform: X11, D-Bus and other desktop services
