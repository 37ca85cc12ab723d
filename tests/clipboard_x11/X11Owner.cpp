#include "X11Owner.h"

#include <QList>
#include <QSet>

#include <xcb/xcb.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr qsizetype pieceBytes = 4000;
constexpr std::chrono::milliseconds slowAnswer{1000};

class Owner
{
public:
    Owner(xcb_connection_t* c, QByteArray mode) : m_c(c), m_mode(std::move(mode))
    {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
        m_window = xcb_generate_id(c);
        xcb_create_window(c, XCB_COPY_FROM_PARENT, m_window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        m_clipboard = atom("CLIPBOARD");
        m_targets = atom("TARGETS");
        m_utf8 = atom("UTF8_STRING");
        m_mime = atom("text/plain;charset=utf-8");
        m_incr = atom("INCR");
    }

    void take(QByteArray text)
    {
        m_text = std::move(text);
        xcb_set_selection_owner(m_c, m_window, m_clipboard, XCB_CURRENT_TIME);
        std::free(xcb_get_selection_owner_reply(m_c, xcb_get_selection_owner(m_c, m_clipboard), nullptr));
        say("taken");
    }

    void handle(const xcb_generic_event_t* event)
    {
        const uint8_t type = event->response_type & 0x7f;
        if (type == XCB_SELECTION_REQUEST)
            request(reinterpret_cast<const xcb_selection_request_event_t*>(event));
        else if (type == XCB_PROPERTY_NOTIFY)
            propertyChanged(reinterpret_cast<const xcb_property_notify_event_t*>(event));
    }

private:
    xcb_atom_t atom(const char* name)
    {
        auto* reply =
            xcb_intern_atom_reply(m_c, xcb_intern_atom(m_c, 0, uint16_t(std::strlen(name)), name), nullptr);
        const xcb_atom_t a = reply ? reply->atom : XCB_NONE;
        std::free(reply);
        return a;
    }

    QByteArray name(xcb_atom_t a)
    {
        auto* reply = xcb_get_atom_name_reply(m_c, xcb_get_atom_name(m_c, a), nullptr);
        if (!reply)
            return {};
        QByteArray n(xcb_get_atom_name_name(reply), xcb_get_atom_name_name_length(reply));
        std::free(reply);
        return n;
    }

    bool exists(xcb_window_t window)
    {
        auto* reply = xcb_get_window_attributes_reply(m_c, xcb_get_window_attributes(m_c, window), nullptr);
        std::free(reply);
        return reply != nullptr;
    }

    void say(const QByteArray& line)
    {
        std::printf("%s\n", line.constData());
        std::fflush(stdout);
    }

    void request(const xcb_selection_request_event_t* request)
    {
        m_requestors.insert(request->requestor);
        int alive = 0;
        for (xcb_window_t window : std::as_const(m_requestors))
            alive += exists(window) ? 1 : 0;
        say("asked: " + name(request->target) + " alive: " + QByteArray::number(alive));
        if (m_mode == "hung" || (m_mode == "targets-only" && request->target != m_targets))
            return;
        if (m_mode == "slow" && request->target != m_targets) {
            m_delayed = Delayed{*request, std::chrono::steady_clock::now() + slowAnswer};
            return;
        }
        answer(request);
    }

public:
    // Milliseconds until a delayed answer is due, -1 for none.
    int untilDue() const
    {
        if (!m_delayed)
            return -1;
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(m_delayed->due - std::chrono::steady_clock::now());
        return int(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
    }

    void answerDue()
    {
        if (!m_delayed || std::chrono::steady_clock::now() < m_delayed->due)
            return;
        const xcb_selection_request_event_t request = m_delayed->request;
        m_delayed.reset();
        answer(&request);
    }

private:
    void answer(const xcb_selection_request_event_t* request)
    {
        const bool pieces = m_mode.startsWith("pieces");

        xcb_atom_t property = request->property;
        const QList<xcb_atom_t> offered = m_mode == "utf8-mime" ? QList<xcb_atom_t>{m_targets, m_mime}
                                          : m_mode == "latin1" ? QList<xcb_atom_t>{m_targets, XCB_ATOM_STRING}
                                          : pieces             ? QList<xcb_atom_t>{m_targets, m_utf8}
                                                   : QList<xcb_atom_t>{m_targets, m_utf8, XCB_ATOM_STRING};
        if (request->target == m_targets) {
            xcb_change_property(m_c, XCB_PROP_MODE_REPLACE, request->requestor, property, XCB_ATOM_ATOM, 32,
                                uint32_t(offered.size()), offered.constData());
        } else if (!offered.contains(request->target)) {
            property = XCB_NONE;
        } else if (pieces) {
            // Announce the size, then send a piece each time the requestor deletes the property.
            const uint32_t size = m_mode == "pieces-lowball" ? 0 : uint32_t(m_text.size());
            const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(m_c, request->requestor, XCB_CW_EVENT_MASK, &events);
            xcb_change_property(m_c, XCB_PROP_MODE_REPLACE, request->requestor, property, m_incr, 32, 1,
                                &size);
            m_transfer = Transfer{request->requestor, property, request->target, 0};
        } else {
            const QByteArray data =
                request->target == XCB_ATOM_STRING ? QString::fromUtf8(m_text).toLatin1() : m_text;
            xcb_change_property(m_c, XCB_PROP_MODE_REPLACE, request->requestor, property, request->target, 8,
                                uint32_t(data.size()), data.constData());
        }
        xcb_selection_notify_event_t notify{};
        notify.response_type = XCB_SELECTION_NOTIFY;
        notify.time = request->time;
        notify.requestor = request->requestor;
        notify.selection = request->selection;
        notify.target = request->target;
        notify.property = property;
        xcb_send_event(m_c, 0, request->requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&notify));
    }

    void propertyChanged(const xcb_property_notify_event_t* notify)
    {
        if (!m_transfer || notify->window != m_transfer->window || notify->atom != m_transfer->property ||
            notify->state != XCB_PROPERTY_DELETE)
            return;
        // The last piece is empty; after it the transfer is over.
        const QByteArray piece = m_text.mid(m_transfer->sent, pieceBytes);
        xcb_change_property(m_c, XCB_PROP_MODE_REPLACE, m_transfer->window, m_transfer->property,
                            m_transfer->type, 8, uint32_t(piece.size()), piece.constData());
        m_transfer->sent += piece.size();
        if (piece.isEmpty())
            m_transfer.reset();
    }

    struct Delayed
    {
        xcb_selection_request_event_t request;
        std::chrono::steady_clock::time_point due;
    };

    struct Transfer
    {
        xcb_window_t window;
        xcb_atom_t property;
        xcb_atom_t type;
        qsizetype sent;
    };

    xcb_connection_t* m_c;
    QByteArray m_mode;
    xcb_window_t m_window = 0;
    xcb_atom_t m_clipboard = 0, m_targets = 0, m_utf8 = 0, m_mime = 0, m_incr = 0;
    QByteArray m_text;
    QSet<xcb_window_t> m_requestors;
    std::optional<Transfer> m_transfer;
    std::optional<Delayed> m_delayed;
};

} // namespace

int serveX11Owner(const QByteArray& mode)
{
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c))
        return 2;
    Owner owner(c, mode);
    QByteArray input;
    pollfd fds[2] = {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(c), POLLIN, 0}};
    for (;;) {
        xcb_flush(c);
        while (xcb_generic_event_t* event = xcb_poll_for_event(c)) {
            owner.handle(event);
            std::free(event);
            xcb_flush(c);
        }
        if (xcb_connection_has_error(c))
            return 1;
        const int ready = poll(fds, 2, owner.untilDue());
        owner.answerDue();
        if (ready <= 0 || !(fds[0].revents & (POLLIN | POLLHUP)))
            continue;
        char buffer[65536];
        const ssize_t got = read(STDIN_FILENO, buffer, sizeof buffer);
        if (got <= 0)
            return 0;
        input.append(buffer, qsizetype(got));
        for (qsizetype end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
            const QByteArray line = input.left(end);
            input.remove(0, end + 1);
            if (line.startsWith("take "))
                owner.take(line.mid(5));
            else if (line.startsWith("fill "))
                owner.take(QByteArray("abcdefghij")
                               .repeated(line.mid(5).toLongLong() / 10 + 1)
                               .left(line.mid(5).toLongLong()));
        }
    }
}
