#pragma once

#include "clipboard/Clip.h"
#include "clipboard/ClipKind.h"
#include "clipboard/ClipStore.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <optional>

// A favourite and the slot of its history entry, when the history has one.
struct PinnedText
{
    QString text;
    std::optional<quint32> slot;
};

// The rows of the history page: the favourites in their order (a favourite whose text left the
// history shows as a placeholder made now, with a new id), then the rest of the history newest
// first; of these, those whose text contains the search text (ignoring case, user's locale) and
// that pass the filter.
struct VisibleRows
{
    // Slots of the store; -1 - k stands for placeholders[k].
    QList<qint32> rows;
    QList<Clip> placeholders;
    // The first rows are the favourites.
    qsizetype pinnedCount = 0;
};

// The rows over a store snapshot: kinds come from the entries, texts are unpacked a block at a
// time (on two threads for a long history) only when there is a search text.
VisibleRows visibleRows(const ClipStore::Snapshot& store, const QList<PinnedText>& pins,
                        const QString& search, ClipKind filter, const QDateTime& now);

// The same rule over plain clips, written as plainly as it reads; tests hold the fast rows to it.
QList<Clip> visibleClips(const QList<Clip>& clips, const QStringList& pins, const QString& search,
                         ClipKind filter, const QDateTime& now);
