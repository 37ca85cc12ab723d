#include "clipboard/ClipStore.h"

#include <QHashFunctions>

#include <algorithm>

quint64 ClipStore::hashOf(QStringView text)
{
    // A fixed seed: the value only has to agree with itself within this process.
    return quint64(qHash(text, size_t(0)));
}

Clip ClipStore::clipOf(quint32 slot) const
{
    const Entry& e = m_entries.at(slot);
    return Clip{e.id, m_texts.text(e.text), QDateTime::fromMSecsSinceEpoch(e.date, Qt::UTC)};
}

std::optional<quint32> ClipStore::slotOf(QStringView text) const
{
    const quint64 hash = hashOf(text);
    for (auto it = m_byHash.constFind(hash); it != m_byHash.cend() && it.key() == hash; ++it) {
        const Entry& e = m_entries.at(*it);
        if (e.text.bytes == quint32(e.text.latin1 ? text.size() : text.size() * 2) && textOf(*it) == text)
            return *it;
    }
    return std::nullopt;
}

std::optional<qsizetype> ClipStore::indexOf(quint32 slot) const
{
    const qsizetype index = m_order.indexOf(slot);
    if (index < 0)
        return std::nullopt;
    return index;
}

QList<Clip> ClipStore::toList() const
{
    QList<Clip> clips;
    clips.reserve(m_order.size());
    for (quint32 slot : m_order)
        clips.append(clipOf(slot));
    return clips;
}

quint32 ClipStore::allocate(const Clip& clip)
{
    Entry entry;
    entry.id = clip.id;
    entry.date = clip.date.toMSecsSinceEpoch();
    entry.hash = hashOf(clip.text);
    entry.text = m_texts.add(clip.text);
    entry.kind = ClipKinds::classify(clip.text);
    entry.alive = true;
    quint32 slot;
    if (!m_free.isEmpty()) {
        slot = m_free.takeLast();
        m_entries[slot] = entry;
    } else {
        slot = quint32(m_entries.size());
        m_entries.append(entry);
    }
    m_byHash.insert(entry.hash, slot);
    return slot;
}

quint32 ClipStore::append(const Clip& clip)
{
    const quint32 slot = allocate(clip);
    m_order.append(slot);
    return slot;
}

quint32 ClipStore::prepend(const Clip& clip)
{
    const quint32 slot = allocate(clip);
    m_order.prepend(slot);
    return slot;
}

void ClipStore::moveToTop(qsizetype index, const QDateTime& date)
{
    const quint32 slot = m_order.at(index);
    m_order.move(index, 0);
    m_entries[slot].date = date.toMSecsSinceEpoch();
}

quint32 ClipStore::removeAt(qsizetype index)
{
    const quint32 slot = m_order.takeAt(index);
    Entry& entry = m_entries[slot];
    m_byHash.remove(entry.hash, slot);
    entry.alive = false;
    entry.id = QUuid();
    m_free.append(slot);
    if (m_texts.release(entry.text))
        repack(entry.text.block);
    return slot;
}

void ClipStore::repack(quint32 block)
{
    // Rare (a block mostly deleted), so a pass over every slot is fine.
    QList<quint32> slots;
    QList<TextLocation> keep;
    for (quint32 slot = 0; slot < quint32(m_entries.size()); ++slot) {
        const Entry& e = m_entries.at(slot);
        if (e.alive && e.text.block == block) {
            slots.append(slot);
            keep.append(e.text);
        }
    }
    const QList<TextLocation> moved = m_texts.repack(block, keep);
    for (qsizetype i = 0; i < slots.size(); ++i)
        m_entries[slots.at(i)].text = moved.at(i);
}

void ClipStore::clear()
{
    m_entries.clear();
    m_free.clear();
    m_order.clear();
    m_byHash.clear();
    m_texts.clear();
}

ClipStore::Snapshot ClipStore::snapshot() const
{
    return Snapshot{m_entries, m_order, m_texts.snapshot()};
}
