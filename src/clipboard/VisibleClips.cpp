#include "clipboard/VisibleClips.h"

#include "clipboard/ClipSearch.h"

#include <QThread>
#include <QtConcurrent/QtConcurrentRun>

#include <numeric>
#include <vector>

namespace {

// Below this many bytes to search one thread is quicker than starting a second.
constexpr qint64 parallelBytes = 4'000'000;

bool textMatches(const ClipSearch& matcher, QByteArrayView bytes, bool latin1)
{
    if (latin1)
        return matcher.matches(QLatin1StringView(bytes.data(), bytes.size()));
    return matcher.matches(QStringView(reinterpret_cast<const char16_t*>(bytes.data()), bytes.size() / 2));
}

// Searches the candidates block by block, each block unpacked once; marks the matches.
class BlockSearch
{
public:
    BlockSearch(const ClipStore::Snapshot& store, const std::vector<quint32>& candidates)
        : m_store(store), m_starts(store.texts.blockCount() + 1, 0), m_slots(candidates.size())
    {
        // Candidates grouped by block, keeping their order within a block.
        for (quint32 slot : candidates)
            ++m_starts[store.entries.at(slot).text.block + 1];
        std::partial_sum(m_starts.begin(), m_starts.end(), m_starts.begin());
        std::vector<quint32> next(m_starts.begin(), m_starts.end() - 1);
        for (quint32 slot : candidates)
            m_slots[next[store.entries.at(slot).text.block]++] = slot;
    }

    void run(const ClipSearch& matcher, std::vector<char>& found) const
    {
        const quint32 blocks = m_store.texts.blockCount();
        qint64 total = 0;
        for (quint32 slot : m_slots)
            total += m_store.entries.at(slot).text.bytes;
        if (total < parallelBytes || QThread::idealThreadCount() < 2) {
            search(0, blocks, matcher, found);
            return;
        }
        // The blocks that hold half the bytes go to a second thread; every thread writes only the
        // flags of its own slots.
        quint32 middle = 0;
        for (qint64 sum = 0; middle < blocks && 2 * sum < total; ++middle) {
            for (quint32 i = m_starts[middle]; i < m_starts[middle + 1]; ++i)
                sum += m_store.entries.at(m_slots[i]).text.bytes;
        }
        QFuture<void> second =
            QtConcurrent::run([&, middle, blocks] { search(middle, blocks, matcher, found); });
        search(0, middle, matcher, found);
        second.waitForFinished();
    }

private:
    void search(quint32 first, quint32 end, const ClipSearch& matcher, std::vector<char>& found) const
    {
        QByteArray buffer;
        for (quint32 block = first; block < end; ++block) {
            if (m_starts[block] == m_starts[block + 1])
                continue;
            const QByteArrayView bytes = m_store.texts.unpack(block, buffer);
            for (quint32 i = m_starts[block]; i < m_starts[block + 1]; ++i) {
                const ClipStore::Entry& entry = m_store.entries.at(m_slots[i]);
                found[m_slots[i]] =
                    textMatches(matcher, ClipTextArena::bytesOf(bytes, entry.text), entry.text.latin1);
            }
        }
    }

    const ClipStore::Snapshot& m_store;
    std::vector<quint32> m_starts;
    std::vector<quint32> m_slots;
};

} // namespace

VisibleRows visibleRows(const ClipStore::Snapshot& store, const QList<PinnedText>& pins,
                        const QString& search, ClipKind filter, const QDateTime& now)
{
    const ClipSearch matcher(search);
    VisibleRows visible;
    std::vector<char> pinned(size_t(store.entries.size()), 0);
    for (const PinnedText& pin : pins) {
        if (pin.slot)
            pinned[*pin.slot] = 1;
        const bool kindOk =
            filter == ClipKind::all || filter == ClipKind::pinned ||
            (pin.slot ? store.entries.at(*pin.slot).kind : ClipKinds::classify(pin.text)) == filter;
        if (!kindOk || !matcher.matches(pin.text))
            continue;
        if (pin.slot) {
            visible.rows.append(qint32(*pin.slot));
        } else {
            visible.placeholders.append(Clip{QUuid::createUuid(), pin.text, now});
            visible.rows.append(qint32(-visible.placeholders.size()));
        }
    }
    visible.pinnedCount = visible.rows.size();
    // A favourites-only filter never keeps an unpinned row.
    if (filter == ClipKind::pinned)
        return visible;

    std::vector<quint32> candidates;
    candidates.reserve(size_t(store.order.size()));
    for (quint32 slot : store.order) {
        if (!pinned[slot] && ClipKinds::matchesKind(filter, store.entries.at(slot).kind, false))
            candidates.push_back(slot);
    }
    if (!matcher.isEmpty()) {
        std::vector<char> found(size_t(store.entries.size()), 0);
        BlockSearch(store, candidates).run(matcher, found);
        std::erase_if(candidates, [&](quint32 slot) { return !found[slot]; });
    }
    visible.rows.reserve(visible.rows.size() + qsizetype(candidates.size()));
    for (quint32 slot : candidates)
        visible.rows.append(qint32(slot));
    return visible;
}

QList<Clip> visibleClips(const QList<Clip>& clips, const QStringList& pins, const QString& search,
                         ClipKind filter, const QDateTime& now)
{
    const ClipSearch matcher(search);
    const auto keep = [&](const QString& text, bool isPinned) {
        return matcher.matches(text) && ClipKinds::matches(filter, text, isPinned);
    };
    QList<Clip> rows;
    for (const QString& pin : pins) {
        if (!keep(pin, true))
            continue;
        const auto found =
            std::find_if(clips.cbegin(), clips.cend(), [&](const Clip& c) { return c.text == pin; });
        rows.append(found != clips.cend() ? *found : Clip{QUuid::createUuid(), pin, now});
    }
    for (const Clip& clip : clips) {
        if (!pins.contains(clip.text) && keep(clip.text, false))
            rows.append(clip);
    }
    return rows;
}
