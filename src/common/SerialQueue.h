#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QThread>

#include <functional>
#include <memory>

// A named worker thread that runs blocking work one piece at a time, in order.
// Results come back to the receiver's thread with a queued call and are dropped when the
// receiver is gone; callers add their own staleness token for superseded requests.
class SerialQueue final
{
public:
    explicit SerialQueue(QString label);
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    const QString& label() const { return m_label; }
    // Runs `work` on the queue's thread.
    void post(std::function<void()> work);

    // Runs `work` on the queue and hands its result to `done` on the receiver's thread.
    template <typename Result>
    void run(QObject* receiver, std::function<Result()> work, std::function<void(Result)> done)
    {
        QPointer<QObject> guard(receiver);
        post([guard, work = std::move(work), done = std::move(done)]() mutable {
            Result result = work();
            QObject* target = guard.data();
            if (!target)
                return;
            QMetaObject::invokeMethod(
                target,
                [guard, done = std::move(done), result = std::move(result)]() mutable {
                    if (guard)
                        done(std::move(result));
                },
                Qt::QueuedConnection);
        });
    }

private:
    void ensureStarted();

    QString m_label;
    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<QObject> m_worker;
};
