#include "platform/linux/LinuxCameraActivity.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace {
bool isMediaServer(const QString& processFolder)
{
    QFile comm(processFolder + QStringLiteral("/comm"));
    if (!comm.open(QIODevice::ReadOnly))
        return false;
    const QByteArray name = comm.readLine(64).trimmed();
    return name.startsWith("pipewire") || name == "wireplumber";
}

bool holdsVideoNode(const QString& processFolder)
{
    // Folders of other users' processes cannot be listed; their cameras stay unknown.
    const QDir fds(processFolder + QStringLiteral("/fd"));
    const QStringList entries = fds.entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    char target[64];
    for (const QString& entry : entries) {
        const QByteArray link = QFile::encodeName(fds.filePath(entry));
        const ssize_t length = ::readlink(link.constData(), target, sizeof target - 1);
        if (length > 0 && QByteArray::fromRawData(target, length).startsWith("/dev/video"))
            return true;
    }
    return false;
}
} // namespace

LinuxCameraActivity::LinuxCameraActivity(QString procRoot, QString devRoot, qint64 ownPid)
    : m_procRoot(std::move(procRoot)), m_devRoot(std::move(devRoot)), m_ownPid(ownPid)
{}

qint64 LinuxCameraActivity::currentPid()
{
    return qint64(::getpid());
}

bool LinuxCameraActivity::cameraInUse() const
{
    // Without a video node there is nothing to look for in every process's files.
    if (QDir(m_devRoot).entryList({QStringLiteral("video*")}, QDir::System | QDir::Files).isEmpty())
        return false;
    return userOfCamera(m_procRoot, m_ownPid) != 0;
}

qint64 LinuxCameraActivity::userOfCamera(const QString& procRoot, qint64 ownPid)
{
    const QDir proc(procRoot);
    const QStringList entries = proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& entry : entries) {
        bool number = false;
        const qint64 pid = entry.toLongLong(&number);
        if (!number || pid == ownPid)
            continue;
        const QString folder = proc.filePath(entry);
        if (holdsVideoNode(folder) && !isMediaServer(folder))
            return pid;
    }
    return 0;
}
