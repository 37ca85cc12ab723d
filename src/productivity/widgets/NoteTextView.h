#pragma once

#include "productivity/NoteHistory.h"

#include <QPlainTextEdit>

class QMenu;

// The note editor's text field, with its own bounded undo history instead of Qt's: Ctrl+Z undoes,
// Ctrl+Shift+Z redoes, and so do the items of its edit menu. Loading a text from outside starts
// a fresh history.
class NoteTextView : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit NoteTextView(QWidget* parent = nullptr);

    // Loads a text that did not come from typing here; nothing before it can be undone.
    void replaceExternally(const QString& text);
    // Apply one step; false (and nothing changes) when there is none.
    bool undoChange();
    bool redoChange();
    const NoteHistory& history() const { return m_history; }
    // The edit menu as a right click shows it (deleted when closed).
    QMenu* editMenu();

Q_SIGNALS:
    // Every change of the text, typed or undone, for the draft.
    void edited(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void textDidChange();
    void showMenu(const QPoint& position);
    void apply(const std::optional<QString>& text);

    NoteHistory m_history;
    bool m_restoring = false;
};
