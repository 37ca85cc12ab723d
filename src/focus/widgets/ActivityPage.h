#pragma once

#include <QWidget>

class ActivityLog;
class NoticeListModel;
class QListView;

// The "Aktivität" page: what the list shows, then the notices, newest first.
class ActivityPage : public QWidget
{
    Q_OBJECT
public:
    explicit ActivityPage(const ActivityLog& activity, QWidget* parent = nullptr);

    QListView* list() const { return m_list; }
    NoticeListModel* notices() const { return m_notices; }

private:
    NoticeListModel* m_notices;
    QListView* m_list;
};
