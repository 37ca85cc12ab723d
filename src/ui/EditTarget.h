#pragma once

#include "ui/EditCommand.h"

#include <QPointer>

#include <optional>

class QLineEdit;
class QObject;
class QPlainTextEdit;
class QTextEdit;
class QWidget;

// One text field as the edit menu sees it: a line edit, a rich or a plain text edit.
class EditTarget
{
public:
    // The text field that an event sent to `object` belongs to: the field itself, or the viewport
    // of a multi-line one (where its mouse events go). Nothing for anything else.
    static std::optional<EditTarget> of(QObject* object);

    QWidget* widget() const;
    // Whether the command would do something now (the menu enables only those).
    bool applies(EditCommand command) const;
    // Runs the command when it still applies; answers whether it ran.
    bool perform(EditCommand command) const;

private:
    QPointer<QLineEdit> m_line;
    QPointer<QTextEdit> m_rich;
    QPointer<QPlainTextEdit> m_plain;
};
