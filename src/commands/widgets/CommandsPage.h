#pragma once

#include <QWidget>

class CommandListModel;
class MenuCommands;
class PermissionStore;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class SymbolButton;
struct CommandItem;

// The "Befehle" page: the status line, a search field and the target application's shortcuts;
// a click runs the command in that application.
class CommandsPage : public QWidget
{
    Q_OBJECT
public:
    CommandsPage(const MenuCommands& commands, const PermissionStore& permissions, QWidget* parent = nullptr);

    QLineEdit* searchField() const { return m_search; }
    QListView* list() const { return m_list; }
    CommandListModel* rows() const { return m_rows; }
    QLabel* statusLabel() const { return m_status; }
    QPushButton* accessButton() const { return m_access; }
    SymbolButton* reloadButton() const { return m_reload; }

Q_SIGNALS:
    void executeRequested(const CommandItem& item);
    void reloadRequested();
    void accessibilityRequested();

private:
    void sync();

    const MenuCommands& m_commands;
    const PermissionStore& m_permissions;
    CommandListModel* m_rows;
    QLabel* m_status;
    QLineEdit* m_search;
    SymbolButton* m_reload;
    QPushButton* m_access;
    QListView* m_list;
    QLabel* m_empty;
};
