#include "clipboard/VisibleClips.h"

#include "clipboard/ClipSearch.h"

#include <QHash>
#include <QSet>
#include <QThread>
#include <QtConcurrent/QtConcurrentRun>

#include <vector>

namespace {

// Finds pinned texts among many clips without hashing every clip's text: only a clip whose
// length some pin has is looked up.
class PinIndex
{
public:
    explicit PinIndex(const QStringList& pins)
    {
        for (qsizetype i = 0; i < pins.size(); ++i) {
            m_positions.insert(pins.at(i), i);
            m_lengths.insert(pins.at(i).size());
        }
    }
    // The pin's position, or -1.
    qsizetype find(const QString& text) const
    {
        if (!m_lengths.contains(text.size()))
            return -1;
        return m_positions.value(text, -1);
    }

private:
    QHash<QString, qsizetype> m_positions;
    QSet<qsizetype> m_lengths;
};

// Asks the memory for a text's first and last characters ahead of use: the clips' texts lie
// scattered over the heap, and waiting for each in turn costs more than scanning them.
void prefetch(const QString& text)
{
#if defined(__GNUC__)
    __builtin_prefetch(text.constData());
    __builtin_prefetch(text.constData() + text.size());
#else
    Q_UNUSED(text)
#endif
}

constexpr qsizetype prefetchDistance = 8;

// Below this many characters one thread is quicker than starting a second.
constexpr qint64 parallelCharacters = 2'000'000;

// Where a second thread takes over: the index that halves the characters to read, or 0 when
// one thread should do all (a short history, one core, or nothing to read).
qsizetype parallelSplit(const QList<Clip>& clips, bool nothingToRead)
{
    if (nothingToRead || QThread::idealThreadCount() < 2)
        return 0;
    qint64 total = 0;
    for (const Clip& clip : clips)
        total += clip.text.size();
    if (total < parallelCharacters)
        return 0;
    qint64 sum = 0;
    for (qsizetype i = 0; i < clips.size(); ++i) {
        sum += clips.at(i).text.size();
        if (2 * sum >= total)
            return i + 1;
    }
    return 0;
}

} // namespace

QList<ClipRow> visibleClipRows(const QList<Clip>& clips, const QStringList& pins, const QString& search,
                               ClipKind filter, const QDateTime& now)
{
    const ClipSearch matcher(search);
    // The search runs before the kind, being the cheaper test on most texts.
    const auto keep = [&](const QString& text, bool pinned) {
        return matcher.matches(text) && ClipKinds::matches(filter, text, pinned);
    };

    const PinIndex pinIndex(pins);
    std::vector<const Clip*> pinnedClips(size_t(pins.size()), nullptr);
    std::vector<char> isPinned(size_t(clips.size()), 0);
    if (!pins.isEmpty()) {
        for (qsizetype i = 0; i < clips.size(); ++i) {
            const qsizetype pin = pinIndex.find(clips.at(i).text);
            if (pin < 0)
                continue;
            isPinned[size_t(i)] = 1;
            if (!pinnedClips[size_t(pin)])
                pinnedClips[size_t(pin)] = &clips.at(i);
        }
    }

    QList<ClipRow> rows;
    for (qsizetype i = 0; i < pins.size(); ++i) {
        if (!keep(pins.at(i), true))
            continue;
        const Clip* clip = pinnedClips[size_t(i)];
        rows.append(ClipRow{clip ? *clip : Clip{QUuid::createUuid(), pins.at(i), now}, true});
    }
    // A favourites-only filter never keeps an unpinned row.
    if (filter == ClipKind::pinned)
        return rows;

    std::vector<char> kept(size_t(clips.size()), 0);
    const auto decide = [&](qsizetype begin, qsizetype end) {
        for (qsizetype i = begin; i < end; ++i) {
            if (i + prefetchDistance < end)
                prefetch(clips.at(i + prefetchDistance).text);
            kept[size_t(i)] = !isPinned[size_t(i)] && keep(clips.at(i).text, false);
        }
    };
    const qsizetype middle = parallelSplit(clips, matcher.isEmpty() && filter == ClipKind::all);
    if (middle > 0) {
        // The texts are read, not changed, and every thread writes only its own flags.
        QFuture<void> second = QtConcurrent::run(decide, middle, clips.size());
        decide(0, middle);
        second.waitForFinished();
    } else {
        decide(0, clips.size());
    }

    rows.reserve(rows.size() + clips.size());
    for (qsizetype i = 0; i < clips.size(); ++i) {
        if (kept[size_t(i)])
            rows.append(ClipRow{clips.at(i), false});
    }
    return rows;
}

QList<Clip> visibleClips(const QList<Clip>& clips, const QStringList& pins, const QString& search,
                         ClipKind filter, const QDateTime& now)
{
    QList<Clip> result;
    const QList<ClipRow> rows = visibleClipRows(clips, pins, search, filter, now);
    result.reserve(rows.size());
    for (const ClipRow& row : rows)
        result.append(row.clip);
    return result;
}
