#pragma once

#include "platform/CameraFeed.h"

#include <QMutex>

#include <atomic>
#include <memory>

class QCamera;
class QMediaCaptureSession;
class QVideoFrame;
class QVideoSink;

// The mirror's camera through Qt Multimedia: a QCamera in a QMediaCaptureSession that hands its
// frames to a QVideoSink. The session objects are made on the first start, on the calling (the
// mirror's) thread, and taken down again by stop(), which is what switches the camera off.
// Linux desktops do not ask for camera access: it is always granted. Sleep and a locked screen
// reach it from the session's events, wired by the platform bundle.
class LinuxCameraFeed final : public CameraFeed
{
    Q_OBJECT
public:
    explicit LinuxCameraFeed(QObject* parent = nullptr);
    ~LinuxCameraFeed() override;

    Authorization authorization() const override { return Authorization::authorized; }
    void requestAccess(QObject* context, std::function<void(bool)> answer) override;

    QList<Device> devices() override;
    StartResult start(const Device& device) override;
    void stop() override;
    bool running() const override { return m_running; }

private:
    void deliver(const QVideoFrame& frame);

    std::unique_ptr<QMediaCaptureSession> m_session;
    std::unique_ptr<QVideoSink> m_sink;
    std::unique_ptr<QCamera> m_camera;
    std::atomic<bool> m_running{false};
    // One picture converted at a time; frames that arrive meanwhile are skipped.
    std::atomic<bool> m_framePending{false};
};
