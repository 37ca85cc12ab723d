#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Files that hold what the user wrote: folders 0700, files 0600 from the moment they exist, and
// a file either complete on disk or not there at all. Every failure answers errno's words and
// leaves errno set.
namespace PrivateFiles {

// Creates the missing folders down to `folder` with mode 0700 and narrows `folder` itself to
// 0700 when it exists, belongs to this user and is open to others. Folders above it that
// already exist keep the mode their owner chose.
std::optional<QString> makeFolder(const QString& folder);

// Creates `path` empty with mode 0600; fails when it exists.
std::optional<QString> createEmpty(const QString& path);

// Writes `bytes` to a new file `path` (mode 0600): beside it first, flushed to the disk, then
// renamed into place and the folder flushed. A failed write leaves nothing behind and never
// touches an existing `path`.
std::optional<QString> writeNew(const QString& path, const QByteArray& bytes);

// Renames within one folder and flushes the folder, so the new name survives a power cut.
std::optional<QString> rename(const QString& from, const QString& to);

// Narrows an existing file of this user to 0600.
void narrowFile(const QString& path);

// "<folder>/<prefix><stamp><suffix>" that names no existing file; the stamp is local time.
QString unusedName(const QString& folder, const QString& prefix, const QString& suffix);

} // namespace PrivateFiles
