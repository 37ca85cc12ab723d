#include "productivity/SearchOrder.h"

QCollator SearchOrder::collator()
{
    QCollator order;
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    return order;
}
