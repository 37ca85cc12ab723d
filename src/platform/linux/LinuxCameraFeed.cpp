#include "platform/linux/LinuxCameraFeed.h"

#include <QCamera>
#include <QCameraDevice>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <QVideoFrame>
#include <QVideoSink>

namespace {

// The preview is a small part of the panel: bigger pictures would only cost conversion time.
constexpr int previewWidth = 640;
// QCamera::start() returns before the pipeline runs; this long we wait for it to say so.
constexpr int startWaitMs = 4000;

bool looksBuiltIn(const QCameraDevice& device)
{
    const QString name = device.description();
    return device.position() == QCameraDevice::FrontFace ||
           name.contains(QStringLiteral("Integrated"), Qt::CaseInsensitive) ||
           name.contains(QStringLiteral("Built-in"), Qt::CaseInsensitive);
}

// Qt Multimedia sets itself up on first use and wants that to happen on the main thread, where
// this feed lives; the mirror's queue asks from its own thread and waits for the answer.
QList<QCameraDevice> videoInputs(QObject* mainThreadObject)
{
    if (QThread::currentThread() == mainThreadObject->thread())
        return QMediaDevices::videoInputs();
    QList<QCameraDevice> inputs;
    QMetaObject::invokeMethod(
        mainThreadObject, [&inputs] { inputs = QMediaDevices::videoInputs(); }, Qt::BlockingQueuedConnection);
    return inputs;
}

} // namespace

LinuxCameraFeed::LinuxCameraFeed(QObject* parent) : CameraFeed(parent) {}

LinuxCameraFeed::~LinuxCameraFeed()
{
    // The mirror stops the session on its queue before it goes; what is left has no thread.
    m_camera.reset();
    m_sink.reset();
    m_session.reset();
}

void LinuxCameraFeed::requestAccess(QObject* context, std::function<void(bool)> answer)
{
    QTimer::singleShot(0, context, [answer] { answer(true); });
}

QList<CameraFeed::Device> LinuxCameraFeed::devices()
{
    QList<Device> found;
    for (const QCameraDevice& device : videoInputs(this))
        found.append(Device{device.id(), device.description(),
                            looksBuiltIn(device) ? DeviceType::builtInWideAngle : DeviceType::external});
    return found;
}

CameraFeed::StartResult LinuxCameraFeed::start(const Device& device)
{
    QCameraDevice chosen;
    for (const QCameraDevice& candidate : videoInputs(this))
        if (candidate.id() == device.id)
            chosen = candidate;
    // A null device would make Qt's GStreamer backend show its own test picture: never that.
    if (chosen.isNull())
        return StartResult::cannotOpen;

    if (!m_session) {
        m_session = std::make_unique<QMediaCaptureSession>();
        m_sink = std::make_unique<QVideoSink>();
        // Frames come on the camera's streaming thread; they are converted there, off the GUI.
        connect(
            m_sink.get(), &QVideoSink::videoFrameChanged, m_sink.get(),
            [this](const QVideoFrame& frame) { deliver(frame); }, Qt::DirectConnection);
        m_session->setVideoSink(m_sink.get());
    }
    m_session->setCamera(nullptr);
    m_camera = std::make_unique<QCamera>(chosen);
    if (m_camera->error() != QCamera::NoError) {
        m_camera.reset();
        return StartResult::cannotOpen;
    }
    connect(
        m_camera.get(), &QCamera::errorOccurred, m_camera.get(),
        [this](QCamera::Error error) {
            if (error != QCamera::NoError && m_running.exchange(false))
                Q_EMIT interrupted();
        },
        Qt::DirectConnection);
    m_session->setCamera(m_camera.get());
    if (m_session->camera() != m_camera.get()) {
        m_camera.reset();
        return StartResult::inputRejected;
    }
    m_camera->start();
    QElapsedTimer waited;
    waited.start();
    while (!m_camera->isActive() && m_camera->error() == QCamera::NoError && waited.elapsed() < startWaitMs) {
        QThread::msleep(20);
        QCoreApplication::processEvents();
    }
    m_running = m_camera->isActive() && m_camera->error() == QCamera::NoError;
    if (!m_running) {
        m_session->setCamera(nullptr);
        m_camera.reset();
        return StartResult::notRunning;
    }
    return StartResult::running;
}

void LinuxCameraFeed::stop()
{
    m_running = false;
    if (!m_session)
        return;
    if (m_camera)
        m_camera->stop();
    m_session->setCamera(nullptr);
    // Releasing the QCamera closes the device: that is what turns the camera's light off.
    m_camera.reset();
}

void LinuxCameraFeed::deliver(const QVideoFrame& frame)
{
    if (!m_running || !frame.isValid() || m_framePending.exchange(true))
        return;
    QImage image = frame.toImage();
    if (image.width() > previewWidth)
        image = image.scaledToWidth(previewWidth, Qt::FastTransformation);
    m_framePending = false;
    if (!image.isNull())
        Q_EMIT frameArrived(image);
}
