#include "ui/EditCommand.h"

const QList<EditCommand>& EditCommands::allCases()
{
    static const QList<EditCommand> cases{EditCommand::undo, EditCommand::redo,  EditCommand::cut,
                                          EditCommand::copy, EditCommand::paste, EditCommand::selectAll};
    return cases;
}

QString EditCommands::title(EditCommand command)
{
    switch (command) {
    case EditCommand::undo:
        return QStringLiteral("Widerrufen");
    case EditCommand::redo:
        return QStringLiteral("Wiederholen");
    case EditCommand::cut:
        return QStringLiteral("Ausschneiden");
    case EditCommand::copy:
        return QStringLiteral("Kopieren");
    case EditCommand::paste:
        return QStringLiteral("Einsetzen");
    case EditCommand::selectAll:
        return QStringLiteral("Alles auswählen");
    }
    return {};
}

QString EditCommands::keyHint(EditCommand command)
{
    switch (command) {
    case EditCommand::undo:
        return QStringLiteral("Strg+Z");
    case EditCommand::redo:
        return QStringLiteral("Strg+Umschalt+Z");
    case EditCommand::cut:
        return QStringLiteral("Strg+X");
    case EditCommand::copy:
        return QStringLiteral("Strg+C");
    case EditCommand::paste:
        return QStringLiteral("Strg+V");
    case EditCommand::selectAll:
        return QStringLiteral("Strg+A");
    }
    return {};
}

QList<QKeyCombination> EditCommands::keys(EditCommand command)
{
    switch (command) {
    case EditCommand::undo:
        return {Qt::CTRL | Qt::Key_Z};
    case EditCommand::redo:
        // Both habits: Ctrl+Shift+Z from the menu's own key, Ctrl+Y from the other desktops.
        return {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y};
    case EditCommand::cut:
        return {Qt::CTRL | Qt::Key_X};
    case EditCommand::copy:
        return {Qt::CTRL | Qt::Key_C};
    case EditCommand::paste:
        return {Qt::CTRL | Qt::Key_V};
    case EditCommand::selectAll:
        return {Qt::CTRL | Qt::Key_A};
    }
    return {};
}

QKeySequence::StandardKey EditCommands::standardKey(EditCommand command)
{
    switch (command) {
    case EditCommand::undo:
        return QKeySequence::Undo;
    case EditCommand::redo:
        return QKeySequence::Redo;
    case EditCommand::cut:
        return QKeySequence::Cut;
    case EditCommand::copy:
        return QKeySequence::Copy;
    case EditCommand::paste:
        return QKeySequence::Paste;
    case EditCommand::selectAll:
        return QKeySequence::SelectAll;
    }
    return QKeySequence::UnknownKey;
}
