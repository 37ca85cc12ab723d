#include "clipboard/HistoryListModel.h"

#include "clipboard/ClipSearch.h"
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

qint64 characters(const QList<Clip>& clips)
{
    qint64 total = 0;
    for (const Clip& clip : clips)
        total += clip.text.size();
    return total;
}

} // namespace

HistoryListModel::HistoryListModel(ClipboardHistory& history, Productivity& productivity, Clock& clock,
                                   Scheduler& scheduler, QObject* parent)
    : QAbstractListModel(parent), m_history(history), m_productivity(productivity), m_clock(clock),
      m_searchPause(scheduler, this)
{
    connect(&history, &ClipboardHistory::clipInserted, this, [this] { clipArrivedOnTop(std::nullopt); });
    connect(&history, &ClipboardHistory::clipMoved, this, [this](int from) { clipArrivedOnTop(from); });
    connect(&history, &ClipboardHistory::clipRemoved, this, &HistoryListModel::clipRemoved);
    connect(&history, &ClipboardHistory::clipsReset, this, [this] { rebuild(false); });
    connect(&productivity, &Productivity::pinsChanged, this, [this] { rebuild(false); });
    rebuild(false);
}

void HistoryListModel::setFilter(ClipKind filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    rebuild(false);
    Q_EMIT filterChanged();
}

void HistoryListModel::setSearch(const QString& search)
{
    if (search == m_search)
        return;
    m_search = search;
    rebuild(true);
    Q_EMIT searchChanged();
}

void HistoryListModel::rebuild(bool afterPause)
{
    m_latest->store(++m_generation);
    m_searchPause.cancel();
    if (characters(m_history.clips()) <= m_backgroundThreshold) {
        m_pending = false;
        replaceRows(
            visibleClipRows(m_history.clips(), m_productivity.pins(), m_search, m_filter, m_clock.now()));
        Q_EMIT settled();
        return;
    }
    m_pending = true;
    if (afterPause)
        m_searchPause.schedule(searchPause, [this] { startBackgroundRebuild(); });
    else
        startBackgroundRebuild();
}

void HistoryListModel::startBackgroundRebuild()
{
    if (m_inFlight)
        return;
    m_inFlight = true;
    const quint64 generation = m_generation;
    // The lists go over shared, not copied: a capture meanwhile detaches the history's own list.
    m_worker.run<QList<ClipRow>>(
        this,
        [clips = m_history.clips(), pins = m_productivity.pins(), search = m_search, filter = m_filter,
         now = m_clock.now(), latest = m_latest, generation] {
            if (latest->load() != generation)
                return QList<ClipRow>();
            return visibleClipRows(clips, pins, search, filter, now);
        },
        [this, generation](QList<ClipRow> rows) { backgroundRebuildAnswered(generation, std::move(rows)); });
}

void HistoryListModel::backgroundRebuildAnswered(quint64 generation, QList<ClipRow> rows)
{
    m_inFlight = false;
    if (generation != m_generation) {
        // Overtaken: the newest choice runs now, or when typing pauses.
        if (m_pending && !m_searchPause.isPending())
            startBackgroundRebuild();
        return;
    }
    m_pending = false;
    replaceRows(std::move(rows));
    Q_EMIT settled();
}

void HistoryListModel::replaceRows(QList<ClipRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

bool HistoryListModel::keeps(const Clip& clip, bool pinned) const
{
    return ClipSearch(m_search).matches(clip.text) && ClipKinds::matches(m_filter, clip.text, pinned);
}

int HistoryListModel::pinnedRowCount() const
{
    int count = 0;
    while (count < m_rows.size() && m_rows.at(count).pinned)
        ++count;
    return count;
}

int HistoryListModel::rowOf(const QUuid& id) const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).clip.id == id)
            return row;
    }
    return -1;
}

void HistoryListModel::clipArrivedOnTop(std::optional<int> movedFrom)
{
    // Rows in the making do not have it: start them over instead.
    if (m_pending) {
        rebuild(false);
        return;
    }
    const Clip& clip = m_history.clips().first();
    if (m_productivity.pins().contains(clip.text)) {
        // A favourite keeps its place; only its date (or its placeholder) changes.
        for (int row = 0; row < pinnedRowCount(); ++row) {
            if (m_rows.at(row).clip.text == clip.text) {
                m_rows[row].clip = clip;
                Q_EMIT dataChanged(index(row), index(row));
            }
        }
        return;
    }
    const int top = pinnedRowCount();
    const int current = movedFrom ? rowOf(clip.id) : -1;
    if (current >= 0) {
        if (current != top) {
            beginMoveRows(QModelIndex(), current, current, QModelIndex(), top);
            m_rows.move(current, top);
            endMoveRows();
        }
        m_rows[top].clip = clip;
        Q_EMIT dataChanged(index(top), index(top));
        return;
    }
    if (!keeps(clip, false))
        return;
    beginInsertRows(QModelIndex(), top, top);
    m_rows.insert(top, ClipRow{clip, false});
    endInsertRows();
}

void HistoryListModel::clipRemoved(const QUuid& id)
{
    if (m_pending) {
        rebuild(false);
        return;
    }
    const int row = rowOf(id);
    if (row < 0)
        return;
    beginRemoveRows(QModelIndex(), row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

std::optional<ClipRow> HistoryListModel::rowAt(int row) const
{
    if (row < 0 || row >= m_rows.size())
        return std::nullopt;
    return m_rows.at(row);
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
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant HistoryListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ClipRow& row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
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
