#pragma once

#include <QPersistentModelIndex>
#include <QPoint>
#include <QWidget>

#include <optional>

class HistoryRowDelegate;
class QListView;
class SymbolButton;

// The favourite toggle and the delete button of the row under the pointer: real buttons, so
// they take their own clicks, show their own tooltips and have names for screen readers. They
// live on the list's viewport and follow the pointer, scrolling, resizing and changing rows.
class HistoryRowButtons : public QWidget
{
    Q_OBJECT
public:
    HistoryRowButtons(QListView& list, HistoryRowDelegate& delegate);

    SymbolButton* pinButton() const { return m_pin; }
    SymbolButton* removeButton() const { return m_remove; }
    // The row the buttons stand on; invalid while they are hidden.
    QModelIndex row() const { return m_row; }

Q_SIGNALS:
    void pinClicked(int row);
    void removeClicked(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Puts the buttons on the row under the last known pointer position, or hides them.
    void follow();
    void scheduleFollow();
    void setRow(const QModelIndex& index);

    QListView& m_list;
    HistoryRowDelegate& m_delegate;
    SymbolButton* m_pin;
    SymbolButton* m_remove;
    QPersistentModelIndex m_row;
    // In viewport coordinates; nothing while the pointer is elsewhere.
    std::optional<QPoint> m_pointer;
    bool m_followPending = false;
};
