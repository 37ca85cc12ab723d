#include "ui/EditTarget.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>

namespace {

bool clipboardHasText()
{
    // The same question Qt's own context menu asks before it offers to paste.
    const QMimeData* content = QGuiApplication::clipboard()->mimeData(QClipboard::Clipboard);
    return content && content->hasText() && !content->text().isEmpty();
}

// Multi-line fields share their questions through the document and the cursor.
template <typename Edit> bool multiLineApplies(const Edit& edit, EditCommand command)
{
    const QTextDocument* document = edit.document();
    const QTextCursor cursor = edit.textCursor();
    const bool writable = !edit.isReadOnly();
    switch (command) {
    case EditCommand::undo:
        return writable && edit.isUndoRedoEnabled() && document->isUndoAvailable();
    case EditCommand::redo:
        return writable && edit.isUndoRedoEnabled() && document->isRedoAvailable();
    case EditCommand::cut:
        return writable && cursor.hasSelection();
    case EditCommand::copy:
        return cursor.hasSelection();
    case EditCommand::paste:
        return writable && clipboardHasText();
    case EditCommand::selectAll: {
        const int end = document->characterCount() - 1;
        return end > 0 && (cursor.selectionStart() != 0 || cursor.selectionEnd() != end);
    }
    }
    return false;
}

bool lineApplies(const QLineEdit& edit, EditCommand command)
{
    const bool writable = !edit.isReadOnly();
    // A password is never handed out, not even to our own clipboard.
    const bool revealing = edit.echoMode() == QLineEdit::Normal;
    switch (command) {
    case EditCommand::undo:
        return writable && edit.isUndoAvailable();
    case EditCommand::redo:
        return writable && edit.isRedoAvailable();
    case EditCommand::cut:
        return writable && revealing && edit.hasSelectedText();
    case EditCommand::copy:
        return revealing && edit.hasSelectedText();
    case EditCommand::paste:
        return writable && clipboardHasText();
    case EditCommand::selectAll:
        return !edit.text().isEmpty() && edit.selectedText() != edit.text();
    }
    return false;
}

template <typename Edit> void run(Edit& edit, EditCommand command)
{
    switch (command) {
    case EditCommand::undo:
        edit.undo();
        break;
    case EditCommand::redo:
        edit.redo();
        break;
    case EditCommand::cut:
        edit.cut();
        break;
    case EditCommand::copy:
        edit.copy();
        break;
    case EditCommand::paste:
        edit.paste();
        break;
    case EditCommand::selectAll:
        edit.selectAll();
        break;
    }
}

} // namespace

std::optional<EditTarget> EditTarget::of(QObject* object)
{
    if (!object || !object->isWidgetType())
        return std::nullopt;
    EditTarget target;
    if (auto* line = qobject_cast<QLineEdit*>(object)) {
        target.m_line = line;
        return target;
    }
    QObject* candidates[] = {object, object->parent()};
    for (QObject* candidate : candidates) {
        if (auto* rich = qobject_cast<QTextEdit*>(candidate)) {
            if (candidate == object || rich->viewport() == object) {
                target.m_rich = rich;
                return target;
            }
        }
        if (auto* plain = qobject_cast<QPlainTextEdit*>(candidate)) {
            if (candidate == object || plain->viewport() == object) {
                target.m_plain = plain;
                return target;
            }
        }
    }
    return std::nullopt;
}

QWidget* EditTarget::widget() const
{
    if (m_line)
        return m_line;
    if (m_rich)
        return m_rich;
    return m_plain;
}

bool EditTarget::applies(EditCommand command) const
{
    if (m_line)
        return lineApplies(*m_line, command);
    if (m_rich)
        return multiLineApplies(*m_rich, command);
    if (m_plain)
        return multiLineApplies(*m_plain, command);
    return false;
}

bool EditTarget::perform(EditCommand command) const
{
    if (!applies(command))
        return false;
    if (m_line)
        run(*m_line, command);
    else if (m_rich)
        run(*m_rich, command);
    else if (m_plain)
        run(*m_plain, command);
    return true;
}
