#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

class QAbstractItemView;

// One history row: the text's first line, its kind and time, a favourite toggle and a delete
// button. The row under the pointer gets real buttons (HistoryRowButtons); every other row shows
// the same glyphs painted at the same place. Clicks are reported by row.
//
// All geometry is worked out against the viewport's width at the moment it is needed: a list
// view never shrinks its items, so an item rectangle can still be as wide as the list was when
// it was first laid out.
class HistoryRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    enum class Area { row, pin, remove };

    static constexpr int rowHeight = 46;
    static constexpr int buttonSize = 26;
    static constexpr int buttonGap = 4;

    using QStyledItemDelegate::QStyledItemDelegate;

    // The painted card of an item, cut to what the viewport shows.
    static QRect rowRect(const QRect& itemRect, int viewportWidth);
    // The card of a row as `view` shows it now.
    static QRect rowRect(const QAbstractItemView& view, const QModelIndex& index);
    // The rectangle of the pin or delete button inside a card.
    static QRect buttonRect(const QRect& rowRect, Area area);
    // Where a point of a card lands.
    static Area areaAt(const QRect& rowRect, const QPoint& position);

    // The row that carries the real buttons: drawn as hovered, its glyphs left to the buttons.
    void setActiveRow(const QModelIndex& index);
    QModelIndex activeRow() const { return m_activeRow; }

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

private:
    QPersistentModelIndex m_activeRow;
};
