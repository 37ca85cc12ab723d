#pragma once

#include <QString>

// One running Brenlow per user and machine, without asking anybody: an exclusive flock on a
// private file in the runtime folder. The kernel drops the lock when its process ends, however
// it ends, so a file left behind by a crash never blocks the next start.
class InstanceLock
{
public:
    enum class State {
        held,        // this process holds the lock
        heldByOther, // another live process holds it
        unavailable, // the file could not be opened or locked
    };

    // The lock file in the user's runtime folder.
    static QString defaultPath();

    explicit InstanceLock(QString path = defaultPath());
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // Tries once, without waiting.
    State acquire();
    void release();

    const QString& path() const { return m_path; }
    // After heldByOther: the process id its holder wrote, 0 when unreadable.
    qint64 holderPid() const { return m_holderPid; }
    // After unavailable: what the system said.
    const QString& error() const { return m_error; }

private:
    QString m_path;
    int m_fd = -1;
    qint64 m_holderPid = 0;
    QString m_error;
};
