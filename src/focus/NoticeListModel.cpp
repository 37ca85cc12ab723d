#include "focus/NoticeListModel.h"

#include "model/Model.h"

#include <QLocale>

NoticeListModel::NoticeListModel(Model& model, QObject* parent)
    : QAbstractListModel(parent), m_model(model), m_rows(model.notices())
{
    connect(&model, &Model::noticesChanged, this, &NoticeListModel::follow);
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
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant NoticeListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Notice& notice = m_rows.at(index.row());
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

void NoticeListModel::follow()
{
    const QList<Notice>& next = m_model.notices();
    // Notices arrive one at a time at the top; insert those rather than rebuilding the view.
    const qsizetype added = next.size() - m_rows.size();
    if (added > 0 && std::equal(m_rows.cbegin(), m_rows.cend(), next.cbegin() + added)) {
        beginInsertRows(QModelIndex(), 0, int(added) - 1);
        m_rows = next;
        endInsertRows();
        return;
    }
    beginResetModel();
    m_rows = next;
    endResetModel();
}
