#pragma once

#include "platform/linux/ClipboardSnapshot.h"
#include "platform/linux/X11SelectionRead.h"

#include <QObject>
#include <QPointer>

#include <atomic>
#include <cstdint>
#include <memory>

#include <xcb/xcb.h>

class QSocketNotifier;
class X11AtomCache;

// Watches the CLIPBOARD owner on an X connection of its own and reads each new owner's content,
// on the thread it was moved to, so an owner that never answers holds up nothing but this
// thread, and that only until a time-out. Owner changes come as XFixes selection events; a
// newer change gives up the read in flight, so reads never pile up. Windows of this process's
// Qt connection (our own writes) are recognised by their resource ids and never read.
class X11ClipboardWatcher : public QObject
{
    Q_OBJECT
public:
    // `ownBase`, `ownMask`: the resource ids of Qt's connection in this process.
    X11ClipboardWatcher(std::uint32_t ownBase, std::uint32_t ownMask, X11SelectionRead::Limits limits);
    ~X11ClipboardWatcher() override;

    // On the watcher's thread: connects, subscribes, reads the content that is there already.
    void start();
    // On the watcher's thread: every owner change the server made before now has been handled
    // when `fenced` reports `write`.
    void fence(quint64 write);
    // Any thread: the number of the newest owner change seen so far.
    quint64 latestChange() const { return m_latest.load(); }

Q_SIGNALS:
    // Owner changes are watched from now on.
    void started();
    // Another application took the clipboard; its content is being read.
    void changeSeen(quint64 change);
    // The content after a change by another application, or none when it gave the clipboard up.
    void contentRead(const ClipboardSnapshot& snapshot);
    // This process took the clipboard.
    void takenByUs(quint64 change);
    void fenced(quint64 write);

private:
    void drain();
    void dispatch(const xcb_generic_event_t* event);
    void ownerChanged(std::uint32_t owner, std::uint32_t time);
    void read(quint64 change, std::uint32_t owner, std::uint32_t time);
    void readFinished(const ClipboardSnapshot& snapshot);
    void retireRead();
    bool ours(std::uint32_t window) const { return (window & ~m_ownMask) == m_ownBase; }

    std::uint32_t m_ownBase;
    std::uint32_t m_ownMask;
    X11SelectionRead::Limits m_limits;
    xcb_connection_t* m_connection = nullptr;
    std::unique_ptr<X11AtomCache> m_atoms;
    QSocketNotifier* m_notifier = nullptr;
    QPointer<X11SelectionRead> m_read;
    std::uint32_t m_listener = 0;
    std::uint32_t m_clipboard = 0;
    std::uint8_t m_xfixesEvent = 0;
    quint64 m_change = 0;
    std::atomic<quint64> m_latest{0};
};
