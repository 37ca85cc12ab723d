#pragma once

#include "platform/KeyMonitor.h"
#include "platform/linux/X11Keymap.h"

#include <QAbstractNativeEventFilter>
#include <QSet>

// Every key of the desktop through XInput raw events on the root window, whichever window has the
// keyboard. Modifiers are tracked from the keys themselves: Ctrl is Command, Super is Control,
// Alt is Option. Keys the rules do not name arrive as 256 + their X keycode.
class LinuxKeyMonitor final : public KeyMonitor, private QAbstractNativeEventFilter
{
    Q_OBJECT
public:
    static constexpr int otherKeyBase = 256;

    explicit LinuxKeyMonitor(QObject* parent = nullptr);
    ~LinuxKeyMonitor() override;

    void start() override;
    void stop() override;

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    KeyModifiers modifierOf(quint32 keysym) const;
    KeyModifiers current() const;

    X11Keymap m_keymap;
    quint8 m_xinput = 0;
    bool m_running = false;
    bool m_filterInstalled = false;
    // Held modifier keys by keycode, so left and right keys release independently.
    QHash<quint8, KeyModifiers> m_held;
};
