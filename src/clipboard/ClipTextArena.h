#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

#include <array>

// Where one text lives in the arena.
struct TextLocation
{
    quint32 block = 0;
    quint32 offset = 0; // bytes into the block's unpacked data
    quint32 bytes : 31 = 0;
    // One byte per character (every character below U+0100), else UTF-16.
    quint32 latin1 : 1 = 0;
};

// Every clip text in one place, small: a text whose characters all lie below U+0100 takes one
// byte per character, others UTF-16, and the bytes go into LZ4-compressed blocks of about 64 KiB.
// The newest texts wait in an open block until it is full. Reading a text unpacks its block; the
// last few unpacked blocks are kept. Main thread only; snapshot() hands the blocks to a worker.
class ClipTextArena
{
public:
    static constexpr quint32 blockTarget = 64 * 1024;

    struct Block
    {
        QByteArray packed; // LZ4 data; empty for the open block
        quint32 bytes = 0; // unpacked size
        quint32 live = 0;  // bytes of texts still in use
    };

    // The blocks as they are now, for reading on another thread: nothing is copied but the open
    // block, and later changes to the arena do not reach it.
    class Snapshot
    {
    public:
        quint32 blockCount() const { return quint32(m_blocks.size()); }
        // The unpacked bytes of a block; `buffer` holds them while they are used.
        QByteArrayView unpack(quint32 block, QByteArray& buffer) const;

    private:
        friend class ClipTextArena;
        QList<Block> m_blocks;
        QByteArray m_open;
    };

    TextLocation add(QStringView text);
    QString text(const TextLocation& at) const;
    // The text's bytes are no longer used; answers whether its block is now mostly garbage and
    // worth repacking (see repack()).
    bool release(const TextLocation& at);
    // Rewrites a block with only the texts at `keep`, in order; answers their new locations.
    QList<TextLocation> repack(quint32 block, const QList<TextLocation>& keep);
    void clear();

    Snapshot snapshot() const;
    quint32 blockCount() const { return quint32(m_blocks.size()); }
    // Memory the texts take, packed, and what they would take unpacked.
    qsizetype packedBytes() const;
    qsizetype unpackedBytes() const;

    // Reads the text at `at` out of its block's unpacked bytes.
    static QString decode(QByteArrayView block, const TextLocation& at);
    // The text's bytes as stored: Latin-1 or UTF-16.
    static QByteArrayView bytesOf(QByteArrayView block, const TextLocation& at);

private:
    QByteArrayView unpacked(quint32 block) const;
    void seal();

    // m_blocks.last() is the open block: its bytes sit unpacked in m_open.
    QList<Block> m_blocks;
    QByteArray m_open;
    struct Cached
    {
        quint32 block = ~0u;
        QByteArray bytes;
        quint64 used = 0;
    };
    mutable std::array<Cached, 4> m_cache;
    mutable quint64 m_reads = 0;
};
