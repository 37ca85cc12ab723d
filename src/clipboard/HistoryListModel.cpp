#include "clipboard/HistoryListModel.h"

#include "clipboard/ClipboardHistory.h"
#include "clipboard/HistoryTexts.h"
#include "common/Clock.h"
#include "productivity/Productivity.h"

namespace {

// One line of at most previewLength characters: line breaks and tabs become spaces.
QString preview(const QString& text)
{
    QString line = text.left(HistoryListModel::previewLength);
    for (QChar& c : line) {
        if (c.isSpace())
            c = u' ';
    }
    return line;
}

} // namespace

HistoryListModel::HistoryListModel(ClipboardHistory& history, Productivity& productivity, Clock& clock,
                                   QObject* parent)
    : QAbstractListModel(parent), m_history(history), m_productivity(productivity), m_clock(clock)
{
    connect(&history, &ClipboardHistory::clipsChanged, this, &HistoryListModel::invalidate);
    connect(&productivity, &Productivity::pinsChanged, this, &HistoryListModel::invalidate);
}

void HistoryListModel::setFilter(ClipKind filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    invalidate();
    Q_EMIT filterChanged();
}

void HistoryListModel::setSearch(const QString& search)
{
    if (search == m_search)
        return;
    m_search = search;
    invalidate();
    Q_EMIT searchChanged();
}

std::optional<ClipRow> HistoryListModel::rowAt(int row) const
{
    const QList<ClipRow>& all = rows();
    if (row < 0 || row >= all.size())
        return std::nullopt;
    return all.at(row);
}

void HistoryListModel::copyBack(int row)
{
    if (const auto entry = rowAt(row))
        m_history.copyBack(entry->clip);
}

void HistoryListModel::togglePin(int row)
{
    if (const auto entry = rowAt(row))
        m_productivity.togglePin(entry->clip.text);
}

void HistoryListModel::remove(int row)
{
    if (const auto entry = rowAt(row))
        m_history.deleteClip(entry->clip);
}

int HistoryListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(rows().size());
}

QVariant HistoryListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ClipRow& row = rows().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return preview(row.clip.text);
    case Qt::AccessibleTextRole:
        return preview(row.clip.text);
    case TextRole:
        return row.clip.text;
    case IdRole:
        return row.clip.id;
    case DateRole:
        return row.clip.date;
    case PinnedRole:
        return row.pinned;
    case KindRole:
        return ClipKinds::label(ClipKinds::classify(row.clip.text));
    case CaptionRole:
        return HistoryTexts::rowCaption(ClipKinds::label(ClipKinds::classify(row.clip.text)), row.clip.date,
                                        m_clock.now());
    default:
        return {};
    }
}

QHash<int, QByteArray> HistoryListModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractListModel::roleNames();
    names.insert(TextRole, "text");
    names.insert(IdRole, "clipId");
    names.insert(DateRole, "date");
    names.insert(PinnedRole, "pinned");
    names.insert(KindRole, "kind");
    names.insert(CaptionRole, "caption");
    return names;
}

void HistoryListModel::invalidate()
{
    beginResetModel();
    m_rows.clear();
    m_stale = true;
    endResetModel();
}

const QList<ClipRow>& HistoryListModel::rows() const
{
    if (m_stale) {
        m_rows = visibleClipRows(m_history.clips(), m_productivity.pins(), m_search, m_filter, m_clock.now());
        m_stale = false;
    }
    return m_rows;
}
