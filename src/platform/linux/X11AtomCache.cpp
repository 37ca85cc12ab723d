#include "platform/linux/X11AtomCache.h"

#include <xcb/xcb.h>

#include <cstdlib>

std::uint32_t X11AtomCache::atom(const QByteArray& name)
{
    const auto known = m_atoms.constFind(name);
    if (known != m_atoms.cend())
        return *known;
    const auto cookie = xcb_intern_atom(m_connection, 0, uint16_t(name.size()), name.constData());
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(m_connection, cookie, nullptr);
    const std::uint32_t atom = reply ? reply->atom : std::uint32_t(XCB_ATOM_NONE);
    std::free(reply);
    if (atom != XCB_ATOM_NONE) {
        m_atoms.insert(name, atom);
        m_names.insert(atom, name);
    }
    return atom;
}

QByteArray X11AtomCache::name(std::uint32_t atom)
{
    return names({atom}).value(0);
}

QList<QByteArray> X11AtomCache::names(const QList<std::uint32_t>& atoms)
{
    QHash<std::uint32_t, xcb_get_atom_name_cookie_t> asked;
    for (std::uint32_t atom : atoms) {
        if (atom != XCB_ATOM_NONE && !m_names.contains(atom) && !asked.contains(atom))
            asked.insert(atom, xcb_get_atom_name(m_connection, atom));
    }
    for (auto it = asked.cbegin(); it != asked.cend(); ++it) {
        xcb_get_atom_name_reply_t* reply = xcb_get_atom_name_reply(m_connection, it.value(), nullptr);
        if (!reply)
            continue;
        const QByteArray name(xcb_get_atom_name_name(reply), xcb_get_atom_name_name_length(reply));
        std::free(reply);
        m_names.insert(it.key(), name);
        m_atoms.insert(name, it.key());
    }
    QList<QByteArray> result;
    result.reserve(atoms.size());
    for (std::uint32_t atom : atoms)
        result.append(m_names.value(atom));
    return result;
}
