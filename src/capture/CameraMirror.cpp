#include "capture/CameraMirror.h"

#include "capture/MirrorTexts.h"
#include "platform/CameraFeed.h"

#include <algorithm>

CameraMirror::CameraMirror(CameraFeed& feed, QObject* parent)
    : QObject(parent), m_feed(feed), m_status(MirrorTexts::initial())
{
    connect(&m_feed, &CameraFeed::frameArrived, this, &CameraMirror::takeFrame, Qt::QueuedConnection);
    connect(&m_feed, &CameraFeed::interrupted, this, &CameraMirror::interrupted, Qt::QueuedConnection);
    // Sleep and a locked screen switch the camera off, like leaving the page.
    connect(&m_feed, &CameraFeed::sessionPaused, this, [this] {
        if (m_running || m_starting)
            stop();
    });
}

CameraMirror::~CameraMirror()
{
    disconnect(&m_feed, nullptr, this, nullptr);
    // The queue's destructor waits for this, so the camera is off when the mirror is gone.
    CameraFeed* feed = &m_feed;
    m_queue.post([feed] { feed->stop(); });
}

void CameraMirror::start()
{
    if (m_running || m_starting)
        return;
    const QUuid token = QUuid::createUuid();
    m_generation = token;
    setStarting(true);
    setDenied(false);
    setStatus(MirrorTexts::preparing());
    switch (m_feed.authorization()) {
    case CameraFeed::Authorization::notDetermined:
        m_feed.requestAccess(this, [this, token](bool granted) {
            if (m_generation != token)
                return;
            if (granted)
                configure(token);
            else
                permissionDenied();
        });
        break;
    case CameraFeed::Authorization::authorized:
        configure(token);
        break;
    case CameraFeed::Authorization::denied:
    case CameraFeed::Authorization::restricted:
        permissionDenied();
        break;
    }
}

void CameraMirror::configure(const QUuid& token)
{
    CameraFeed* feed = &m_feed;
    m_queue.run<QString>(
        this,
        [feed]() -> QString {
            const QList<CameraFeed::Device> devices = feed->devices();
            if (devices.isEmpty())
                return MirrorTexts::noCamera();
            // The built-in camera when there is one, else the first found.
            const auto builtIn =
                std::find_if(devices.cbegin(), devices.cend(), [](const CameraFeed::Device& d) {
                    return d.type == CameraFeed::DeviceType::builtInWideAngle;
                });
            const CameraFeed::Device chosen = builtIn != devices.cend() ? *builtIn : devices.first();
            switch (feed->start(chosen)) {
            case CameraFeed::StartResult::cannotOpen:
                return MirrorTexts::cannotOpen();
            case CameraFeed::StartResult::inputRejected:
                return MirrorTexts::unavailable();
            case CameraFeed::StartResult::notRunning:
                return MirrorTexts::notStarted();
            case CameraFeed::StartResult::running:
                break;
            }
            return feed->running() ? QString() : MirrorTexts::notStarted();
        },
        [this, token](QString error) { finish(error, token); });
}

void CameraMirror::finish(const QString& error, const QUuid& token)
{
    if (m_generation != token)
        return;
    setStarting(false);
    setRunning(error.isEmpty());
    setStatus(error.isEmpty() ? MirrorTexts::active() : error);
}

void CameraMirror::permissionDenied()
{
    setStarting(false);
    setDenied(true);
    setStatus(MirrorTexts::denied());
}

void CameraMirror::stop()
{
    m_generation = QUuid::createUuid();
    setRunning(false);
    setStarting(false);
    setStatus(MirrorTexts::stopped());
    if (!m_frame.isNull()) {
        m_frame = QImage();
        Q_EMIT frameChanged();
    }
    CameraFeed* feed = &m_feed;
    m_queue.post([feed] { feed->stop(); });
}

void CameraMirror::interrupted()
{
    if (!m_running && !m_starting)
        return;
    stop();
    setStatus(MirrorTexts::interrupted());
}

void CameraMirror::takeFrame(const QImage& frame)
{
    // Late pictures of a stopped session are not shown.
    if (!m_running && !m_starting)
        return;
    m_frame = frame;
    Q_EMIT frameChanged();
}

void CameraMirror::setRunning(bool running)
{
    if (m_running == running)
        return;
    m_running = running;
    Q_EMIT runningChanged();
}

void CameraMirror::setStarting(bool starting)
{
    if (m_starting == starting)
        return;
    m_starting = starting;
    Q_EMIT startingChanged();
}

void CameraMirror::setStatus(const QString& status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

void CameraMirror::setDenied(bool denied)
{
    if (m_denied == denied)
        return;
    m_denied = denied;
    Q_EMIT deniedChanged();
}
