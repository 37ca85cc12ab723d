#include "platform/linux/VideoNodeWatch.h"

#include <QDir>
#include <QFile>

#include <sys/inotify.h>
#include <unistd.h>

namespace {
constexpr uint32_t nodeEvents = IN_OPEN | IN_CLOSE_WRITE | IN_CLOSE_NOWRITE;

bool isVideoNode(const char* name)
{
    return qstrncmp(name, "video", 5) == 0;
}
} // namespace

VideoNodeWatch::VideoNodeWatch(const QString& devRoot) : m_root(QFile::encodeName(devRoot))
{
    m_fd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_fd >= 0)
        m_rootWatch = ::inotify_add_watch(m_fd, m_root.constData(), IN_CREATE | IN_DELETE);
    if (m_rootWatch < 0)
        m_blind = true;
    // Listed after the folder is watched, so that no node slips in between.
    listNodes();
}

VideoNodeWatch::~VideoNodeWatch()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

void VideoNodeWatch::listNodes()
{
    m_nodes.clear();
    const QStringList names =
        QDir(QFile::decodeName(m_root)).entryList({QStringLiteral("video*")}, QDir::System | QDir::Files);
    for (const QString& name : names)
        watchNode(QFile::encodeName(name));
}

void VideoNodeWatch::watchNode(const QByteArray& name)
{
    m_nodes.insert(name);
    if (m_fd >= 0 && ::inotify_add_watch(m_fd, QByteArray(m_root + '/' + name).constData(), nodeEvents) < 0)
        m_blind = true;
}

bool VideoNodeWatch::changed()
{
    const bool first = std::exchange(m_first, false);
    const bool events = m_fd >= 0 && readEvents();
    if (m_blind) {
        listNodes();
        return true;
    }
    return first || events;
}

bool VideoNodeWatch::readEvents()
{
    alignas(inotify_event) char buffer[4096];
    bool relevant = false;
    bool overflow = false;
    for (;;) {
        const ssize_t length = ::read(m_fd, buffer, sizeof buffer);
        if (length <= 0)
            break;
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            at += ssize_t(sizeof(inotify_event)) + ssize_t(event->len);
            if (event->mask & IN_Q_OVERFLOW) {
                overflow = true;
            } else if (event->wd != m_rootWatch) {
                relevant = relevant || (event->mask & nodeEvents);
            } else if (event->len > 0 && isVideoNode(event->name)) {
                relevant = true;
                if (event->mask & IN_CREATE)
                    watchNode(QByteArray(event->name));
                else if (event->mask & IN_DELETE)
                    m_nodes.remove(QByteArray(event->name));
            }
        }
    }
    // Lost events may have added or removed nodes: the folder is read again.
    if (overflow)
        listNodes();
    return relevant || overflow;
}
