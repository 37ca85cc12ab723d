#include "ui/LayoutRefresh.h"

#include <QLayout>
#include <QWidget>

void LayoutRefresh::refresh(QWidget* root)
{
    root->ensurePolished();
    for (QWidget* widget : root->findChildren<QWidget*>())
        widget->updateGeometry();
    for (QLayout* layout : root->findChildren<QLayout*>())
        layout->invalidate();
    root->updateGeometry();
}
