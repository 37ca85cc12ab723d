#include "platform/linux/LinuxKeyMonitor.h"

#include "platform/linux/X11Support.h"

#include <QCoreApplication>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace {
constexpr std::uint32_t keyEvents =
    XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
} // namespace

LinuxKeyMonitor::LinuxKeyMonitor(QObject* parent) : KeyMonitor(parent), m_xinput(X11Support::xinputOpcode())
{}

LinuxKeyMonitor::~LinuxKeyMonitor()
{
    stop();
    if (m_filterInstalled && QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

void LinuxKeyMonitor::start()
{
    if (m_running || !m_xinput)
        return;
    m_running = true;
    m_held.clear();
    if (!m_filterInstalled) {
        QCoreApplication::instance()->installNativeEventFilter(this);
        m_filterInstalled = true;
    }
    X11Support::changeRootXInputEvents(keyEvents, 0);
}

void LinuxKeyMonitor::stop()
{
    if (!m_running)
        return;
    m_running = false;
    X11Support::changeRootXInputEvents(0, keyEvents);
}

KeyModifiers LinuxKeyMonitor::modifierOf(quint32 keysym) const
{
    switch (keysym) {
    case 0xffe1: // Shift_L
    case 0xffe2: // Shift_R
        return KeyModifier::Shift;
    case 0xffe3: // Control_L
    case 0xffe4: // Control_R
        return KeyModifier::Command;
    case 0xffeb: // Super_L
    case 0xffec: // Super_R
        return KeyModifier::Control;
    case 0xffe9: // Alt_L
    case 0xffea: // Alt_R
    case 0xffe7: // Meta_L
    case 0xffe8: // Meta_R
    case 0xfe03: // ISO_Level3_Shift (AltGr)
        return KeyModifier::Option;
    default:
        return KeyModifier::None;
    }
}

KeyModifiers LinuxKeyMonitor::current() const
{
    KeyModifiers all;
    for (KeyModifiers held : m_held)
        all |= held;
    return all;
}

bool LinuxKeyMonitor::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result)
{
    Q_UNUSED(eventType)
    Q_UNUSED(result)
    const auto type = X11Support::xinputEventType(message, m_xinput);
    if (type != XCB_INPUT_RAW_KEY_PRESS && type != XCB_INPUT_RAW_KEY_RELEASE)
        return false;
    if (!m_running)
        return true;

    const auto* raw = static_cast<const xcb_input_raw_key_press_event_t*>(message);
    const auto keycode = quint8(raw->detail);
    const quint32 keysym = m_keymap.keysymOf(keycode);
    const bool press = type == XCB_INPUT_RAW_KEY_PRESS;
    const KeyModifiers modifier = modifierOf(keysym);
    if (modifier != KeyModifier::None) {
        const KeyModifiers before = current();
        if (press)
            m_held.insert(keycode, modifier);
        else
            m_held.remove(keycode);
        if (current() != before)
            Q_EMIT modifiersChanged(current());
        return true;
    }
    if (!press)
        return true;
    int code = otherKeyBase + keycode;
    if (keysym == 0x0076 || keysym == 0x0056)
        code = KeyCode::V;
    else if (keysym == 0xff1b)
        code = KeyCode::Escape;
    Q_EMIT keyDown(code, current());
    return true;
}
