#include "focus/widgets/ActivityPage.h"

#include "focus/NoticeListModel.h"
#include "focus/widgets/NoticeDelegate.h"
#include "ui/TextLabel.h"

#include <QListView>
#include <QVBoxLayout>

ActivityPage::ActivityPage(const ActivityLog& activity, QWidget* parent)
    : QWidget(parent), m_notices(new NoticeListModel(activity, this)), m_list(new QListView)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget((new TextLabel(NoticeListModel::introduction(), 11, TextLabel::secondary))->wrapping());
    m_list->setModel(m_notices);
    m_list->setItemDelegate(new NoticeDelegate(m_list));
    // Rows share one height, so the view lays out only what is on screen.
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->viewport()->setAutoFillBackground(false);
    column->addWidget(m_list, 1);
}
