#pragma once

#include "clipboard/ClipKind.h"

#include <QWidget>

class HistoryListModel;
class HistoryRowButtons;
class HistoryRowDelegate;
class ClipboardHistory;
class Clock;
class Scheduler;
class Productivity;
class QButtonGroup;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QStackedWidget;
class SymbolButton;

// The history page ("Verlauf"): search, pause/resume and clear, the kind chips, then the rows
// (favourites first). Clicking a row puts its text back on the clipboard and closes the panel.
class HistoryPage : public QWidget
{
    Q_OBJECT
public:
    HistoryPage(ClipboardHistory& history, Productivity& productivity, Clock& clock, Scheduler& scheduler,
                QWidget* parent = nullptr);

    HistoryListModel* rows() const { return m_rows; }
    QListView* list() const { return m_list; }
    HistoryRowDelegate* rowDelegate() const { return m_delegate; }
    HistoryRowButtons* rowButtons() const { return m_buttons; }
    QLineEdit* searchField() const { return m_search; }
    SymbolButton* recordingButton() const { return m_recording; }
    SymbolButton* clearButton() const { return m_clear; }
    QPushButton* chip(ClipKind kind) const;
    QWidget* emptyState() const { return m_empty; }
    QLabel* storageError() const { return m_storageError; }

private:
    void showRecording();
    void showStorageError();
    void showRowsOrEmpty();
    // Runs a row action once the view is done with the click that asked for it, and only if
    // the row still shows the same clip by then.
    void queueRowAction(int row, void (HistoryListModel::*action)(int));

    ClipboardHistory& m_history;
    HistoryListModel* m_rows;
    HistoryRowDelegate* m_delegate;
    HistoryRowButtons* m_buttons = nullptr;
    QLineEdit* m_search;
    SymbolButton* m_recording;
    SymbolButton* m_clear;
    QButtonGroup* m_chips;
    QLabel* m_storageError;
    QStackedWidget* m_stack;
    QListView* m_list;
    QWidget* m_empty;
};
