#pragma once

#include "common/Scheduler.h"

#include <QWidget>

class Clock;
class PageRegistry;
class QLabel;

// The top row of the open panel: the areas' header items (the place and weather at the leading
// side, the microphone dot before the clock) and the clock.
class HeaderRow : public QWidget
{
    Q_OBJECT
public:
    HeaderRow(Clock& clock, Scheduler& scheduler, const PageRegistry& pages, QWidget* parent = nullptr);

    QString timeText() const;
    QString dateText() const;
    QString fullDateText() const;

private:
    // Redraws the clock and waits for the next minute boundary.
    void tick();

    Clock& m_clock;
    QLabel* m_time;
    QLabel* m_date;
    ScheduledWork m_nextMinute;
};
