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
        explicit Failure(const std::string& what, int code = 0) : std::runtime_error(what), code(code) {}
        // SQLite's extended result code; 0 for folder and permission problems.
        int code;
        // The connection cannot write (the file was read-only when it was opened): reopening may
        // help once the file is writable again.
        bool readOnly() const;
    };

    // How long a write waits for another process's lock before it fails; the main thread waits.
    static constexpr int busyTimeoutMs = 200;

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
    // Opens the file again: a connection that SQLite opened read-only stays read-only.
    void reopen();

private:
    void open();
    void execute(const char* sql);

    std::optional<QString> m_path;

    sqlite3* m_storage = nullptr;
};
