#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <map>

class ManualClock;

// Runs work on the main thread after a delay; the work dies with its context object.
class Scheduler
{
public:
    using Handle = quint64;
    virtual ~Scheduler() = default;
    // Schedules `work` after `seconds`; returns a handle for cancel().
    virtual Handle schedule(double seconds, QObject* context, std::function<void()> work) = 0;
    // Cancels pending work; unknown or finished handles are ignored.
    virtual void cancel(Handle handle) = 0;
};

class TimerScheduler final : public Scheduler
{
public:
    ~TimerScheduler() override;
    Handle schedule(double seconds, QObject* context, std::function<void()> work) override;
    void cancel(Handle handle) override;

private:
    Handle m_next = 1;
    std::map<Handle, QPointer<QObject>> m_timers;
};

// Test scheduler: work fires only when the manual clock is advanced through it.
class ManualScheduler final : public Scheduler
{
public:
    explicit ManualScheduler(ManualClock& clock) : m_clock(clock) {}
    Handle schedule(double seconds, QObject* context, std::function<void()> work) override;
    void cancel(Handle handle) override;
    // Advances the clock, firing due work in time order at its due time.
    void advance(double seconds);
    int pending() const { return int(m_work.size()); }

private:
    struct Work
    {
        double due;
        QPointer<QObject> context;
        std::function<void()> run;
    };
    ManualClock& m_clock;
    Handle m_next = 1;
    std::map<Handle, Work> m_work;
};

// One pending piece of work that replaces itself: scheduling again cancels the previous one.
class ScheduledWork
{
public:
    ScheduledWork(Scheduler& scheduler, QObject* context) : m_scheduler(scheduler), m_context(context) {}
    ~ScheduledWork() { cancel(); }
    ScheduledWork(const ScheduledWork&) = delete;
    ScheduledWork& operator=(const ScheduledWork&) = delete;

    void schedule(double seconds, std::function<void()> work);
    void cancel();
    bool isPending() const { return m_handle != 0; }

private:
    Scheduler& m_scheduler;
    QObject* m_context;
    Scheduler::Handle m_handle = 0;
};
