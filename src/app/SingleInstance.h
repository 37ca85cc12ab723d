#pragma once

#include "app/InstanceLock.h"

#include <QObject>

#include <functional>

// One Brenlow per session. The first start owns a name on the session bus and a lock file; a
// second start asks the first to open its panel and ends. It ends quietly only when the first
// has answered: a first instance that does not answer (stopped, hung), or one that cannot be
// asked because there is no bus, is reported on stderr and the second start fails.
class SingleInstance : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.brenlow.Brenlow")
public:
    static constexpr const char* serviceName = "app.brenlow.Brenlow";
    static constexpr const char* objectPath = "/app/brenlow/Brenlow";
    // How long a second start waits for the first to answer.
    static constexpr int answerTimeoutMs = 5000;
    // How much longer the call itself waits, for an answer given just before the end of it.
    static constexpr int answerGraceMs = 1000;

    enum class Claim {
        first,      // this process is the instance (and holds the name and lock it could get)
        handedOver, // the running instance opened its panel
        noAnswer,   // the running instance did not answer within the wait
        refused,    // another instance runs and could not be asked (no bus, or it refused)
    };

    explicit SingleInstance(QString lockPath = InstanceLock::defaultPath(), QObject* parent = nullptr);

    Claim claim();
    // For every claim but handedOver: what the user should know, in German; empty when there
    // is nothing to say.
    const QString& report() const { return m_report; }

    // Runs when a later start asks this instance to open its panel.
    std::function<void()> onReopen;

public Q_SLOTS:
    Q_SCRIPTABLE void Reopen();
    // What a second start calls: opens the panel only while that start still waits for the
    // answer (milliseconds since the epoch), and answers whether it did.
    Q_SCRIPTABLE bool ReopenBefore(qlonglong deadlineMs);

private:
    Claim claimWithLock();
    Claim askRunningInstance(bool& retry);

    InstanceLock m_lock;
    QString m_report;
};
