#include "platform/linux/X11Support.h"

#include <QGuiApplication>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdlib>
#include <cstring>

xcb_connection_t* X11Support::connection()
{
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

quint32 X11Support::rootWindow()
{
    xcb_connection_t* c = connection();
    if (!c)
        return 0;
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(c));
    return screens.rem > 0 ? screens.data->root : 0;
}

quint32 X11Support::atom(const char* name)
{
    xcb_connection_t* c = connection();
    if (!c)
        return 0;
    const auto cookie = xcb_intern_atom(c, 0, quint16(std::strlen(name)), name);
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(c, cookie, nullptr);
    if (!reply)
        return 0;
    const quint32 atom = reply->atom;
    std::free(reply);
    return atom;
}

quint8 X11Support::xinputOpcode()
{
    xcb_connection_t* c = connection();
    if (!c)
        return 0;
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(c, &xcb_input_id);
    return extension && extension->present ? extension->major_opcode : 0;
}

std::optional<std::uint16_t> X11Support::xinputEventType(const void* message, quint8 opcode)
{
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if (opcode == 0 || (event->response_type & ~0x80) != XCB_GE_GENERIC)
        return std::nullopt;
    const auto* generic = static_cast<const xcb_ge_generic_event_t*>(message);
    if (generic->extension != opcode)
        return std::nullopt;
    return generic->event_type;
}

std::optional<quint32> X11Support::cardinalProperty(quint32 window, quint32 property, quint32 type)
{
    xcb_connection_t* c = connection();
    if (!c || !window || !property)
        return std::nullopt;
    const auto cookie = xcb_get_property(c, 0, window, property, type, 0, 1);
    xcb_get_property_reply_t* reply = xcb_get_property_reply(c, cookie, nullptr);
    if (!reply)
        return std::nullopt;
    std::optional<quint32> value;
    if (xcb_get_property_value_length(reply) >= 4)
        value = *static_cast<const quint32*>(xcb_get_property_value(reply));
    std::free(reply);
    return value;
}

void X11Support::changeRootXInputEvents(std::uint32_t add, std::uint32_t remove)
{
    xcb_connection_t* c = connection();
    const quint32 root = rootWindow();
    if (!c || !root || !xinputOpcode())
        return;

    std::uint32_t mask = 0;
    const auto cookie = xcb_input_xi_get_selected_events(c, root);
    if (auto* reply = xcb_input_xi_get_selected_events_reply(c, cookie, nullptr)) {
        for (auto it = xcb_input_xi_get_selected_events_masks_iterator(reply); it.rem > 0;
             xcb_input_event_mask_next(&it)) {
            if (it.data->deviceid == XCB_INPUT_DEVICE_ALL_MASTER && it.data->mask_len > 0)
                mask = xcb_input_event_mask_mask(it.data)[0];
        }
        std::free(reply);
    }
    mask = (mask | add) & ~remove;

    struct
    {
        xcb_input_event_mask_t header;
        std::uint32_t bits;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
    xcb_input_xi_select_events(c, root, 1, &selection.header);
    xcb_flush(c);
}
