#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

// Notices through inotify when a video node in a device folder is opened or closed, or a node
// appears or goes. Looked at without waiting, from any one thread at a time: everything since the
// last look counts as one change.
class VideoNodeWatch
{
public:
    explicit VideoNodeWatch(const QString& devRoot);
    ~VideoNodeWatch();
    VideoNodeWatch(const VideoNodeWatch&) = delete;
    VideoNodeWatch& operator=(const VideoNodeWatch&) = delete;

    // Whether anything happened since the last call: true the first time, and every time when
    // inotify is not available.
    bool changed();
    bool hasNodes() const { return !m_nodes.isEmpty(); }

private:
    void listNodes();
    void watchNode(const QByteArray& name);
    // Reads the events queued so far; true when one of them concerns a video node.
    bool readEvents();

    QByteArray m_root;
    int m_fd = -1;
    int m_rootWatch = -1;
    // Some node could not be watched (or the queue overflowed): every look counts as a change.
    bool m_blind = false;
    bool m_first = true;
    QSet<QByteArray> m_nodes;
};
