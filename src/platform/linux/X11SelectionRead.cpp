#include "platform/linux/X11SelectionRead.h"

#include "common/Log.h"
#include "platform/linux/LinuxPasteboard.h"
#include "platform/linux/X11AtomCache.h"
#include "platform/linux/X11TextTargets.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

namespace {

const QByteArray clipboardName = QByteArrayLiteral("CLIPBOARD");
const QByteArray targetsName = QByteArrayLiteral("TARGETS");
const QByteArray incrName = QByteArrayLiteral("INCR");
const QByteArray propertyName = QByteArrayLiteral("BRENLOW_CLIPBOARD");

// More targets than any owner offers; a longer list is cut, not refused.
constexpr qsizetype largestTargetList = 4096 * 4;

} // namespace

X11SelectionRead::X11SelectionRead(xcb_connection_t* connection, X11AtomCache& atoms, Limits limits,
                                   QObject* parent)
    : QObject(parent), m_connection(connection), m_atoms(atoms), m_limits(limits)
{
    m_requestTimer.setSingleShot(true);
    m_requestTimer.setInterval(limits.request);
    m_wholeTimer.setSingleShot(true);
    m_wholeTimer.setInterval(limits.whole);
    connect(&m_requestTimer, &QTimer::timeout, this, &X11SelectionRead::timedOut);
    connect(&m_wholeTimer, &QTimer::timeout, this, &X11SelectionRead::timedOut);
}

X11SelectionRead::~X11SelectionRead()
{
    destroyWindow();
}

void X11SelectionRead::start(quint64 change, std::uint32_t owner, std::uint32_t time)
{
    m_snapshot.change = change;
    m_owner = owner;
    m_time = time;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_window = xcb_generate_id(m_connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    m_wholeTimer.start();
    request(m_atoms.atom(targetsName));
}

void X11SelectionRead::cancel()
{
    m_step = Step::done;
    m_requestTimer.stop();
    m_wholeTimer.stop();
    destroyWindow();
}

bool X11SelectionRead::handle(const xcb_generic_event_t* event)
{
    const std::uint8_t type = event->response_type & 0x7f;
    if (type == XCB_SELECTION_NOTIFY) {
        const auto* notify = reinterpret_cast<const xcb_selection_notify_event_t*>(event);
        if (m_window == 0 || notify->requestor != m_window)
            return false;
        // Only the answer to the request in flight counts; anything else is an owner's mistake.
        if (notify->target != m_target || (m_step != Step::targets && m_step != Step::text))
            return true;
        m_requestTimer.stop();
        if (m_step == Step::targets)
            targetsArrived(notify->property);
        else
            textArrived(notify->property);
        return true;
    }
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (m_window == 0 || notify->window != m_window)
            return false;
        if (m_step == Step::pieces && notify->state == XCB_PROPERTY_NEW_VALUE &&
            notify->atom == m_atoms.atom(propertyName))
            pieceArrived();
        return true;
    }
    return false;
}

void X11SelectionRead::request(std::uint32_t target)
{
    m_target = target;
    xcb_convert_selection(m_connection, m_window, m_atoms.atom(clipboardName), target,
                          m_atoms.atom(propertyName), m_time);
    xcb_flush(m_connection);
    m_requestTimer.start();
}

void X11SelectionRead::targetsArrived(std::uint32_t property)
{
    QList<std::uint32_t> offered;
    if (property != XCB_ATOM_NONE) {
        const std::optional<Property> list = take(largestTargetList);
        if (list && list->format == 32) {
            offered.resize(list->data.size() / 4);
            std::memcpy(offered.data(), list->data.constData(), size_t(offered.size()) * 4);
        }
    }
    const QList<QByteArray> names = m_atoms.names(offered);
    m_snapshot.types = LinuxPasteboard::typesForFormats(X11TextTargets::formats(names));
    // A secret is not even transferred: asking for its text would make the owner send it.
    const std::optional<QByteArray> best = X11TextTargets::best(names);
    if (m_snapshot.types.contains(Pasteboard::concealedType()) || !best) {
        finish();
        return;
    }
    m_step = Step::text;
    m_textTarget = *best;
    request(m_atoms.atom(*best));
}

void X11SelectionRead::textArrived(std::uint32_t property)
{
    const std::optional<Property> answer =
        property == XCB_ATOM_NONE ? std::nullopt : take(m_limits.bytes + 1);
    if (!answer) {
        finish();
        return;
    }
    if (answer->type == incrName) {
        // The owner sends the text in pieces; its first word is a lower bound of the size.
        std::uint32_t announced = 0;
        if (answer->data.size() >= 4)
            std::memcpy(&announced, answer->data.constData(), 4);
        if (announced > m_limits.bytes + 1) {
            qCDebug(lcPlatform) << "clipboard text refused:" << announced << "bytes announced";
            finish();
            return;
        }
        m_step = Step::pieces;
        m_requestTimer.start();
        return;
    }
    if (!answer->complete) {
        qCDebug(lcPlatform) << "clipboard text refused: more than" << m_limits.bytes + 1 << "bytes";
        finish();
        return;
    }
    decodeText(answer->type, answer->data);
    finish();
}

void X11SelectionRead::pieceArrived()
{
    m_requestTimer.stop();
    const std::optional<Property> piece = take(m_limits.bytes + 1 - m_pieces.size());
    if (!piece) {
        finish();
        return;
    }
    if (!piece->complete || m_pieces.size() + piece->data.size() > m_limits.bytes + 1) {
        qCDebug(lcPlatform) << "clipboard text refused: more than" << m_limits.bytes + 1 << "bytes in pieces";
        finish();
        return;
    }
    // An empty piece ends the transfer.
    if (piece->data.isEmpty()) {
        decodeText(m_pieceType, m_pieces);
        finish();
        return;
    }
    m_pieceType = piece->type;
    m_pieces.append(piece->data);
    m_requestTimer.start();
}

void X11SelectionRead::timedOut()
{
    const char* waitingFor = m_step == Step::targets ? "its targets"
                             : m_step == Step::text  ? "its text"
                                                     : "a piece";
    qCWarning(lcPlatform, "clipboard owner 0x%x did not send %s in time: content left unread", m_owner,
              waitingFor);
    m_snapshot.unreadable = true;
    finish();
}

void X11SelectionRead::finish()
{
    m_step = Step::done;
    m_requestTimer.stop();
    m_wholeTimer.stop();
    // The owner of a refused piecewise transfer learns from the missing window that we left.
    destroyWindow();
    Q_EMIT finished(m_snapshot);
}

std::optional<X11SelectionRead::Property> X11SelectionRead::take(qsizetype bytes)
{
    const auto words = std::uint32_t((bytes + 3) / 4);
    const auto cookie = xcb_get_property(m_connection, 1, m_window, m_atoms.atom(propertyName),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, words);
    xcb_get_property_reply_t* reply = xcb_get_property_reply(m_connection, cookie, nullptr);
    if (!reply)
        return std::nullopt;
    Property property;
    property.format = reply->format;
    property.data = QByteArray(static_cast<const char*>(xcb_get_property_value(reply)),
                               xcb_get_property_value_length(reply));
    property.complete = reply->bytes_after == 0;
    const std::uint32_t type = reply->type;
    std::free(reply);
    if (type == XCB_ATOM_NONE)
        return std::nullopt;
    // The server deletes only a property read to its end; the rest must not linger.
    if (!property.complete)
        xcb_delete_property(m_connection, m_window, m_atoms.atom(propertyName));
    property.type = m_atoms.name(type);
    return property;
}

void X11SelectionRead::decodeText(const QByteArray& type, const QByteArray& data)
{
    m_snapshot.text = X11TextTargets::decode(m_textTarget, type, data);
}

void X11SelectionRead::destroyWindow()
{
    if (m_window == 0)
        return;
    xcb_destroy_window(m_connection, m_window);
    xcb_flush(m_connection);
    m_window = 0;
}
