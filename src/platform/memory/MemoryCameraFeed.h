#pragma once

#include "platform/CameraFeed.h"

#include <QMutex>
#include <QPointer>

#include <atomic>

// A camera feed the test sets up: the cameras present, the access answer and what a start does.
// Session calls arrive on the mirror's queue, so the state they read is guarded.
class MemoryCameraFeed final : public CameraFeed
{
    Q_OBJECT
public:
    using CameraFeed::CameraFeed;

    Authorization authorization() const override { return m_authorization; }
    void requestAccess(QObject* context, std::function<void(bool)> answer) override;

    QList<Device> devices() override;
    StartResult start(const Device& device) override;
    void stop() override;
    bool running() const override { return m_running; }

    void setAuthorization(Authorization authorization) { m_authorization = authorization; }
    void setDevices(const QList<Device>& devices);
    // What the next starts answer (running unless told otherwise).
    void setStartResult(StartResult result);
    // The user answers the open access question; false when none is open.
    bool answerAccess(bool granted);
    int accessQuestions() const { return m_questions; }
    // The machine goes to sleep or the screen locks.
    void pauseSession() { Q_EMIT sessionPaused(); }

    // The session's history, for tests: every start's device id, and how often it was stopped.
    QList<QByteArray> startedDevices() const;
    int stops() const { return m_stops; }

private:
    std::atomic<Authorization> m_authorization{Authorization::authorized};
    mutable QMutex m_mutex;
    QList<Device> m_devices;
    StartResult m_result = StartResult::running;
    QList<QByteArray> m_started;
    std::atomic<bool> m_running{false};
    std::atomic<int> m_stops{0};
    int m_questions = 0;
    QPointer<QObject> m_askContext;
    std::function<void(bool)> m_pendingAnswer;
};
