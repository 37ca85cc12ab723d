#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QThread>

#include <functional>
#include <memory>

// A named worker thread that runs blocking work one piece at a time, in order. The one way this
// program leaves the main thread: results come back as a queued call on the thread that created
// the queue, where the receiver is checked before the answer is handed over; a receiver that is
// gone gets nothing. Callers add their own staleness token for superseded requests.
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

    // Runs `work` on the queue and hands its result to `done`, on the queue creator's thread,
    // while `receiver` still exists.
    template <typename Result>
    void run(QObject* receiver, std::function<Result()> work, std::function<void(Result)> done)
    {
        QPointer<QObject> guard(receiver);
        // The queue's own object outlives every piece of work (the destructor joins the thread
        // first), so posting to it is always safe; the receiver is only looked at where it lives.
        QObject* replies = m_replies.get();
        post([guard, replies, work = std::move(work), done = std::move(done)]() mutable {
            Result result = work();
            QMetaObject::invokeMethod(
                replies,
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
    std::unique_ptr<QObject> m_replies;
    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<QObject> m_worker;
};
