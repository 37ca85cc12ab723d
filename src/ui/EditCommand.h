#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

// The six items of the edit menu ("Bearbeiten"), in menu order.
enum class EditCommand { undo, redo, cut, copy, paste, selectAll };

namespace EditCommands {

const QList<EditCommand>& allCases();
// The German menu title.
QString title(EditCommand command);
// The key shown beside the title, as a German keyboard labels it.
QString keyHint(EditCommand command);
// Every key combination that runs the command in a text field.
QList<QKeyCombination> keys(EditCommand command);
// What Qt's own text fields answer to on this platform.
QKeySequence::StandardKey standardKey(EditCommand command);

} // namespace EditCommands
