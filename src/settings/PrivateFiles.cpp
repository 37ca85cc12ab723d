#include "settings/PrivateFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace PrivateFiles {

namespace {

// errno stays as it was, so the caller can still tell a full disk from a missing right.
QString failure(const char* step, const QString& path)
{
    const int error = errno;
    const QString text = QStringLiteral("%1 %2: %3")
                             .arg(QLatin1String(step), path, QString::fromLocal8Bit(std::strerror(error)));
    errno = error;
    return text;
}

// Folder entries (a new name, a rename) reach the disk only when the folder itself is flushed.
std::optional<QString> syncFolder(const QString& folder)
{
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return failure("open folder", folder);
    const bool synced = ::fsync(fd) == 0;
    const int error = errno;
    ::close(fd);
    errno = error;
    if (!synced)
        return failure("flush folder", folder);
    return std::nullopt;
}

bool writeAll(int fd, const QByteArray& bytes)
{
    const char* data = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, size_t(left));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        left -= written;
    }
    return true;
}

} // namespace

std::optional<QString> makeFolder(const QString& folder)
{
    const QString clean = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    QStringList missing;
    QString current = clean;
    while (!QFileInfo::exists(current)) {
        missing.prepend(current);
        const QString parent = QFileInfo(current).absolutePath();
        if (parent == current)
            break;
        current = parent;
    }
    // mkdir with 0700 leaves no moment in which the folder is open to others; the umask can
    // only take bits away.
    for (const QString& path : std::as_const(missing)) {
        if (::mkdir(QFile::encodeName(path).constData(), 0700) != 0 && errno != EEXIST)
            return failure("create folder", path);
    }
    const QByteArray native = QFile::encodeName(clean);
    struct stat info
    {
    };
    if (::stat(native.constData(), &info) != 0)
        return failure("look at folder", clean);
    if (!S_ISDIR(info.st_mode)) {
        errno = ENOTDIR;
        return failure("use folder", clean);
    }
    if (info.st_uid == ::geteuid() && (info.st_mode & 0777) != 0700 && ::chmod(native.constData(), 0700) != 0)
        return failure("narrow folder", clean);
    return std::nullopt;
}

std::optional<QString> createEmpty(const QString& path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0)
        return failure("create", path);
    ::close(fd);
    return syncFolder(QFileInfo(path).absolutePath());
}

std::optional<QString> writeNew(const QString& path, const QByteArray& bytes)
{
    const QString part = path + QStringLiteral(".part");
    const QByteArray partName = QFile::encodeName(part);
    // A piece left by a crash is ours and incomplete.
    ::unlink(partName.constData());
    const int fd = ::open(partName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0)
        return failure("create", part);
    const bool written = writeAll(fd, bytes) && ::fsync(fd) == 0;
    int error = errno;
    const bool closed = ::close(fd) == 0;
    if (written && !closed)
        error = errno;
    if (!written || !closed) {
        ::unlink(partName.constData());
        errno = error;
        return failure("write", part);
    }
    if (::link(partName.constData(), QFile::encodeName(path).constData()) != 0) {
        // link() never replaces: an existing copy under that name stays as it is.
        error = errno;
        ::unlink(partName.constData());
        errno = error;
        return failure("name", path);
    }
    ::unlink(partName.constData());
    return syncFolder(QFileInfo(path).absolutePath());
}

std::optional<QString> rename(const QString& from, const QString& to)
{
    if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        return failure("rename", from);
    return syncFolder(QFileInfo(to).absolutePath());
}

void narrowFile(const QString& path)
{
    const QByteArray native = QFile::encodeName(path);
    struct stat info
    {
    };
    if (::stat(native.constData(), &info) == 0 && info.st_uid == ::geteuid() && (info.st_mode & 0077) != 0)
        ::chmod(native.constData(), info.st_mode & 0700);
}

QString unusedName(const QString& folder, const QString& prefix, const QString& suffix)
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = folder + u'/' + prefix + stamp + suffix;
    for (int serial = 2; QFileInfo::exists(name) || QFileInfo::exists(name + QStringLiteral(".part"));
         ++serial)
        name = folder + u'/' + prefix + stamp + u'-' + QString::number(serial) + suffix;
    return name;
}

} // namespace PrivateFiles
