#pragma once

#include "common/SerialQueue.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QUuid>

class CameraFeed;

// The mirror on the capture page: a live picture of the camera, nothing recorded or sent. Made
// by the mirror view and gone with it; the camera is on only between start() and stop(). Session
// work runs on the "Brenlow.cameraMirror" queue; every start carries a generation token, and an
// answer for an older start is dropped. Main thread only.
class CameraMirror : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool running READ running NOTIFY runningChanged)
    Q_PROPERTY(bool starting READ starting NOTIFY startingChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(bool denied READ denied NOTIFY deniedChanged)
public:
    explicit CameraMirror(CameraFeed& feed, QObject* parent = nullptr);
    ~CameraMirror() override;

    bool running() const { return m_running; }
    bool starting() const { return m_starting; }
    const QString& status() const { return m_status; }
    bool denied() const { return m_denied; }
    const QUuid& generation() const { return m_generation; }
    // The latest picture as the camera sees it; the view mirrors it. Empty when not running.
    const QImage& frame() const { return m_frame; }

    void start();
    void stop();

Q_SIGNALS:
    void runningChanged();
    void startingChanged();
    void statusChanged();
    void deniedChanged();
    void frameChanged();

private:
    void configure(const QUuid& token);
    void finish(const QString& error, const QUuid& token);
    void permissionDenied();
    void interrupted();
    void takeFrame(const QImage& frame);
    void setRunning(bool running);
    void setStarting(bool starting);
    void setStatus(const QString& status);
    void setDenied(bool denied);

    CameraFeed& m_feed;
    SerialQueue m_queue{QStringLiteral("Brenlow.cameraMirror")};
    bool m_running = false;
    bool m_starting = false;
    bool m_denied = false;
    QString m_status;
    QUuid m_generation;
    QImage m_frame;
};
