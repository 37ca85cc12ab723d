#pragma once

#include "clipboard/Clip.h"
#include "clipboard/ClipKind.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

// One row of the history page: a clip and whether its text is a favourite.
struct ClipRow
{
    Clip clip;
    bool pinned = false;

    bool operator==(const ClipRow&) const = default;
};

// The rows of the history page: the favourites in their order (a favourite whose text left the
// history shows as a placeholder made now, with a new id), then the rest of the history newest
// first; of these, those whose text contains `search` (ignoring case, user's locale) and that
// pass `filter`.
QList<ClipRow> visibleClipRows(const QList<Clip>& clips, const QStringList& pins, const QString& search,
                               ClipKind filter, const QDateTime& now);

// The same rows as plain clips.
QList<Clip> visibleClips(const QList<Clip>& clips, const QStringList& pins, const QString& search,
                         ClipKind filter, const QDateTime& now);
