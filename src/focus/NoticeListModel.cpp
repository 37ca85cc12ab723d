#include "focus/NoticeListModel.h"

#include "focus/ActivityLog.h"

#include <QLocale>

NoticeListModel::NoticeListModel(const ActivityLog& activity, QObject* parent)
    : QAbstractListModel(parent), m_activity(activity), m_count(activity.notices().size())
{
    // Notices arrive one at a time at the top; each is inserted rather than rebuilding the view.
    connect(&activity, &ActivityLog::noticeAboutToBeAdded, this,
            [this] { beginInsertRows(QModelIndex(), 0, 0); });
    connect(&activity, &ActivityLog::noticeAdded, this, [this] {
        ++m_count;
        endInsertRows();
    });
}

QString NoticeListModel::introduction()
{
    return QStringLiteral(
        "macOS gibt Benachrichtigungen anderer Apps nicht über eine öffentliche Schnittstelle "
        "frei. Hier siehst du Ereignisse dieser App.");
}

QString NoticeListModel::timeText(const QDateTime& date)
{
    return QLocale().toString(date.toLocalTime().time(), QLocale::ShortFormat);
}

int NoticeListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_count);
}

QVariant NoticeListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Notice& notice = m_activity.notices().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return notice.title;
    case DetailRole:
        return notice.detail;
    case DateRole:
        return notice.date;
    case TimeTextRole:
        return timeText(notice.date);
    default:
        return {};
    }
}

QHash<int, QByteArray> NoticeListModel::roleNames() const
{
    return {{TitleRole, "title"}, {DetailRole, "detail"}, {DateRole, "date"}, {TimeTextRole, "timeText"}};
}
