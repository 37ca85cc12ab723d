#include "clipboard/ClipTextArena.h"

#include <lz4.h>

#include <algorithm>

namespace {

bool fitsLatin1(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
}

QByteArray compress(QByteArrayView bytes)
{
    QByteArray packed(LZ4_compressBound(int(bytes.size())), Qt::Uninitialized);
    const int size = LZ4_compress_default(bytes.data(), packed.data(), int(bytes.size()), int(packed.size()));
    packed.truncate(std::max(0, size));
    packed.squeeze();
    return packed;
}

void decompress(const QByteArray& packed, quint32 bytes, QByteArray& into)
{
    into.resize(bytes);
    if (bytes > 0)
        LZ4_decompress_safe(packed.constData(), into.data(), int(packed.size()), int(bytes));
}

// UTF-16 texts start on an even offset so they can be read in place.
void alignFor(QByteArray& open, bool latin1)
{
    if (!latin1 && open.size() % 2 != 0)
        open.append('\0');
}

} // namespace

TextLocation ClipTextArena::add(QStringView text)
{
    const bool latin1 = fitsLatin1(text);
    const quint32 bytes = quint32(latin1 ? text.size() : text.size() * 2);
    if (m_blocks.isEmpty())
        m_blocks.append(Block{});
    else if (!m_open.isEmpty() && quint32(m_open.size()) + bytes > blockTarget)
        seal();
    alignFor(m_open, latin1);
    TextLocation at{quint32(m_blocks.size() - 1), quint32(m_open.size()), bytes, latin1};
    if (latin1) {
        const qsizetype start = m_open.size();
        m_open.resize(start + text.size());
        char* out = m_open.data() + start;
        for (QChar c : text)
            *out++ = char(c.unicode());
    } else {
        m_open.append(reinterpret_cast<const char*>(text.utf16()), qsizetype(bytes));
    }
    Block& open = m_blocks.last();
    open.bytes = quint32(m_open.size());
    open.live += bytes;
    return at;
}

void ClipTextArena::seal()
{
    Block& block = m_blocks.last();
    block.packed = compress(m_open);
    block.bytes = quint32(m_open.size());
    m_open.clear();
    m_blocks.append(Block{});
}

QString ClipTextArena::text(const TextLocation& at) const
{
    return decode(unpacked(at.block), at);
}

QByteArrayView ClipTextArena::bytesOf(QByteArrayView block, const TextLocation& at)
{
    return block.sliced(at.offset, at.bytes);
}

QString ClipTextArena::decode(QByteArrayView block, const TextLocation& at)
{
    const QByteArrayView bytes = bytesOf(block, at);
    if (at.latin1)
        return QString::fromLatin1(bytes);
    return QString(reinterpret_cast<const QChar*>(bytes.data()), bytes.size() / 2);
}

QByteArrayView ClipTextArena::unpacked(quint32 block) const
{
    if (block + 1 == quint32(m_blocks.size()))
        return m_open;
    ++m_reads;
    Cached* slot = &m_cache.front();
    for (Cached& cached : m_cache) {
        if (cached.block == block) {
            cached.used = m_reads;
            return cached.bytes;
        }
        if (cached.used < slot->used)
            slot = &cached;
    }
    decompress(m_blocks.at(block).packed, m_blocks.at(block).bytes, slot->bytes);
    slot->block = block;
    slot->used = m_reads;
    return slot->bytes;
}

bool ClipTextArena::release(const TextLocation& at)
{
    Block& block = m_blocks[at.block];
    block.live -= std::min(block.live, at.bytes);
    const bool sealed = at.block + 1 < quint32(m_blocks.size());
    return sealed && block.live * 2 < block.bytes;
}

QList<TextLocation> ClipTextArena::repack(quint32 index, const QList<TextLocation>& keep)
{
    const QByteArray old = unpacked(index).toByteArray();
    QByteArray fresh;
    QList<TextLocation> moved;
    moved.reserve(keep.size());
    for (const TextLocation& at : keep) {
        alignFor(fresh, at.latin1);
        moved.append(TextLocation{index, quint32(fresh.size()), at.bytes, at.latin1});
        fresh.append(bytesOf(old, at));
    }
    Block& block = m_blocks[index];
    block.packed = compress(fresh);
    block.bytes = quint32(fresh.size());
    block.live = 0;
    for (const TextLocation& at : keep)
        block.live += at.bytes;
    for (Cached& cached : m_cache) {
        if (cached.block == index)
            cached = Cached{};
    }
    return moved;
}

void ClipTextArena::clear()
{
    m_blocks.clear();
    m_open.clear();
    m_cache.fill(Cached{});
}

ClipTextArena::Snapshot ClipTextArena::snapshot() const
{
    Snapshot snapshot;
    snapshot.m_blocks = m_blocks;
    snapshot.m_open = m_open;
    return snapshot;
}

QByteArrayView ClipTextArena::Snapshot::unpack(quint32 block, QByteArray& buffer) const
{
    if (block + 1 == quint32(m_blocks.size()))
        return m_open;
    decompress(m_blocks.at(block).packed, m_blocks.at(block).bytes, buffer);
    return buffer;
}

qsizetype ClipTextArena::packedBytes() const
{
    qsizetype total = m_open.capacity();
    for (const Block& block : m_blocks)
        total += block.packed.size();
    return total;
}

qsizetype ClipTextArena::unpackedBytes() const
{
    qsizetype total = 0;
    for (const Block& block : m_blocks)
        total += block.bytes;
    return total;
}
