#include "clipboard/widgets/HistoryRowDelegate.h"

#include "clipboard/HistoryListModel.h"
#include "clipboard/HistoryTexts.h"
#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {
constexpr int inset = 8;

void drawGlyph(QPainter* painter, const QRect& rect, const QString& symbol, const QColor& color)
{
    // The same size a SymbolButton of this diameter draws, so the real buttons cover it exactly.
    const auto glyphFont = Symbol::font(qRound(HistoryRowDelegate::buttonSize * 0.6));
    painter->setFont(glyphFont ? *glyphFont : PanelTheme::font(9));
    painter->setPen(color);
    painter->drawText(rect, Qt::AlignCenter, Symbol::text(symbol, glyphFont.has_value()));
}

int viewportWidth(const QStyleOptionViewItem& option)
{
    if (const auto* view = qobject_cast<const QAbstractItemView*>(option.widget))
        return view->viewport()->width();
    return option.rect.right() + 1;
}
} // namespace

QRect HistoryRowDelegate::rowRect(const QRect& itemRect, int viewportWidth)
{
    QRect row = itemRect.adjusted(0, 2, -2, -2);
    row.setRight(std::min(row.right(), viewportWidth - 3));
    return row;
}

QRect HistoryRowDelegate::rowRect(const QAbstractItemView& view, const QModelIndex& index)
{
    return rowRect(view.visualRect(index), view.viewport()->width());
}

QRect HistoryRowDelegate::buttonRect(const QRect& rowRect, Area area)
{
    const int top = rowRect.center().y() - buttonSize / 2;
    const int removeLeft = rowRect.right() - inset - buttonSize;
    if (area == Area::remove)
        return QRect(removeLeft, top, buttonSize, buttonSize);
    if (area == Area::pin)
        return QRect(removeLeft - buttonGap - buttonSize, top, buttonSize, buttonSize);
    return rowRect;
}

HistoryRowDelegate::Area HistoryRowDelegate::areaAt(const QRect& rowRect, const QPoint& position)
{
    if (buttonRect(rowRect, Area::remove).contains(position))
        return Area::remove;
    if (buttonRect(rowRect, Area::pin).contains(position))
        return Area::pin;
    return Area::row;
}

void HistoryRowDelegate::setActiveRow(const QModelIndex& index)
{
    m_activeRow = index;
}

void HistoryRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect row = rowRect(option.rect, viewportWidth(option));
    const bool active = index == m_activeRow;
    const bool hovered = active || option.state.testFlag(QStyle::State_MouseOver);
    painter->setPen(Qt::NoPen);
    painter->setBrush(hovered ? PanelTheme::raised() : PanelTheme::card());
    painter->drawRoundedRect(QRectF(row), 10, 10);

    const bool pinned = index.data(HistoryListModel::PinnedRole).toBool();
    const QRect pinRect = buttonRect(row, Area::pin);
    if (!active) {
        drawGlyph(painter, pinRect, HistoryTexts::pinSymbol(pinned),
                  pinned ? PanelTheme::accent() : PanelTheme::tertiary());
        drawGlyph(painter, buttonRect(row, Area::remove), HistoryTexts::deleteSymbol(),
                  PanelTheme::tertiary());
    }

    const int textLeft = row.left() + 12;
    const int textWidth = std::max(0, pinRect.left() - 8 - textLeft);
    const int middle = row.center().y();
    const QFont textFont = PanelTheme::font(13);
    const QFont captionFont = PanelTheme::font(11);
    painter->setFont(textFont);
    painter->setPen(PanelTheme::text());
    painter->drawText(
        QRect(textLeft, middle - 19, textWidth, 18), Qt::AlignBottom | Qt::AlignLeft,
        QFontMetrics(textFont).elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, textWidth));
    painter->setFont(captionFont);
    painter->setPen(PanelTheme::secondary());
    painter->drawText(
        QRect(textLeft, middle + 1, textWidth, 16), Qt::AlignTop | Qt::AlignLeft,
        QFontMetrics(captionFont)
            .elidedText(index.data(HistoryListModel::CaptionRole).toString(), Qt::ElideRight, textWidth));
    painter->restore();
}

QSize HistoryRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    // No width of its own: with uniform item sizes the view keeps the first answer for good, and
    // a width taken from the option would pin the rows to whatever width the list had then.
    return {1, rowHeight};
}

bool HistoryRowDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                     const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        return true;
    if (event->type() != QEvent::MouseButtonRelease)
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QRect row = rowRect(option.rect, viewportWidth(option));
    const QPoint position = mouse->position().toPoint();
    if (mouse->button() != Qt::LeftButton || !row.contains(position))
        return true;
    // The real buttons take their own clicks; this is a row reached without hovering it first.
    switch (areaAt(row, position)) {
    case Area::pin:
        Q_EMIT pinClicked(index.row());
        break;
    case Area::remove:
        Q_EMIT removeClicked(index.row());
        break;
    case Area::row:
        Q_EMIT rowClicked(index.row());
        break;
    }
    return true;
}

bool HistoryRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                   const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    switch (areaAt(rowRect(option.rect, viewportWidth(option)), event->pos())) {
    case Area::pin:
        QToolTip::showText(event->globalPos(), HistoryTexts::pinHint(), view);
        return true;
    case Area::remove:
        QToolTip::showText(event->globalPos(), HistoryTexts::deleteHint(), view);
        return true;
    case Area::row:
        QToolTip::hideText();
        return true;
    }
    return false;
}
