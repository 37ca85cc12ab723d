#include "app/InstanceLock.h"

#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString systemError(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

qint64 readPid(int fd)
{
    char buffer[32] = {};
    const ssize_t length = ::pread(fd, buffer, sizeof buffer - 1, 0);
    if (length <= 0)
        return 0;
    bool ok = false;
    const qint64 pid = QByteArray(buffer, int(length)).trimmed().toLongLong(&ok);
    return ok ? pid : 0;
}

} // namespace

QString InstanceLock::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           QStringLiteral("/app.brenlow.Brenlow.lock");
}

InstanceLock::InstanceLock(QString path) : m_path(std::move(path)) {}

InstanceLock::~InstanceLock()
{
    release();
}

InstanceLock::State InstanceLock::acquire()
{
    if (m_fd >= 0)
        return State::held;
    m_holderPid = 0;
    m_error.clear();
    // Close-on-exec: a program we start must not inherit the lock and outlive us with it.
    // No following of links: the folder is ours, a link in it is not.
    const int fd = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
                          S_IRUSR | S_IWUSR);
    if (fd < 0) {
        m_error = systemError(errno);
        return State::unavailable;
    }
    // A file left by an older start with looser rights is tightened; only its owner may lock it.
    ::fchmod(fd, S_IRUSR | S_IWUSR);
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int code = errno;
        if (code == EWOULDBLOCK) {
            m_holderPid = readPid(fd);
            ::close(fd);
            return State::heldByOther;
        }
        m_error = systemError(code);
        ::close(fd);
        return State::unavailable;
    }
    // Whoever comes second can name the running process.
    const QByteArray pid = QByteArray::number(qint64(::getpid())) + '\n';
    // Without the number the lock still holds; a second start just cannot name us.
    [[maybe_unused]] const bool written =
        ::ftruncate(fd, 0) == 0 && ::pwrite(fd, pid.constData(), size_t(pid.size()), 0) == pid.size();
    m_fd = fd;
    return State::held;
}

void InstanceLock::release()
{
    if (m_fd < 0)
        return;
    ::flock(m_fd, LOCK_UN);
    ::close(m_fd);
    m_fd = -1;
}
