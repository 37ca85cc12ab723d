#pragma once

#include "commands/CommandItem.h"

class Accessibility;
class Clock;

// The result of one read of an application's menu bar.
struct MenuRead
{
    QList<CommandItem> items;
    int error = 0;
};

// Reads the shortcuts of a process's menu bar, depth first, within its limits: 6 levels, 400
// items, 2 seconds on the uptime clock, 0.2 seconds per call. Blocking: runs on the commands
// queue.
class MenuWalk
{
public:
    static constexpr int maxDepth = 6;
    static constexpr int maxItems = 400;
    static constexpr double deadlineSeconds = 2.0;
    static constexpr double callTimeout = 0.2;

    MenuWalk(Accessibility& accessibility, const Clock& clock)
        : m_accessibility(accessibility), m_clock(clock)
    {}
    MenuRead read(qint64 pid);

private:
    void walk(const AXElement& element, int depth, const QString& topLevelTitle);
    bool outOfTime() const;
    // Reads an attribute unless time is up; an attribute skipped for lack of time is absent.
    QVariant attribute(const AXElement& element, const QString& name);

    Accessibility& m_accessibility;
    const Clock& m_clock;
    qint64 m_pid = 0;
    double m_deadline = 0;
    QList<CommandItem> m_items;
};
