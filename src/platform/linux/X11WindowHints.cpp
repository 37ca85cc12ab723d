#include "platform/linux/X11WindowHints.h"

#include "platform/linux/X11Support.h"

#include <QWindow>

#include <xcb/xcb.h>

#include <cstdlib>

namespace {

constexpr quint32 allDesktops = 0xFFFFFFFF;
constexpr quint32 stateAdd = 1;
// Source indication of a pager: window managers honour requests from it without focus-stealing checks.
constexpr quint32 sourcePager = 2;

void sendToRoot(xcb_connection_t* c, quint32 window, quint32 type, std::initializer_list<quint32> data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    int i = 0;
    for (quint32 value : data)
        message.data.data32[i++] = value;
    xcb_send_event(c, 0, X11Support::rootWindow(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

bool windowManagerSupports(xcb_connection_t* c, quint32 atom)
{
    const quint32 supported = X11Support::atom("_NET_SUPPORTED");
    const auto cookie = xcb_get_property(c, 0, X11Support::rootWindow(), supported, XCB_ATOM_ATOM, 0, 1024);
    xcb_get_property_reply_t* reply = xcb_get_property_reply(c, cookie, nullptr);
    if (!reply)
        return false;
    const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply));
    const int count = xcb_get_property_value_length(reply) / int(sizeof(xcb_atom_t));
    bool found = false;
    for (int i = 0; i < count && !found; ++i)
        found = atoms[i] == atom;
    std::free(reply);
    return found;
}

} // namespace

void X11WindowHints::showOnAllDesktops(QWindow* window)
{
    xcb_connection_t* c = X11Support::connection();
    if (!c || !window)
        return;
    const auto id = quint32(window->winId());
    const quint32 desktop = X11Support::atom("_NET_WM_DESKTOP");
    const quint32 state = X11Support::atom("_NET_WM_STATE");
    const quint32 sticky = X11Support::atom("_NET_WM_STATE_STICKY");
    const quint32 skipTaskbar = X11Support::atom("_NET_WM_STATE_SKIP_TASKBAR");
    const quint32 skipPager = X11Support::atom("_NET_WM_STATE_SKIP_PAGER");
    // The property for window managers that read it at map time, the messages for the running one.
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, id, desktop, XCB_ATOM_CARDINAL, 32, 1, &allDesktops);
    sendToRoot(c, id, desktop, {allDesktops, sourcePager});
    sendToRoot(c, id, state, {stateAdd, sticky, skipTaskbar, sourcePager});
    sendToRoot(c, id, state, {stateAdd, skipPager, 0, sourcePager});
    xcb_flush(c);
}

quint32 X11WindowHints::focusedWindow()
{
    xcb_connection_t* c = X11Support::connection();
    if (!c)
        return 0;
    xcb_get_input_focus_reply_t* reply = xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr);
    if (!reply)
        return 0;
    const quint32 focus = reply->focus;
    std::free(reply);
    // None and PointerRoot are not windows to return to.
    return focus > 1 ? focus : 0;
}

void X11WindowHints::focus(quint32 window)
{
    xcb_connection_t* c = X11Support::connection();
    if (!c || !window)
        return;
    const quint32 active = X11Support::atom("_NET_ACTIVE_WINDOW");
    if (windowManagerSupports(c, active))
        sendToRoot(c, window, active, {sourcePager, XCB_CURRENT_TIME, 0});
    else
        xcb_set_input_focus(c, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    xcb_flush(c);
}
