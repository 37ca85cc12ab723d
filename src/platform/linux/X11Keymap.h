#pragma once

#include <QList>
#include <QtGlobal>

// The server's key and modifier mapping, read once (two round trips) from Qt's connection.
// Empty without X.
class X11Keymap
{
public:
    X11Keymap();

    // Keycodes whose unshifted or shifted symbol is `keysym`.
    QList<quint8> keycodesFor(quint32 keysym) const;
    // The unshifted symbol of `keycode`, 0 when unknown.
    quint32 keysymOf(quint8 keycode) const;
    // The X modifier bit (Mod2 for NumLock on most layouts) that a key with `keysym` sets; 0 if none.
    quint16 modifierMaskFor(quint32 keysym) const;

private:
    quint8 m_minKeycode = 0;
    int m_perKeycode = 0;
    QList<quint32> m_keysyms;
    // Keycodes per modifier bit, Shift through Mod5.
    QList<QList<quint8>> m_modifiers;
};
