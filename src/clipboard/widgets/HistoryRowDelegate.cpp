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

namespace {
constexpr int rowHeight = 46;
constexpr int button = 26;
constexpr int gap = 4;

void drawGlyph(QPainter* painter, const QRect& rect, const QString& symbol, const QColor& color)
{
    const auto glyphFont = Symbol::font(16);
    painter->setFont(glyphFont ? *glyphFont : PanelTheme::font(9));
    painter->setPen(color);
    painter->drawText(rect, Qt::AlignCenter, Symbol::text(symbol, glyphFont.has_value()));
}
} // namespace

QRect HistoryRowDelegate::buttonRect(const QRect& rowRect, Area area)
{
    const int top = rowRect.center().y() - button / 2;
    const int removeLeft = rowRect.right() - 8 - button;
    if (area == Area::remove)
        return QRect(removeLeft, top, button, button);
    if (area == Area::pin)
        return QRect(removeLeft - gap - button, top, button, button);
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

void HistoryRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect row = option.rect.adjusted(0, 2, -2, -2);
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    painter->setPen(Qt::NoPen);
    painter->setBrush(hovered ? PanelTheme::raised() : PanelTheme::card());
    painter->drawRoundedRect(QRectF(row), 10, 10);

    const bool pinned = index.data(HistoryListModel::PinnedRole).toBool();
    const QRect pinRect = buttonRect(row, Area::pin);
    drawGlyph(painter, pinRect, HistoryTexts::pinSymbol(pinned),
              pinned ? PanelTheme::accent() : PanelTheme::tertiary());
    drawGlyph(painter, buttonRect(row, Area::remove), HistoryTexts::deleteSymbol(),
              hovered ? PanelTheme::text() : PanelTheme::tertiary());

    const int textLeft = row.left() + 12;
    const int textWidth = pinRect.left() - 8 - textLeft;
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

QSize HistoryRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {option.rect.width(), rowHeight};
}

bool HistoryRowDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                     const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        return true;
    if (event->type() != QEvent::MouseButtonRelease)
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton || !option.rect.contains(mouse->position().toPoint()))
        return true;
    const QRect row = option.rect.adjusted(0, 2, -2, -2);
    switch (areaAt(row, mouse->position().toPoint())) {
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
    const QRect row = option.rect.adjusted(0, 2, -2, -2);
    switch (areaAt(row, event->pos())) {
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
