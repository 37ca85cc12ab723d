#pragma once

#include <QDateTime>

// Time is an input: wall time for deadlines and dates, monotonic uptime for hover timing.
class Clock
{
public:
    virtual ~Clock() = default;
    // Current wall-clock instant (UTC).
    virtual QDateTime now() const = 0;
    // Seconds of monotonic uptime; never jumps with the wall clock.
    virtual double uptime() const = 0;
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    double uptime() const override;
};

// Advanced by hand in tests; wall time and uptime move together.
class ManualClock final : public Clock
{
public:
    ManualClock();
    QDateTime now() const override { return m_now; }
    double uptime() const override { return m_uptime; }
    void advance(double seconds);
    void setNow(const QDateTime& now) { m_now = now; }

private:
    QDateTime m_now;
    double m_uptime = 1000.0;
};
