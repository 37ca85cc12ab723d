#include "ui/RowList.h"

#include <QScrollArea>
#include <QVBoxLayout>

void RowList::clear(QLayout* rows)
{
    while (QLayoutItem* item = rows->takeAt(0)) {
        if (QWidget* widget = item->widget()) {
            widget->hide();
            widget->deleteLater();
        }
        delete item;
    }
}

QWidget* RowList::scrolling(QVBoxLayout* rows, int spacing, QWidget* empty)
{
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* content = new QWidget;
    auto* list = new QVBoxLayout(content);
    list->setContentsMargins(0, 0, 0, 0);
    list->setSpacing(spacing);
    if (empty)
        list->addWidget(empty, 0, Qt::AlignHCenter);
    rows->setSpacing(spacing);
    list->addLayout(rows);
    list->addStretch(1);
    scroll->setWidget(content);
    return scroll;
}
