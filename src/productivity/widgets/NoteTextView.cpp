#include "productivity/widgets/NoteTextView.h"

#include "productivity/NoteTexts.h"
#include "ui/EditCommand.h"
#include "ui/EditMenu.h"
#include "ui/EditTarget.h"
#include "ui/PanelTheme.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>

NoteTextView::NoteTextView(QWidget* parent) : QPlainTextEdit(parent)
{
    // Qt's own history would undo across notes and in single characters; ours replaces it.
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setFont(PanelTheme::font(12));
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(4, 4, 4, 4);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(NoteTexts::accessibleName());
    // Our own menu: the shared edit menu, with undo and redo pointing at our history.
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &NoteTextView::showMenu);
    connect(this, &QPlainTextEdit::textChanged, this, &NoteTextView::textDidChange);
}

void NoteTextView::replaceExternally(const QString& text)
{
    m_restoring = true;
    setPlainText(text);
    // Editing goes on where the text ends, as after an undo.
    moveCursor(QTextCursor::End);
    m_restoring = false;
    m_history.reset(text);
}

bool NoteTextView::undoChange()
{
    const std::optional<QString> text = m_history.undo();
    apply(text);
    return text.has_value();
}

bool NoteTextView::redoChange()
{
    const std::optional<QString> text = m_history.redo();
    apply(text);
    return text.has_value();
}

void NoteTextView::apply(const std::optional<QString>& text)
{
    if (!text)
        return;
    m_restoring = true;
    setPlainText(*text);
    moveCursor(QTextCursor::End);
    m_restoring = false;
    Q_EMIT edited(*text);
}

void NoteTextView::textDidChange()
{
    if (m_restoring)
        return;
    const QString text = toPlainText();
    m_history.record(text);
    Q_EMIT edited(text);
}

void NoteTextView::keyPressEvent(QKeyEvent* event)
{
    // Ctrl stands for Command here, as everywhere in the panel.
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (event->key() == Qt::Key_Z && modifiers.testFlag(Qt::ControlModifier) &&
        !modifiers.testFlag(Qt::AltModifier)) {
        // The key is ours even when there is nothing to undo.
        if (modifiers.testFlag(Qt::ShiftModifier))
            redoChange();
        else
            undoChange();
        event->accept();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

QMenu* NoteTextView::editMenu()
{
    const auto field = EditTarget::of(this);
    QMenu* menu = field ? EditMenu::menuFor(*field) : createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The shared menu's undo and redo would ask Qt's history, which is off here: ours take their place.
    for (QAction* action : menu->actions()) {
        const bool undo = action->text().startsWith(EditCommands::title(EditCommand::undo));
        const bool redo = action->text().startsWith(EditCommands::title(EditCommand::redo));
        if (!undo && !redo)
            continue;
        auto* own = new QAction(action->text(), menu);
        own->setEnabled(undo ? m_history.canUndo() : m_history.canRedo());
        connect(own, &QAction::triggered, this, undo ? &NoteTextView::undoChange : &NoteTextView::redoChange);
        menu->insertAction(action, own);
        menu->removeAction(action);
        action->deleteLater();
    }
    return menu;
}

void NoteTextView::showMenu(const QPoint& position)
{
    editMenu()->popup(mapToGlobal(position));
}
