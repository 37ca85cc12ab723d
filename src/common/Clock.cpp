#include "common/Clock.h"

#include <ctime>

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

double SystemClock::uptime() const
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

ManualClock::ManualClock() : m_now(QDateTime(QDate(2026, 3, 1), QTime(9, 0), Qt::UTC)) {}

void ManualClock::advance(double seconds)
{
    m_now = m_now.addMSecs(qint64(seconds * 1000.0));
    m_uptime += seconds;
}
