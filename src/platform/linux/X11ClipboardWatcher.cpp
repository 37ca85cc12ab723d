#include "platform/linux/X11ClipboardWatcher.h"

#include "common/Log.h"
#include "platform/linux/X11AtomCache.h"

#include <QSocketNotifier>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstdlib>

X11ClipboardWatcher::X11ClipboardWatcher(std::uint32_t ownBase, std::uint32_t ownMask,
                                         X11SelectionRead::Limits limits)
    : m_ownBase(ownBase), m_ownMask(ownMask), m_limits(limits)
{}

X11ClipboardWatcher::~X11ClipboardWatcher()
{
    // Reads still use the connection as they go.
    qDeleteAll(findChildren<X11SelectionRead*>(Qt::FindDirectChildrenOnly));
    delete m_notifier;
    m_atoms.reset();
    if (m_connection)
        xcb_disconnect(m_connection);
}

void X11ClipboardWatcher::start()
{
    // The display Qt opened: the platform plugin takes it from DISPLAY as well.
    m_connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(m_connection)) {
        qCWarning(lcPlatform) << "clipboard: no X connection of its own; copies are not captured";
        xcb_disconnect(m_connection);
        m_connection = nullptr;
        return;
    }
    const xcb_query_extension_reply_t* xfixes = xcb_get_extension_data(m_connection, &xcb_xfixes_id);
    if (!xfixes || !xfixes->present) {
        qCWarning(lcPlatform) << "clipboard: the X server lacks XFixes; copies are not captured";
        return;
    }
    std::free(
        xcb_xfixes_query_version_reply(m_connection, xcb_xfixes_query_version(m_connection, 5, 0), nullptr));
    m_xfixesEvent = xfixes->first_event;
    m_atoms = std::make_unique<X11AtomCache>(m_connection);
    m_clipboard = m_atoms->atom("CLIPBOARD");

    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_listener = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_listener, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_xfixes_select_selection_input(m_connection, m_listener, m_clipboard,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_notifier = new QSocketNotifier(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    connect(m_notifier, &QSocketNotifier::activated, this, &X11ClipboardWatcher::drain);

    Q_EMIT started();
    // The content that was there before: read, but not a change.
    auto* reply = xcb_get_selection_owner_reply(m_connection,
                                                xcb_get_selection_owner(m_connection, m_clipboard), nullptr);
    const xcb_window_t owner = reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
    std::free(reply);
    if (owner != XCB_WINDOW_NONE && !ours(owner))
        read(0, owner, XCB_CURRENT_TIME);
    drain();
}

void X11ClipboardWatcher::fence(quint64 write)
{
    if (m_connection) {
        std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
        drain();
    }
    Q_EMIT fenced(write);
}

void X11ClipboardWatcher::drain()
{
    if (!m_connection)
        return;
    // A reply we waited for may have brought events along, and the socket will not report
    // those again: take everything xcb holds.
    while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection)) {
        dispatch(event);
        std::free(event);
    }
    if (xcb_connection_has_error(m_connection) && m_notifier->isEnabled()) {
        qCWarning(lcPlatform) << "clipboard: the X connection broke; copies are no longer captured";
        m_notifier->setEnabled(false);
        retireRead();
    }
}

void X11ClipboardWatcher::dispatch(const xcb_generic_event_t* event)
{
    const std::uint8_t type = event->response_type & 0x7f;
    if (type == 0) {
        // Errors of requests nobody waits for: mostly an owner's window that went away.
        const auto* error = reinterpret_cast<const xcb_generic_error_t*>(event);
        qCDebug(lcPlatform) << "clipboard: X error" << error->error_code << "for request"
                            << error->major_code;
        return;
    }
    if (type == m_xfixesEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto* notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
        if (notify->selection == m_clipboard)
            ownerChanged(notify->owner, notify->selection_timestamp);
        return;
    }
    if (m_read)
        m_read->handle(event);
}

void X11ClipboardWatcher::ownerChanged(std::uint32_t owner, std::uint32_t time)
{
    // Whatever was being read is history now: its answer would describe an old content.
    retireRead();
    m_latest.store(++m_change);
    if (owner != XCB_WINDOW_NONE && ours(owner)) {
        Q_EMIT takenByUs(m_change);
        return;
    }
    Q_EMIT changeSeen(m_change);
    if (owner == XCB_WINDOW_NONE) {
        ClipboardSnapshot empty;
        empty.change = m_change;
        Q_EMIT contentRead(empty);
        return;
    }
    read(m_change, owner, time);
}

void X11ClipboardWatcher::read(quint64 change, std::uint32_t owner, std::uint32_t time)
{
    m_read = new X11SelectionRead(m_connection, *m_atoms, m_limits, this);
    connect(m_read, &X11SelectionRead::finished, this, &X11ClipboardWatcher::readFinished);
    m_read->start(change, owner, time);
}

void X11ClipboardWatcher::readFinished(const ClipboardSnapshot& snapshot)
{
    retireRead();
    Q_EMIT contentRead(snapshot);
}

void X11ClipboardWatcher::retireRead()
{
    if (!m_read)
        return;
    m_read->disconnect(this);
    m_read->cancel();
    // It may be the sender, in the middle of its own call.
    m_read->deleteLater();
    m_read = nullptr;
}
