#include "productivity/NoteHistory.h"

void NoteHistory::record(const QString& text)
{
    if (text == m_current)
        return;
    m_past.append(m_current);
    if (m_past.size() > depth)
        m_past.remove(0, m_past.size() - depth);
    m_future.clear();
    m_current = text;
}

std::optional<QString> NoteHistory::undo()
{
    if (m_past.isEmpty())
        return std::nullopt;
    m_future.append(m_current);
    m_current = m_past.takeLast();
    return m_current;
}

std::optional<QString> NoteHistory::redo()
{
    if (m_future.isEmpty())
        return std::nullopt;
    m_past.append(m_current);
    m_current = m_future.takeLast();
    return m_current;
}

void NoteHistory::reset(const QString& text)
{
    m_current = text;
    m_past.clear();
    m_future.clear();
}
