#pragma once

#include <QtGlobal>

#include <cstdint>
#include <optional>

struct xcb_connection_t;

// Qt's own X connection and the few lookups the X11 services share. Every function answers a
// neutral value when the application does not run on X11 (offscreen tests, Wayland without X).
class X11Support
{
public:
    static xcb_connection_t* connection();
    static quint32 rootWindow();
    // Interns `name` (one round trip); 0 without X.
    static quint32 atom(const char* name);
    // The XInput extension's major opcode, 0 when the server lacks it.
    static quint8 xinputOpcode();
    // Adds and removes XInput events in this client's selection on the root window for all master
    // devices. Read-modify-write, so the pointer and the keyboard monitor keep each other's events.
    static void changeRootXInputEvents(std::uint32_t add, std::uint32_t remove);
    // The XInput event type of a native event, when it is one of the extension with `opcode`.
    static std::optional<std::uint16_t> xinputEventType(const void* message, quint8 opcode);
    // One 32-bit value of a window property (a window id or a cardinal).
    static std::optional<quint32> cardinalProperty(quint32 window, quint32 property, quint32 type);

    // Any mouse button in an event's or a query's state.
    static constexpr quint16 anyButtonMask = 0x1f00;
};
