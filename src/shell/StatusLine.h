#pragma once

#include "settings/PreferenceValues.h"

#include <QString>

// The line at the bottom of the open panel: the model's message while there is one, else how to
// reach the history and the commands.
class StatusLine
{
public:
    static QString text(const QString& message, HistoryShortcut shortcut);
    // Always at the trailing side.
    static QString trailing();
};
