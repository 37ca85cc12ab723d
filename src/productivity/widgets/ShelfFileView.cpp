#include "productivity/widgets/ShelfFileView.h"

#include "productivity/ShelfFileList.h"
#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

constexpr int rowHeight = 28;
constexpr int markSize = 22;

QRect markIn(const QRect& row)
{
    return QRect(row.right() - markSize - 4, row.center().y() - markSize / 2, markSize, markSize);
}

class ShelfRowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        return {option.rect.width(), rowHeight};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QRect row = option.rect.adjusted(0, 2, 0, -2);
        const bool hovered = option.state & QStyle::State_MouseOver;
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor(255, 255, 255, hovered ? 28 : 16));
        painter->drawRoundedRect(row, 7, 7);

        const std::optional<QFont> glyphs = Symbol::font(15);
        painter->setFont(glyphs.value_or(PanelTheme::font(11)));
        painter->setPen(PanelTheme::secondary());
        painter->drawText(QRect(row.left() + 8, row.top(), 20, row.height()), Qt::AlignCenter,
                          Symbol::text(QStringLiteral("doc"), glyphs.has_value()));
        painter->drawText(markIn(option.rect), Qt::AlignCenter,
                          Symbol::text(QStringLiteral("xmark"), glyphs.has_value()));

        painter->setFont(PanelTheme::font(13));
        painter->setPen(PanelTheme::text());
        const QRect text(row.left() + 34, row.top(), row.width() - 34 - markSize - 10, row.height());
        const QString name =
            painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideMiddle, text.width());
        painter->drawText(text, Qt::AlignVCenter | Qt::AlignLeft, name);
        painter->restore();
    }
};

} // namespace

ShelfFileView::ShelfFileView(QWidget* parent) : QListView(parent)
{
    setItemDelegate(new ShelfRowDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    setDefaultDropAction(Qt::CopyAction);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setAttribute(Qt::WA_Hover);
    viewport()->setAutoFillBackground(false);
    setStyleSheet(QStringLiteral("QListView { background: transparent; }"));
    setFocusPolicy(Qt::NoFocus);
    connect(this, &QListView::doubleClicked, this, [this](const QModelIndex& index) {
        Q_EMIT openRequested(index.data(ShelfFileList::urlRole).toUrl());
    });
}

QRect ShelfFileView::removeMark(const QModelIndex& index) const
{
    return markIn(visualRect(index));
}

void ShelfFileView::mouseReleaseEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() &&
        removeMark(index).contains(event->position().toPoint())) {
        Q_EMIT removeRequested(index.data(ShelfFileList::urlRole).toUrl());
        event->accept();
        return;
    }
    QListView::mouseReleaseEvent(event);
}
