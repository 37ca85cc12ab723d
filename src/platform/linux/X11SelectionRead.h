#pragma once

#include "platform/linux/ClipboardSnapshot.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <optional>

#include <xcb/xcb.h>

class X11AtomCache;

// One read of the CLIPBOARD after one owner change, on the reading thread: TARGETS first, then
// the best text target, each into a property of a window that exists for this read only, so an
// answer that comes after the read was given up lands nowhere. Concealed content is never asked
// for its text; a text larger than the history keeps is refused, also when it comes in pieces
// (INCR). Every request has its own time-out, the whole read a longer one.
class X11SelectionRead : public QObject
{
    Q_OBJECT
public:
    struct Limits
    {
        std::chrono::milliseconds request;
        std::chrono::milliseconds whole;
        // The most bytes a text may have on the wire (a trailing NUL comes on top).
        qsizetype bytes;
    };

    X11SelectionRead(xcb_connection_t* connection, X11AtomCache& atoms, Limits limits,
                     QObject* parent = nullptr);
    ~X11SelectionRead() override;

    // Asks `owner` (for the log only) for the content it took at `time`.
    void start(quint64 change, std::uint32_t owner, std::uint32_t time);
    // Looks at an event of the connection; true when it was meant for this read.
    bool handle(const xcb_generic_event_t* event);
    // Gives up without an answer: the window goes at once, so the owner's late answer fails.
    void cancel();

Q_SIGNALS:
    // Once, unless cancelled.
    void finished(const ClipboardSnapshot& snapshot);

private:
    enum class Step { targets, text, pieces, done };
    struct Property
    {
        QByteArray type;
        int format = 0;
        QByteArray data;
        bool complete = true;
    };

    void request(std::uint32_t target);
    void targetsArrived(std::uint32_t property);
    void textArrived(std::uint32_t property);
    void pieceArrived();
    void timedOut();
    void finish();
    // Reads and deletes the property, at most `bytes` of it.
    std::optional<Property> take(qsizetype bytes);
    void decodeText(const QByteArray& type, const QByteArray& data);
    void destroyWindow();

    xcb_connection_t* m_connection;
    X11AtomCache& m_atoms;
    Limits m_limits;
    QTimer m_requestTimer;
    QTimer m_wholeTimer;
    Step m_step = Step::targets;
    std::uint32_t m_window = 0;
    std::uint32_t m_owner = 0;
    std::uint32_t m_time = 0;
    std::uint32_t m_target = 0;
    QByteArray m_textTarget;
    QByteArray m_pieceType;
    QByteArray m_pieces;
    ClipboardSnapshot m_snapshot;
};
