#include "focus/widgets/NoticeDelegate.h"

#include "focus/NoticeListModel.h"
#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

#include <QPainter>

namespace {
constexpr int rowHeight = 48;
constexpr int symbolBox = 30;
} // namespace

void NoticeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect row = option.rect.adjusted(0, 2, -2, -2);
    painter->setPen(Qt::NoPen);
    painter->setBrush(PanelTheme::card());
    painter->drawRoundedRect(QRectF(row), 10, 10);

    const QRect symbolRect(row.left() + 9, row.center().y() - symbolBox / 2, symbolBox, symbolBox);
    painter->setBrush(PanelTheme::raised());
    painter->drawEllipse(QRectF(symbolRect));
    const auto glyphFont = Symbol::font(17);
    painter->setFont(glyphFont ? *glyphFont : PanelTheme::font(8));
    painter->setPen(PanelTheme::accent());
    painter->drawText(symbolRect, Qt::AlignCenter,
                      Symbol::text(QStringLiteral("bell.badge"), glyphFont.has_value()));

    const QString time = index.data(NoticeListModel::TimeTextRole).toString();
    const QFont timeFont = PanelTheme::digits(11, QFont::Normal);
    const int timeWidth = QFontMetrics(timeFont).horizontalAdvance(time);
    const QRect timeRect(row.right() - 12 - timeWidth, row.top(), timeWidth, row.height());
    painter->setFont(timeFont);
    painter->setPen(PanelTheme::secondary());
    painter->drawText(timeRect, Qt::AlignVCenter | Qt::AlignRight, time);

    const int textLeft = symbolRect.right() + 10;
    const int textWidth = timeRect.left() - 10 - textLeft;
    const QString detail = index.data(NoticeListModel::DetailRole).toString();
    const QFont titleFont = PanelTheme::font(13, QFont::DemiBold);
    const QFont detailFont = PanelTheme::font(11);
    const QString title = QFontMetrics(titleFont).elidedText(
        index.data(NoticeListModel::TitleRole).toString(), Qt::ElideRight, textWidth);
    painter->setPen(PanelTheme::text());
    painter->setFont(titleFont);
    if (detail.isEmpty()) {
        painter->drawText(QRect(textLeft, row.top(), textWidth, row.height()),
                          Qt::AlignVCenter | Qt::AlignLeft, title);
    } else {
        const int middle = row.center().y();
        painter->drawText(QRect(textLeft, middle - 18, textWidth, 18), Qt::AlignBottom | Qt::AlignLeft,
                          title);
        painter->setFont(detailFont);
        painter->setPen(PanelTheme::secondary());
        painter->drawText(QRect(textLeft, middle + 1, textWidth, 16), Qt::AlignTop | Qt::AlignLeft,
                          QFontMetrics(detailFont).elidedText(detail, Qt::ElideRight, textWidth));
    }
    painter->restore();
}

QSize NoticeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {option.rect.width(), rowHeight};
}
