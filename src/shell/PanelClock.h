#pragma once

#include <QDateTime>
#include <QString>

// The header clock: 24-hour time, day and month, and the full date for its hint.
class PanelClock
{
public:
    // "09:05" from local time, never with an AM/PM marker.
    static QString time(const QDateTime& now);
    // "07.03."
    static QString dayMonth(const QDateTime& now);
    // "Samstag, 7. März 2026, 09:05"
    static QString fullDate(const QDateTime& now);
    // Seconds from `now` to the next minute boundary, in (0, 60].
    static double secondsToNextMinute(const QDateTime& now);
};
