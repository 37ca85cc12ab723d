#pragma once

#include <QStyledItemDelegate>

// One history row: the text's first line, its kind and time, a favourite toggle and a delete
// button. Clicks are reported as signals, queued by the page so that the list can change
// after the view has finished with the event.
class HistoryRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    enum class Area { row, pin, remove };

    using QStyledItemDelegate::QStyledItemDelegate;

    // Where a point of a row's rectangle lands.
    static Area areaAt(const QRect& rowRect, const QPoint& position);
    // The rectangle of the pin or delete button inside a row's rectangle.
    static QRect buttonRect(const QRect& rowRect, Area area);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

Q_SIGNALS:
    void rowClicked(int row);
    void pinClicked(int row);
    void removeClicked(int row);
};
