#include "focus/FocusTexts.h"

#include <algorithm>

QString FocusTexts::header()
{
    return QStringLiteral("FOKUSZEIT");
}

QString FocusTexts::caption(bool running)
{
    return running ? QStringLiteral("Zeit für deinen Flow.") : QStringLiteral("Bereit, wenn du es bist.");
}

QString FocusTexts::toggleSymbol(bool running)
{
    return running ? QStringLiteral("pause.fill") : QStringLiteral("play.fill");
}

QString FocusTexts::toggleHint()
{
    return QStringLiteral("Timer starten / pausieren");
}

QString FocusTexts::resetHint()
{
    return QStringLiteral("Timer zurücksetzen");
}

QString FocusTexts::miniToggleHint()
{
    return QStringLiteral("Fokus starten / pausieren");
}

QList<int> FocusTexts::presets()
{
    return {5, 15, 30, 45, 60};
}

QString FocusTexts::presetLabel(int minutes)
{
    return QString::number(minutes) + QStringLiteral(" Min");
}

bool FocusTexts::presetSelected(int minutes, qint64 durationSeconds)
{
    return qint64(minutes) * 60 == durationSeconds;
}

QString FocusTexts::focusStepper(int minutes)
{
    return QStringLiteral("Standard-Fokus: ") + QString::number(minutes) + QStringLiteral(" Minuten");
}

int FocusTexts::stepFocusMinutes(int minutes, int delta)
{
    return std::clamp(minutes + delta, focusMinutesLowest, focusMinutesHighest);
}

QString FocusTexts::focusReset()
{
    return QStringLiteral("Fokus jetzt auf Standard zurücksetzen");
}
QString FocusTexts::focusSoundToggle()
{
    return QStringLiteral("Ton am Ende der Fokuszeit");
}
