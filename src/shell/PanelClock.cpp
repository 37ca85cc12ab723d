#include "shell/PanelClock.h"

#include <QLocale>

QString PanelClock::time(const QDateTime& now)
{
    return now.toLocalTime().toString(QStringLiteral("HH:mm"));
}

QString PanelClock::dayMonth(const QDateTime& now)
{
    return now.toLocalTime().toString(QStringLiteral("dd.MM."));
}

QString PanelClock::fullDate(const QDateTime& now)
{
    const QDateTime local = now.toLocalTime();
    const QLocale german(QLocale::German, QLocale::Germany);
    return german.toString(local.date(), QLocale::LongFormat) + QStringLiteral(", ") + time(now);
}

double PanelClock::secondsToNextMinute(const QDateTime& now)
{
    const qint64 intoMinute = ((now.toMSecsSinceEpoch() % 60'000) + 60'000) % 60'000;
    return double(60'000 - intoMinute) / 1000.0;
}
