#pragma once

#include "platform/CameraActivity.h"
#include "platform/linux/VideoNodeWatch.h"

#include <QString>

#include <mutex>

// A camera is in use when another process holds a /dev/video* node open. The desktop's media
// servers (PipeWire, WirePlumber) keep nodes open to watch them, and this program's own mirror
// is no other application: neither counts. Looking through every process's open files is costly,
// so it happens only after a node was opened, closed, added or removed; otherwise the last answer
// stands.
class LinuxCameraActivity final : public CameraActivity
{
public:
    explicit LinuxCameraActivity(QString procRoot = QStringLiteral("/proc"),
                                 QString devRoot = QStringLiteral("/dev"), qint64 ownPid = currentPid());
    bool cameraInUse() const override;

    // The first process under `procRoot` other than `ownPid` with a video node open; 0 for none.
    static qint64 userOfCamera(const QString& procRoot, qint64 ownPid);
    static qint64 currentPid();

private:
    QString m_procRoot;
    qint64 m_ownPid;
    mutable std::mutex m_mutex;
    mutable VideoNodeWatch m_watch;
    mutable bool m_inUse = false;
};
