#include "common/SerialQueue.h"

SerialQueue::SerialQueue(QString label) : m_label(std::move(label)), m_replies(std::make_unique<QObject>()) {}

SerialQueue::~SerialQueue()
{
    if (!m_thread)
        return;
    m_thread->quit();
    m_thread->wait();
    m_worker.reset();
}

void SerialQueue::ensureStarted()
{
    // Started on first use: most queues idle for the whole run and should cost no thread.
    if (m_thread)
        return;
    m_thread = std::make_unique<QThread>();
    m_thread->setObjectName(m_label);
    m_worker = std::make_unique<QObject>();
    m_worker->moveToThread(m_thread.get());
    m_thread->start(QThread::LowPriority);
}

void SerialQueue::post(std::function<void()> work)
{
    ensureStarted();
    QMetaObject::invokeMethod(m_worker.get(), std::move(work), Qt::QueuedConnection);
}
