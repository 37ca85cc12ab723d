#include "ui/EditMenu.h"

#include "ui/EditTarget.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QWidget>

EditMenu::EditMenu(QObject* parent) : QObject(parent) {}

EditMenu::~EditMenu()
{
    uninstall();
}

void EditMenu::install()
{
    if (m_installed || !QCoreApplication::instance())
        return;
    QCoreApplication::instance()->installEventFilter(this);
    m_installed = true;
}

void EditMenu::uninstall()
{
    if (!m_installed)
        return;
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
    m_installed = false;
}

QMenu* EditMenu::menuFor(const EditTarget& field)
{
    auto* menu = new QMenu(field.widget());
    menu->setObjectName(QStringLiteral("editMenu"));
    menu->setTitle(QStringLiteral("Bearbeiten"));
    for (EditCommand command : EditCommands::allCases()) {
        // After "Wiederholen" and after "Einsetzen", as desktop edit menus group them.
        if (command == EditCommand::cut || command == EditCommand::selectAll)
            menu->addSeparator();
        QAction* action =
            menu->addAction(EditCommands::title(command) + u'\t' + EditCommands::keyHint(command));
        action->setEnabled(field.applies(command));
        // The field may have changed (or gone) while the menu was open: perform() checks again.
        connect(action, &QAction::triggered, menu, [field, command] { field.perform(command); });
    }
    return menu;
}

std::optional<EditCommand> EditMenu::missingBinding(const QKeyEvent& event)
{
    const QKeyCombination pressed(event.modifiers() & ~Qt::KeypadModifier, Qt::Key(event.key()));
    for (EditCommand command : EditCommands::allCases()) {
        if (EditCommands::keys(command).contains(pressed) &&
            !event.matches(EditCommands::standardKey(command)))
            return command;
    }
    return std::nullopt;
}

bool EditMenu::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::ContextMenu && type != QEvent::KeyPress && type != QEvent::ShortcutOverride)
        return QObject::eventFilter(watched, event);
    const auto field = EditTarget::of(watched);
    if (!field)
        return QObject::eventFilter(watched, event);

    if (type == QEvent::ContextMenu) {
        // A field that asked for its own menu, or for none, keeps it.
        if (field->widget()->contextMenuPolicy() != Qt::DefaultContextMenu)
            return false;
        auto* contextEvent = static_cast<QContextMenuEvent*>(event);
        QMenu* menu = menuFor(*field);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(contextEvent->globalPos());
        contextEvent->accept();
        return true;
    }

    auto* key = static_cast<QKeyEvent*>(event);
    const auto command = missingBinding(*key);
    if (!command)
        return false;
    // Claim the key before any shortcut of the window sees it, then run it when it arrives.
    key->accept();
    if (type == QEvent::ShortcutOverride)
        return true;
    field->perform(*command);
    return true;
}
