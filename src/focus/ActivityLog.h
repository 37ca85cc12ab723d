#pragma once

#include "focus/Notice.h"

#include <QList>
#include <QObject>

class Clock;
class Defaults;

// The application's own events ("Aktivität"), newest first, unbounded, stored whole under
// "notices.v1" after every change. Every area reports its events here. Main thread only.
class ActivityLog : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<Notice> notices READ notices NOTIFY noticesChanged)
public:
    static constexpr const char* storageKey = "notices.v1";

    // Loads the stored list; an unreadable one leaves the log empty.
    ActivityLog(Defaults& defaults, Clock& clock, QObject* parent = nullptr);

    const QList<Notice>& notices() const { return m_notices; }
    // A new notice at the top, dated now.
    void addNotice(const QString& title, const QString& detail);
    // The first notice of a start whose log is empty.
    void greetIfEmpty();

Q_SIGNALS:
    // A notice is about to arrive at index 0, and has arrived (also reported by noticesChanged).
    void noticeAboutToBeAdded();
    void noticeAdded();
    void noticesChanged();

private:
    // Stores the list after a notice arrived at its head.
    void store();

    Defaults& m_defaults;
    Clock& m_clock;
    QList<Notice> m_notices;
    // The list as it is stored: read at start or written since; empty until there is one.
    QByteArray m_stored;
};
