#include "platform/linux/X11Keymap.h"

#include "platform/linux/X11Support.h"

#include <xcb/xcb.h>

#include <cstdlib>

X11Keymap::X11Keymap()
{
    xcb_connection_t* c = X11Support::connection();
    if (!c)
        return;
    const xcb_setup_t* setup = xcb_get_setup(c);
    m_minKeycode = setup->min_keycode;
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto mappingCookie = xcb_get_keyboard_mapping(c, setup->min_keycode, quint8(count));
    const auto modifierCookie = xcb_get_modifier_mapping(c);

    if (auto* mapping = xcb_get_keyboard_mapping_reply(c, mappingCookie, nullptr)) {
        m_perKeycode = mapping->keysyms_per_keycode;
        const xcb_keysym_t* syms = xcb_get_keyboard_mapping_keysyms(mapping);
        const int length = xcb_get_keyboard_mapping_keysyms_length(mapping);
        m_keysyms = QList<quint32>(syms, syms + length);
        std::free(mapping);
    }
    if (auto* modifiers = xcb_get_modifier_mapping_reply(c, modifierCookie, nullptr)) {
        const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(modifiers);
        const int perModifier = modifiers->keycodes_per_modifier;
        for (int bit = 0; bit < 8; ++bit)
            m_modifiers.append(QList<quint8>(codes + bit * perModifier, codes + (bit + 1) * perModifier));
        std::free(modifiers);
    }
}

QList<quint8> X11Keymap::keycodesFor(quint32 keysym) const
{
    QList<quint8> codes;
    if (m_perKeycode == 0)
        return codes;
    for (int i = 0; i < m_keysyms.size(); i += m_perKeycode) {
        for (int level = 0; level < std::min(2, m_perKeycode); ++level) {
            if (m_keysyms[i + level] == keysym) {
                codes.append(quint8(m_minKeycode + i / m_perKeycode));
                break;
            }
        }
    }
    return codes;
}

quint32 X11Keymap::keysymOf(quint8 keycode) const
{
    const int index = (keycode - m_minKeycode) * m_perKeycode;
    if (m_perKeycode == 0 || keycode < m_minKeycode || index >= m_keysyms.size())
        return 0;
    return m_keysyms[index];
}

quint16 X11Keymap::modifierMaskFor(quint32 keysym) const
{
    const QList<quint8> codes = keycodesFor(keysym);
    for (int bit = 0; bit < m_modifiers.size(); ++bit) {
        for (quint8 code : m_modifiers[bit]) {
            if (code != 0 && codes.contains(code))
                return quint16(1u << bit);
        }
    }
    return 0;
}
