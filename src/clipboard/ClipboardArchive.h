#pragma once

#include "clipboard/Clip.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>
#include <stdexcept>

struct sqlite3;

// The clipboard history in one SQLite file: one row per distinct text, every write flushed
// before it returns, deleted text overwritten on disk. Main thread only.
class ClipboardArchive
{
public:
    // Every SQLite failure; folder and permission problems are reported the same way. The text
    // names the step and SQLite's own message, for the log.
    struct Failure : std::runtime_error
    {
        explicit Failure(const std::string& what) : std::runtime_error(what) {}
    };

    // $XDG_DATA_HOME/Brenlow/clipboard.sqlite
    static QString localPath();

    // Opens or creates the archive; with no path the database lives in memory.
    explicit ClipboardArchive(const std::optional<QString>& path);
    ~ClipboardArchive();
    ClipboardArchive(const ClipboardArchive&) = delete;
    ClipboardArchive& operator=(const ClipboardArchive&) = delete;

    // Every clip, newest first (ties: the later row first); nothing partial on failure.
    QList<Clip> load() const;
    // The same, one clip at a time, so a long history never sits in memory twice; on a failure
    // part of it has been handed over already.
    void load(const std::function<void(Clip&&)>& each) const;
    // Inserts the clip, or moves the date of the row that already has its text.
    void save(const Clip& clip);
    // Deletes the row with exactly this text; an unknown text is no error.
    void remove(const QString& text);
    // Deletes every row.
    void clear();

private:
    void execute(const char* sql);

    sqlite3* m_storage = nullptr;
};
