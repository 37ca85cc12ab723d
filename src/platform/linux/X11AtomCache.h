#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>

#include <cstdint>

struct xcb_connection_t;

// Atom names and atoms of one X connection, asked once each: an atom never changes its name
// while the server runs. Round trips to the server only, so for the reading thread.
class X11AtomCache
{
public:
    explicit X11AtomCache(xcb_connection_t* connection) : m_connection(connection) {}

    std::uint32_t atom(const QByteArray& name);
    QByteArray name(std::uint32_t atom);
    // Names of many atoms with one wait for all the unknown ones.
    QList<QByteArray> names(const QList<std::uint32_t>& atoms);

private:
    xcb_connection_t* m_connection;
    QHash<QByteArray, std::uint32_t> m_atoms;
    QHash<std::uint32_t, QByteArray> m_names;
};
