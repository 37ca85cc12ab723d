#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The note editor's own undo history: whole texts, at most `depth` steps back. Loading another
// note starts a fresh one, so undo never leads from one note into another.
class NoteHistory
{
public:
    static constexpr int depth = 80;

    explicit NoteHistory(QString current = {}) : m_current(std::move(current)) {}

    // Notes a new state; the same text again is no step.
    void record(const QString& text);
    std::optional<QString> undo();
    std::optional<QString> redo();
    // Starts over at `text` with nothing to undo or redo.
    void reset(const QString& text);

    const QString& current() const { return m_current; }
    bool canUndo() const { return !m_past.isEmpty(); }
    bool canRedo() const { return !m_future.isEmpty(); }

private:
    QString m_current;
    QStringList m_past;
    QStringList m_future;
};
