#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

// The camera as a live picture for the mirror: which cameras there are, whether we may use them,
// and one session that shows one of them. Nothing is recorded or stored.
//
// Access is asked on the main thread. The session work (devices(), start(), stop(), running())
// blocks and is called from one worker thread only, the mirror's queue.
class CameraFeed : public QObject
{
    Q_OBJECT
public:
    enum class Authorization { notDetermined, authorized, denied, restricted };
    enum class DeviceType { builtInWideAngle, external };
    struct Device
    {
        QByteArray id;
        QString name;
        DeviceType type = DeviceType::external;
    };
    // How a start ended: the session runs, or the step that failed.
    enum class StartResult { running, cannotOpen, inputRejected, notRunning };

    using QObject::QObject;

    virtual Authorization authorization() const = 0;
    // Asks the user; `answer` (granted or not) runs later on the main thread while `context` lives.
    virtual void requestAccess(QObject* context, std::function<void(bool)> answer) = 0;

    virtual QList<Device> devices() = 0;
    // Opens the device, puts it as the session's only input and starts the session.
    virtual StartResult start(const Device& device) = 0;
    // Stops the session when it runs and removes its input: the camera is off afterwards.
    virtual void stop() = 0;
    virtual bool running() const = 0;

Q_SIGNALS:
    // A new picture, as the camera sees it (not mirrored); from any thread.
    void frameArrived(const QImage& frame);
    // The session broke off on its own (device unplugged, taken away, runtime error); any thread.
    void interrupted();
    // The machine is about to sleep or the screen was locked: a live camera should go off now.
    // On the main thread.
    void sessionPaused();
};
