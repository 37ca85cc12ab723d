#include "ui/RowList.h"

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
