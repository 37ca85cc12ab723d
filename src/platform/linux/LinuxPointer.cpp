#include "platform/linux/LinuxPointer.h"

#include "platform/linux/X11Support.h"

#include <QCoreApplication>
#include <QCursor>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdlib>

namespace {
constexpr std::uint32_t motionEvents = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION | XCB_INPUT_XI_EVENT_MASK_MOTION;
} // namespace

LinuxPointer::LinuxPointer(QObject* parent)
    : Pointer(parent), m_xinput(X11Support::xinputOpcode()), m_root(X11Support::rootWindow())
{}

LinuxPointer::~LinuxPointer()
{
    setWatching(false);
    if (m_filterInstalled && QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

QPointF LinuxPointer::position() const
{
    return QCursor::pos();
}

bool LinuxPointer::buttonsPressed() const
{
    xcb_connection_t* c = X11Support::connection();
    if (!c || !m_root)
        return false;
    xcb_query_pointer_reply_t* reply = xcb_query_pointer_reply(c, xcb_query_pointer(c, m_root), nullptr);
    if (!reply)
        return false;
    const bool pressed = (reply->mask & X11Support::anyButtonMask) != 0;
    std::free(reply);
    return pressed;
}

void LinuxPointer::setWatching(bool on)
{
    if (on == m_watching || !m_xinput)
        return;
    m_watching = on;
    if (on && !m_filterInstalled) {
        QCoreApplication::instance()->installNativeEventFilter(this);
        m_filterInstalled = true;
    }
    X11Support::changeRootXInputEvents(on ? motionEvents : 0, on ? 0 : motionEvents);
}

bool LinuxPointer::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result)
{
    Q_UNUSED(eventType)
    Q_UNUSED(result)
    const auto type = X11Support::xinputEventType(message, m_xinput);
    if (type == XCB_INPUT_RAW_MOTION) {
        if (m_watching)
            Q_EMIT moved();
        return true;
    }
    if (type == XCB_INPUT_MOTION && static_cast<xcb_input_motion_event_t*>(message)->event == m_root) {
        if (m_watching)
            Q_EMIT moved();
        return true;
    }
    return false;
}
