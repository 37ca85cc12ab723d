#pragma once

#include "focus/Notice.h"

#include <QAbstractListModel>
#include <QList>

class ActivityLog;

// The activity list as rows for a view, newest first, following the activity log.
class NoticeListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role {
        TitleRole = Qt::UserRole + 1,
        DetailRole,
        DateRole,
        TimeTextRole,
    };

    explicit NoticeListModel(const ActivityLog& activity, QObject* parent = nullptr);

    // The page's first line: which events it shows and which it cannot.
    static QString introduction();
    // The notice's time of day in the locale's short style.
    static QString timeText(const QDateTime& date);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const ActivityLog& m_activity;
    // The rows announced to views: one behind the log while an insertion is under way.
    qsizetype m_count = 0;
};
