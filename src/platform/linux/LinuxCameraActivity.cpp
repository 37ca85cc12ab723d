#include "platform/linux/LinuxCameraActivity.h"

#include <QFile>

#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace {
// Plain POSIX calls: a scan touches every open file of every process, and Qt's directory listing
// costs ten times as much.
bool isMediaServer(int processFolder)
{
    const int comm = ::openat(processFolder, "comm", O_RDONLY | O_CLOEXEC);
    if (comm < 0)
        return false;
    char name[32] = {};
    const ssize_t length = ::read(comm, name, sizeof name - 1);
    ::close(comm);
    const QByteArray command = QByteArray(name, length > 0 ? int(length) : 0).trimmed();
    return command.startsWith("pipewire") || command == "wireplumber";
}

bool holdsVideoNode(int processFolder)
{
    // Folders of other users' processes cannot be listed; their cameras stay unknown.
    const int fdFolder = ::openat(processFolder, "fd", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fdFolder < 0)
        return false;
    DIR* fds = ::fdopendir(fdFolder);
    if (!fds) {
        ::close(fdFolder);
        return false;
    }
    bool found = false;
    char target[64];
    while (const dirent* entry = ::readdir(fds)) {
        const ssize_t length = ::readlinkat(fdFolder, entry->d_name, target, sizeof target - 1);
        if (length > 10 && std::memcmp(target, "/dev/video", 10) == 0) {
            found = true;
            break;
        }
    }
    ::closedir(fds);
    return found;
}
} // namespace

LinuxCameraActivity::LinuxCameraActivity(QString procRoot, QString devRoot, qint64 ownPid)
    : m_procRoot(std::move(procRoot)), m_ownPid(ownPid), m_watch(devRoot)
{}

qint64 LinuxCameraActivity::currentPid()
{
    return qint64(::getpid());
}

bool LinuxCameraActivity::cameraInUse() const
{
    const std::lock_guard lock(m_mutex);
    if (!m_watch.changed())
        return m_inUse;
    // Without a video node there is nothing to look for in every process's files.
    m_inUse = m_watch.hasNodes() && userOfCamera(m_procRoot, m_ownPid) != 0;
    return m_inUse;
}

qint64 LinuxCameraActivity::userOfCamera(const QString& procRoot, qint64 ownPid)
{
    DIR* proc = ::opendir(QFile::encodeName(procRoot).constData());
    if (!proc)
        return 0;
    qint64 user = 0;
    while (const dirent* entry = ::readdir(proc)) {
        char* end = nullptr;
        const long long pid = std::strtoll(entry->d_name, &end, 10);
        if (end == entry->d_name || *end != '\0' || pid == ownPid)
            continue;
        const int folder = ::openat(::dirfd(proc), entry->d_name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder < 0)
            continue;
        const bool holds = holdsVideoNode(folder) && !isMediaServer(folder);
        ::close(folder);
        if (holds) {
            user = pid;
            break;
        }
    }
    ::closedir(proc);
    return user;
}
