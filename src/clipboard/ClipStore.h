#pragma once

#include "clipboard/Clip.h"
#include "clipboard/ClipKind.h"
#include "clipboard/ClipTextArena.h"

#include <QList>
#include <QMultiHash>

#include <optional>

// The clipboard history in memory, newest first. Every entry sits in a slot that keeps its number
// for as long as the entry lives, so views can hold slots instead of copies; the texts live packed
// in a ClipTextArena, and each entry remembers its kind (a text never changes, so neither does
// its kind). A hundred thousand clips take a fraction of the memory their QStrings would.
class ClipStore
{
public:
    struct Entry
    {
        QUuid id;
        qint64 date = 0;  // milliseconds since the epoch, UTC
        quint64 hash = 0; // of the text, for finding it again
        TextLocation text;
        ClipKind kind = ClipKind::text;
        bool alive = false;
    };

    // The entries and texts as they are now, for a worker thread; later changes do not reach it.
    struct Snapshot
    {
        QList<Entry> entries;
        QList<quint32> order;
        ClipTextArena::Snapshot texts;
    };

    qsizetype size() const { return m_order.size(); }
    bool isEmpty() const { return m_order.isEmpty(); }
    // Position (0 = newest) to slot.
    quint32 slotAt(qsizetype index) const { return m_order.at(index); }
    const Entry& entry(quint32 slot) const { return m_entries.at(slot); }
    QString textOf(quint32 slot) const { return m_texts.text(m_entries.at(slot).text); }
    Clip clipOf(quint32 slot) const;
    Clip at(qsizetype index) const { return clipOf(slotAt(index)); }
    // The entry with exactly this text.
    std::optional<quint32> slotOf(QStringView text) const;
    std::optional<qsizetype> indexOf(quint32 slot) const;
    QList<Clip> toList() const;

    // Loading: the stored clips arrive newest first and go to the end.
    quint32 append(const Clip& clip);
    // A text copied for the first time: the new top entry.
    quint32 prepend(const Clip& clip);
    // A text copied again: its entry goes to the top with the new date.
    void moveToTop(qsizetype index, const QDateTime& date);
    // Answers the slot that was freed.
    quint32 removeAt(qsizetype index);
    void clear();

    Snapshot snapshot() const;
    // The texts' memory, packed and as they would be unpacked.
    qsizetype packedTextBytes() const { return m_texts.packedBytes(); }
    qsizetype unpackedTextBytes() const { return m_texts.unpackedBytes(); }

    static quint64 hashOf(QStringView text);

private:
    quint32 allocate(const Clip& clip);
    void repack(quint32 block);

    QList<Entry> m_entries; // by slot
    QList<quint32> m_free;
    QList<quint32> m_order; // slots, newest first
    QMultiHash<quint64, quint32> m_byHash;
    ClipTextArena m_texts;
};
