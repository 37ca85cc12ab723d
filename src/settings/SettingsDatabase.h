#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>

#include <optional>
#include <stdexcept>
#include <utility>

struct sqlite3;
struct sqlite3_stmt;

// A settings domain on disk: one SQLite file with a row per key and the key's type beside its
// value, so a change rewrites that row and nothing else. Long data (the activity list runs to
// megabytes) is kept in pieces counted from its end: a list that grows at its head rewrites
// its first piece or two, and pieces whose bytes did not change are not written again. Every
// transaction reaches the disk before it returns. Main thread only.
class SettingsDatabase
{
public:
    // A SQLite failure: the step and SQLite's words for the log, the primary result code for the
    // decision what to do.
    struct Failure : std::runtime_error
    {
        Failure(const std::string& what, int code, int systemError = 0)
            : std::runtime_error(what), code(code), systemError(systemError)
        {}
        // The file is not a database, or its pages do not fit together.
        bool damaged() const;
        int code;
        // errno of the system call that failed, 0 when none did: a full disk often comes back
        // as a plain I/O error (SQLite's index file cannot grow), and only errno tells.
        int systemError;
    };

    // One stored row; `value` is invalid when the row cannot be read as its type, and `raw`
    // holds the stored bytes so they can be kept.
    struct Row
    {
        QString key;
        QVariant value;
        QString type;
        QByteArray raw;
    };

    struct Change
    {
        QString key;
        // The value to store, or nothing to delete the key.
        std::optional<QVariant> value;
        // What the file holds for the key now, when known; its unchanged pieces stay.
        QVariant stored;
    };

    // Bytes per piece of long data.
    static constexpr qsizetype pieceSize = 8192;

    // Opens the file; an empty file becomes a new database. Throws Failure.
    explicit SettingsDatabase(const QString& path);
    ~SettingsDatabase();
    SettingsDatabase(const SettingsDatabase&) = delete;
    SettingsDatabase& operator=(const SettingsDatabase&) = delete;

    // Every row; a damaged file throws.
    QList<Row> load() const;
    // Every row of a file that cannot be opened for writing (no room for SQLite's log, say),
    // read without creating anything beside it. Throws Failure, also when a log beside the
    // file holds changes this way of reading would miss.
    static QList<Row> readWithoutWriting(const QString& path);
    bool hasMarker(const QString& name) const;
    // One transaction: every change, and the marker when one is given. All or nothing.
    void write(const QList<Change>& changes, const std::optional<QString>& marker = std::nullopt);

    // The type a value is stored under ("bool", "integer", …), empty for a type that cannot be.
    static QString typeName(const QVariant& value);

private:
    struct ReadOnly
    {
    };
    SettingsDatabase(const QString& path, ReadOnly);
    void execute(const char* sql);
    void store(const Change& change);
    void storePiece(const QString& key, qsizetype piece, const QVariant& value);
    void erase(const QString& key, qsizetype fromPiece);

    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_upsert = nullptr;
    sqlite3_stmt* m_delete = nullptr;
};
