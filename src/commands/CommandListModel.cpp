#include "commands/CommandListModel.h"

#include "commands/MenuCommands.h"

CommandListModel::CommandListModel(const MenuCommands& commands, QObject* parent)
    : QAbstractListModel(parent), m_commands(commands)
{
    connect(&commands, &MenuCommands::commandsChanged, this, &CommandListModel::rebuild);
    rebuild();
}

int CommandListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant CommandListModel::data(const QModelIndex& index, int role) const
{
    const CommandItem* command = index.isValid() ? item(index.row()) : nullptr;
    if (!command)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return command->name;
    case KeysRole:
        return command->keys;
    case EnabledRole:
        return command->enabled;
    case Qt::ToolTipRole:
        return rowHelp();
    default:
        return {};
    }
}

void CommandListModel::setSearch(const QString& search)
{
    if (search == m_search)
        return;
    m_search = search;
    rebuild();
}

const CommandItem* CommandListModel::item(int row) const
{
    if (row < 0 || row >= m_rows.size())
        return nullptr;
    const int at = m_rows.at(row);
    return at < m_commands.commands().size() ? &m_commands.commands().at(at) : nullptr;
}

void CommandListModel::rebuild()
{
    beginResetModel();
    m_rows.clear();
    const QList<CommandItem>& commands = m_commands.commands();
    for (int i = 0; i < commands.size(); ++i) {
        if (m_search.isEmpty() || commands.at(i).name.contains(m_search, Qt::CaseInsensitive))
            m_rows.append(i);
    }
    endResetModel();
}
