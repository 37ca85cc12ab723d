#include "platform/memory/MemoryCameraFeed.h"

#include <QMutexLocker>

void MemoryCameraFeed::requestAccess(QObject* context, std::function<void(bool)> answer)
{
    ++m_questions;
    m_askContext = context;
    m_pendingAnswer = std::move(answer);
}

bool MemoryCameraFeed::answerAccess(bool granted)
{
    if (!m_pendingAnswer)
        return false;
    m_authorization = granted ? Authorization::authorized : Authorization::denied;
    const auto answer = std::exchange(m_pendingAnswer, nullptr);
    if (m_askContext)
        answer(granted);
    return true;
}

QList<CameraFeed::Device> MemoryCameraFeed::devices()
{
    QMutexLocker lock(&m_mutex);
    return m_devices;
}

void MemoryCameraFeed::setDevices(const QList<Device>& devices)
{
    QMutexLocker lock(&m_mutex);
    m_devices = devices;
}

void MemoryCameraFeed::setStartResult(StartResult result)
{
    QMutexLocker lock(&m_mutex);
    m_result = result;
}

CameraFeed::StartResult MemoryCameraFeed::start(const Device& device)
{
    QMutexLocker lock(&m_mutex);
    m_started.append(device.id);
    m_running = m_result == StartResult::running;
    return m_result;
}

void MemoryCameraFeed::stop()
{
    m_running = false;
    ++m_stops;
}

QList<QByteArray> MemoryCameraFeed::startedDevices() const
{
    QMutexLocker lock(&m_mutex);
    return m_started;
}
