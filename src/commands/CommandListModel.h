#pragma once

#include "commands/CommandItem.h"

#include <QAbstractListModel>

class MenuCommands;

// The commands page's rows: the commands whose name contains the search text (case-insensitive;
// an empty search shows all), in menu order.
class CommandListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role { KeysRole = Qt::UserRole + 1, EnabledRole };

    explicit CommandListModel(const MenuCommands& commands, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const QString& search() const { return m_search; }
    void setSearch(const QString& search);
    // The command shown in a row.
    const CommandItem* item(int row) const;

    static QString searchPlaceholder() { return QStringLiteral("Befehl suchen …"); }
    static QString emptyText() { return QStringLiteral("Noch keine Menübefehle gefunden."); }
    static QString rowHelp() { return QStringLiteral("Befehl in der ursprünglichen App ausführen"); }

private:
    void rebuild();

    const MenuCommands& m_commands;
    QString m_search;
    QList<int> m_rows;
};
