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
// items, 2 seconds on the uptime clock, 0.2 seconds per call. The siblings of a menu are read
// together, so an interface that overlaps its calls waits once per batch rather than per item.
// Blocking: runs on the commands queue.
class MenuWalk
{
public:
    static constexpr int maxDepth = 6;
    static constexpr int maxItems = 400;
    static constexpr double deadlineSeconds = 2.0;
    static constexpr double callTimeout = 0.2;
    // Siblings read together; bounds the calls in flight, so queued ones meet their time-out.
    static constexpr qsizetype batchSize = 48;

    MenuWalk(Accessibility& accessibility, const Clock& clock)
        : m_accessibility(accessibility), m_clock(clock)
    {}
    MenuRead read(qint64 pid);

private:
    // Lists the shortcuts of these siblings and, after each, of its children.
    void walk(const AXElementList& siblings, int depth, const QString& topLevelTitle);
    bool outOfTime() const;
    // Reads attributes until time is up; an attribute skipped for lack of time is absent.
    QList<QVariantMap> attributes(const AXElementList& elements, const QStringList& names);

    Accessibility& m_accessibility;
    const Clock& m_clock;
    qint64 m_pid = 0;
    double m_deadline = 0;
    QList<CommandItem> m_items;
};
