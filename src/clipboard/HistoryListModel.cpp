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
    if (m_history.store().unpackedTextBytes() <= m_backgroundThreshold) {
        m_pending = false;
        replaceRows(
            visibleRows(m_history.store().snapshot(), pinnedTexts(), m_search, m_filter, m_clock.now()));
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
    // The store hands over shared blocks, not copies; a capture meanwhile detaches its own.
    m_worker.run<VisibleRows>(
        this,
        [store = m_history.store().snapshot(), pins = pinnedTexts(), search = m_search, filter = m_filter,
         now = m_clock.now(), latest = m_latest, generation] {
            if (latest->load() != generation)
                return VisibleRows();
            return visibleRows(store, pins, search, filter, now);
        },
        [this, generation](VisibleRows rows) { backgroundRebuildAnswered(generation, std::move(rows)); });
}

void HistoryListModel::backgroundRebuildAnswered(quint64 generation, VisibleRows rows)
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

void HistoryListModel::replaceRows(VisibleRows rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

QList<PinnedText> HistoryListModel::pinnedTexts() const
{
    QList<PinnedText> pins;
    for (const QString& pin : m_productivity.pins())
        pins.append(PinnedText{pin, m_history.store().slotOf(pin)});
    return pins;
}

int HistoryListModel::rowOf(qint32 slot) const
{
    return int(m_rows.rows.indexOf(slot));
}

QString HistoryListModel::textOf(qint32 slot) const
{
    if (slot >= 0)
        return m_history.store().textOf(quint32(slot));
    return m_rows.placeholders.at(-1 - slot).text;
}

void HistoryListModel::clipArrivedOnTop(std::optional<int> movedFrom)
{
    // Rows in the making do not have it: start them over instead.
    if (m_pending) {
        rebuild(false);
        return;
    }
    const ClipStore& store = m_history.store();
    const quint32 slot = store.slotAt(0);
    const QString text = store.textOf(slot);
    if (m_productivity.pins().contains(text)) {
        // A favourite keeps its place; only its date changes, or its placeholder becomes the entry.
        for (int row = 0; row < m_rows.pinnedCount; ++row) {
            if (textOf(m_rows.rows.at(row)) == text) {
                m_rows.rows[row] = qint32(slot);
                Q_EMIT dataChanged(index(row), index(row));
            }
        }
        return;
    }
    const int top = int(m_rows.pinnedCount);
    const int current = movedFrom ? rowOf(qint32(slot)) : -1;
    if (current >= 0) {
        if (current != top) {
            beginMoveRows(QModelIndex(), current, current, QModelIndex(), top);
            m_rows.rows.move(current, top);
            endMoveRows();
        }
        Q_EMIT dataChanged(index(top), index(top));
        return;
    }
    if (!ClipKinds::matchesKind(m_filter, store.entry(slot).kind, false) ||
        !ClipSearch(m_search).matches(text))
        return;
    beginInsertRows(QModelIndex(), top, top);
    m_rows.rows.insert(top, qint32(slot));
    endInsertRows();
}

void HistoryListModel::clipRemoved(quint32 slot)
{
    if (m_pending) {
        rebuild(false);
        return;
    }
    const int row = rowOf(qint32(slot));
    if (row < 0)
        return;
    beginRemoveRows(QModelIndex(), row, row);
    m_rows.rows.removeAt(row);
    if (row < m_rows.pinnedCount)
        --m_rows.pinnedCount;
    endRemoveRows();
}

std::optional<Clip> HistoryListModel::clipAt(int row) const
{
    if (row < 0 || row >= m_rows.rows.size())
        return std::nullopt;
    const qint32 slot = m_rows.rows.at(row);
    if (slot >= 0)
        return m_history.store().clipOf(quint32(slot));
    return m_rows.placeholders.at(-1 - slot);
}

void HistoryListModel::copyBack(int row)
{
    if (const auto clip = clipAt(row))
        m_history.copyBack(*clip);
}

void HistoryListModel::togglePin(int row)
{
    if (const auto clip = clipAt(row))
        m_productivity.togglePin(clip->text);
}

void HistoryListModel::remove(int row)
{
    if (const auto clip = clipAt(row))
        m_history.deleteClip(*clip);
}

int HistoryListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.rows.size());
}

QVariant HistoryListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const int row = index.row();
    const qint32 slot = m_rows.rows.at(row);
    const ClipStore& store = m_history.store();
    const auto kind = [&] {
        return slot >= 0 ? store.entry(quint32(slot)).kind : ClipKinds::classify(textOf(slot));
    };
    const auto date = [&] {
        return slot >= 0 ? QDateTime::fromMSecsSinceEpoch(store.entry(quint32(slot)).date, Qt::UTC)
                         : m_rows.placeholders.at(-1 - slot).date;
    };
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return preview(textOf(slot));
    case TextRole:
        return textOf(slot);
    case IdRole:
        return slot >= 0 ? store.entry(quint32(slot)).id : m_rows.placeholders.at(-1 - slot).id;
    case DateRole:
        return date();
    case PinnedRole:
        return isPinnedRow(row);
    case KindRole:
        return ClipKinds::label(kind());
    case CaptionRole:
        return HistoryTexts::rowCaption(ClipKinds::label(kind()), date(), m_clock.now());
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
