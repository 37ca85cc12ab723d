#include "shell/StatusLine.h"

QString StatusLine::text(const QString& message, HistoryShortcut shortcut)
{
    if (!message.isEmpty())
        return message;
    const QString history = shortcut == HistoryShortcut::off
                                ? QStringLiteral("Verlauf über den Tab öffnen")
                                : HistoryShortcuts::label(shortcut) + QStringLiteral("  Verlauf");
    return history + QStringLiteral(" · ⌘ halten  Befehle");
}

QString StatusLine::trailing()
{
    return QStringLiteral("BRENLOW");
}
