#include "platform/linux/LinuxHotKeys.h"

#include "common/Log.h"

#include "platform/linux/X11Keymap.h"
#include "platform/linux/X11Support.h"

#include <QCoreApplication>

#include <xcb/xcb.h>

#include <cstdlib>

namespace {
constexpr quint32 keysymV = 0x0076;
constexpr quint32 keysymEscape = 0xff1b;
constexpr quint32 keysymNumLock = 0xff7f;
constexpr quint32 keysymSuperL = 0xffeb;
constexpr quint32 keysymAltL = 0xffe9;
} // namespace

LinuxHotKeys::LinuxHotKeys(QObject* parent) : HotKeys(parent), m_root(X11Support::rootWindow())
{
    if (m_root)
        QCoreApplication::instance()->installNativeEventFilter(this);
}

LinuxHotKeys::~LinuxHotKeys()
{
    unregisterHotKey();
    if (m_root && QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool LinuxHotKeys::registerHotKey(int keyCode, KeyModifiers modifiers)
{
    unregisterHotKey();
    xcb_connection_t* c = X11Support::connection();
    if (!c || !m_root)
        return false;

    const X11Keymap keymap;
    const quint32 keysym = keyCode == KeyCode::V ? keysymV : keyCode == KeyCode::Escape ? keysymEscape : 0;
    const QList<quint8> keycodes = keysym ? keymap.keycodesFor(keysym) : QList<quint8>();
    if (keycodes.isEmpty()) {
        qCInfo(lcPlatform) << "hot key not registered: the keyboard map has no key for" << keyCode;
        return false;
    }

    quint16 mask = 0;
    if (modifiers & KeyModifier::Shift)
        mask |= XCB_MOD_MASK_SHIFT;
    if (modifiers & KeyModifier::Command)
        mask |= XCB_MOD_MASK_CONTROL;
    // Layouts put Super and Alt on Mod4 and Mod1 unless they say otherwise.
    const quint16 super = keymap.modifierMaskFor(keysymSuperL);
    const quint16 alt = keymap.modifierMaskFor(keysymAltL);
    if (modifiers & KeyModifier::Control)
        mask |= super ? super : quint16(XCB_MOD_MASK_4);
    if (modifiers & KeyModifier::Option)
        mask |= alt ? alt : quint16(XCB_MOD_MASK_1);
    const quint16 numLock = keymap.modifierMaskFor(keysymNumLock);
    const QList<quint16> locks{0, XCB_MOD_MASK_LOCK, numLock, quint16(numLock | XCB_MOD_MASK_LOCK)};

    QList<Grab> grabs;
    QList<xcb_void_cookie_t> cookies;
    // Without a NumLock key the variants repeat; each is grabbed once.
    for (quint8 keycode : keycodes) {
        for (quint16 lock : locks) {
            const Grab grab{keycode, quint16(mask | lock)};
            bool seen = false;
            for (const Grab& other : grabs)
                seen = seen || (other.keycode == grab.keycode && other.modifiers == grab.modifiers);
            if (seen)
                continue;
            cookies.append(xcb_grab_key_checked(c, 1, m_root, grab.modifiers, grab.keycode,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
            grabs.append(grab);
        }
    }
    // Another client holding any variant answers BadAccess: the combination is taken.
    bool taken = false;
    for (qsizetype i = 0; i < cookies.size(); ++i) {
        if (xcb_generic_error_t* error = xcb_request_check(c, cookies.at(i))) {
            if (!taken)
                qCInfo(lcPlatform) << "hot key taken: X error" << error->error_code << "on keycode"
                                   << grabs.at(i).keycode;
            taken = true;
            std::free(error);
        }
    }
    if (taken) {
        ungrab(grabs);
        return false;
    }
    m_grabs = grabs;
    m_keycodes = keycodes;
    m_modifiers = mask;
    m_lockMasks = quint16(XCB_MOD_MASK_LOCK | numLock);
    return true;
}

void LinuxHotKeys::unregisterHotKey()
{
    ungrab(m_grabs);
    m_grabs.clear();
    m_keycodes.clear();
}

void LinuxHotKeys::ungrab(const QList<Grab>& grabs)
{
    xcb_connection_t* c = X11Support::connection();
    if (!c || grabs.isEmpty())
        return;
    for (const Grab& grab : grabs)
        xcb_ungrab_key(c, grab.keycode, m_root, grab.modifiers);
    xcb_flush(c);
}

bool LinuxHotKeys::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result)
{
    Q_UNUSED(eventType)
    Q_UNUSED(result)
    auto* event = static_cast<xcb_generic_event_t*>(message);
    const quint8 type = event->response_type & ~0x80;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return false;
    auto* key = reinterpret_cast<xcb_key_press_event_t*>(event);
    if (key->event != m_root || m_grabs.isEmpty() || !m_keycodes.contains(key->detail))
        return false;
    const quint16 state = key->state & ~(X11Support::anyButtonMask | m_lockMasks);
    if (state != m_modifiers)
        return false;
    if (type == XCB_KEY_PRESS)
        Q_EMIT pressed();
    return true;
}
