#include "clipboard/VisibleClips.h"

#include "clipboard/ClipSearch.h"

#include <QHash>
#include <QSet>

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
    std::vector<bool> isPinned(size_t(clips.size()), false);
    if (!pins.isEmpty()) {
        for (qsizetype i = 0; i < clips.size(); ++i) {
            const qsizetype pin = pinIndex.find(clips.at(i).text);
            if (pin < 0)
                continue;
            isPinned[size_t(i)] = true;
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
    for (qsizetype i = 0; i < clips.size(); ++i) {
        const Clip& clip = clips.at(i);
        if (!isPinned[size_t(i)] && keep(clip.text, false))
            rows.append(ClipRow{clip, false});
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
