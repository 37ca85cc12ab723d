#include "common/Scheduler.h"

#include "common/Clock.h"

#include <QTimer>

TimerScheduler::~TimerScheduler()
{
    for (auto& [handle, timer] : m_timers)
        delete timer.data();
}

Scheduler::Handle TimerScheduler::schedule(double seconds, QObject* context, std::function<void()> work)
{
    const Handle handle = m_next++;
    auto* timer = new QTimer(context);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, timer, [this, handle, timer, work = std::move(work)] {
        m_timers.erase(handle);
        timer->deleteLater();
        work();
    });
    m_timers.emplace(handle, timer);
    timer->start(std::max(0, int(seconds * 1000.0 + 0.5)));
    return handle;
}

void TimerScheduler::cancel(Handle handle)
{
    const auto found = m_timers.find(handle);
    if (found == m_timers.end())
        return;
    delete found->second.data();
    m_timers.erase(found);
}

Scheduler::Handle ManualScheduler::schedule(double seconds, QObject* context, std::function<void()> work)
{
    const Handle handle = m_next++;
    m_work.emplace(handle, Work{m_clock.uptime() + std::max(0.0, seconds), context, std::move(work)});
    return handle;
}

void ManualScheduler::cancel(Handle handle)
{
    m_work.erase(handle);
}

void ManualScheduler::advance(double seconds)
{
    const double end = m_clock.uptime() + seconds;
    for (;;) {
        auto next = m_work.end();
        for (auto it = m_work.begin(); it != m_work.end(); ++it) {
            if (it->second.due <= end && (next == m_work.end() || it->second.due < next->second.due))
                next = it;
        }
        if (next == m_work.end())
            break;
        Work work = std::move(next->second);
        m_work.erase(next);
        if (work.due > m_clock.uptime())
            m_clock.advance(work.due - m_clock.uptime());
        if (work.context)
            work.run();
    }
    if (end > m_clock.uptime())
        m_clock.advance(end - m_clock.uptime());
}

void ScheduledWork::schedule(double seconds, std::function<void()> work)
{
    cancel();
    m_handle = m_scheduler.schedule(seconds, m_context, [this, work = std::move(work)] {
        m_handle = 0;
        work();
    });
}

void ScheduledWork::cancel()
{
    if (m_handle != 0)
        m_scheduler.cancel(m_handle);
    m_handle = 0;
}
