#include "settings/SettingsDatabase.h"

#include "settings/Json.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>
#include <QUrl>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

SettingsDatabase::Failure failure(sqlite3* db, const char* step)
{
    std::string what = step;
    int code = SQLITE_ERROR;
    int systemError = 0;
    if (db) {
        code = sqlite3_extended_errcode(db) & 0xff;
        systemError = sqlite3_system_errno(db);
        what += ": ";
        what += sqlite3_errmsg(db);
        what += " (" + std::to_string(sqlite3_extended_errcode(db)) + ")";
    }
    return SettingsDatabase::Failure(what, code, systemError);
}

[[noreturn]] void fail(sqlite3* db, const char* step)
{
    throw failure(db, step);
}

sqlite3_stmt* prepare(sqlite3* db, const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK) {
        sqlite3_finalize(statement);
        fail(db, "prepare");
    }
    return statement;
}

// Resets and clears the statement when the call that used it ends, however it ends.
class Use
{
public:
    explicit Use(sqlite3_stmt* statement) : m_statement(statement) {}
    ~Use()
    {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

private:
    sqlite3_stmt* m_statement;
};

void bindText(sqlite3* db, sqlite3_stmt* statement, int index, const QByteArray& utf8)
{
    if (utf8.size() > std::numeric_limits<int>::max() ||
        sqlite3_bind_text(statement, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT) !=
            SQLITE_OK)
        fail(db, "bind text");
}

void bindValue(sqlite3* db, sqlite3_stmt* statement, int index, const QVariant& value)
{
    int result = SQLITE_OK;
    switch (value.typeId()) {
    case QMetaType::Bool:
        result = sqlite3_bind_int(statement, index, value.toBool() ? 1 : 0);
        break;
    case QMetaType::LongLong:
    case QMetaType::Int:
        result = sqlite3_bind_int64(statement, index, value.toLongLong());
        break;
    case QMetaType::Double:
        result = sqlite3_bind_double(statement, index, value.toDouble());
        break;
    case QMetaType::QString:
        bindText(db, statement, index, value.toString().toUtf8());
        break;
    case QMetaType::QByteArray: {
        const QByteArray data = value.toByteArray();
        // A zero-length blob bound from a pointer could come back as NULL; this stays a blob.
        result = data.isEmpty() ? sqlite3_bind_zeroblob(statement, index, 0)
                                : sqlite3_bind_blob64(statement, index, data.constData(),
                                                      sqlite3_uint64(data.size()), SQLITE_TRANSIENT);
        break;
    }
    case QMetaType::QDateTime:
        result = sqlite3_bind_double(statement, index, Json::encodeDate(value.toDateTime()));
        break;
    case QMetaType::QStringList:
        bindText(
            db, statement, index,
            QJsonDocument(QJsonArray::fromStringList(value.toStringList())).toJson(QJsonDocument::Compact));
        break;
    default:
        result = SQLITE_MISMATCH;
    }
    if (result != SQLITE_OK)
        fail(db, "bind value");
}

QByteArray rawBytes(sqlite3_stmt* statement, int column)
{
    const void* bytes = sqlite3_column_blob(statement, column);
    const int length = sqlite3_column_bytes(statement, column);
    return bytes ? QByteArray(static_cast<const char*>(bytes), length) : QByteArray();
}

// A row as its type, or an invalid variant when the stored value does not fit the type.
QVariant decode(const QString& type, sqlite3_stmt* statement, int column)
{
    const int stored = sqlite3_column_type(statement, column);
    if (type == u"bool" && stored == SQLITE_INTEGER) {
        const qint64 number = sqlite3_column_int64(statement, column);
        return number == 0 || number == 1 ? QVariant(number == 1) : QVariant();
    }
    if (type == u"integer" && stored == SQLITE_INTEGER)
        return QVariant(qint64(sqlite3_column_int64(statement, column)));
    if (type == u"double" && stored == SQLITE_FLOAT) {
        const double number = sqlite3_column_double(statement, column);
        return std::isfinite(number) ? QVariant(number) : QVariant();
    }
    if (type == u"string" && stored == SQLITE_TEXT)
        return QString::fromUtf8(rawBytes(statement, column));
    if (type == u"data" && stored == SQLITE_BLOB)
        return rawBytes(statement, column);
    if (type == u"date" && stored == SQLITE_FLOAT) {
        if (const auto date = Json::decodeDate(QJsonValue(sqlite3_column_double(statement, column))))
            return *date;
        return {};
    }
    if (type == u"strings" && stored == SQLITE_TEXT) {
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(rawBytes(statement, column), &error);
        if (error.error != QJsonParseError::NoError || !document.isArray())
            return {};
        if (const auto list = Json::decodeStringList(QJsonValue(document.array())))
            return *list;
        return {};
    }
    return {};
}

} // namespace

bool SettingsDatabase::Failure::damaged() const
{
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

SettingsDatabase::SettingsDatabase(const QString& path)
{
    // No CREATE flag: the caller makes the file with its private mode first, and a file that
    // vanished in between is not quietly recreated with SQLite's own.
    const QByteArray location = QFile::encodeName(path);
    if (sqlite3_open_v2(location.constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        const int code = m_db ? sqlite3_errcode(m_db) : SQLITE_NOMEM;
        const std::string what = std::string("open: ") + (m_db ? sqlite3_errmsg(m_db) : "out of memory");
        sqlite3_close(m_db);
        throw Failure(what, code);
    }
    try {
        sqlite3_busy_timeout(m_db, 2000);
        // A change appends a page or two to the write-ahead log and flushes it, instead of
        // journalling and rewriting pages of the main file; a file that is not a database
        // fails here, before anything is written to it.
        execute("PRAGMA journal_mode=WAL");
        execute("PRAGMA synchronous=FULL");
        // A long list rewritten once leaves no log of its size behind.
        execute("PRAGMA journal_size_limit=1048576");
        execute("CREATE TABLE IF NOT EXISTS entries(key TEXT NOT NULL, piece INTEGER NOT NULL, type TEXT NOT "
                "NULL, "
                "value, PRIMARY KEY(key, piece)) WITHOUT ROWID");
        execute("CREATE TABLE IF NOT EXISTS markers(name TEXT PRIMARY KEY NOT NULL, value) WITHOUT ROWID");
        m_upsert =
            prepare(m_db, "INSERT INTO entries(key,piece,type,value) VALUES(?,?,?,?) "
                          "ON CONFLICT(key,piece) DO UPDATE SET type=excluded.type, value=excluded.value");
        m_delete = prepare(m_db, "DELETE FROM entries WHERE key=? AND piece>=?");
    } catch (...) {
        sqlite3_finalize(m_upsert);
        sqlite3_finalize(m_delete);
        sqlite3_close(m_db);
        throw;
    }
}

SettingsDatabase::SettingsDatabase(const QString& path, ReadOnly)
{
    // "immutable" reads the file as it is: no lock, no log, no index file beside it.
    const QByteArray location = QUrl::fromLocalFile(path).toEncoded() + "?immutable=1";
    if (sqlite3_open_v2(location.constData(), &m_db, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr) !=
        SQLITE_OK) {
        const int code = m_db ? sqlite3_errcode(m_db) : SQLITE_NOMEM;
        const std::string what =
            std::string("open to read: ") + (m_db ? sqlite3_errmsg(m_db) : "out of memory");
        sqlite3_close(m_db);
        m_db = nullptr;
        throw Failure(what, code);
    }
}

QList<SettingsDatabase::Row> SettingsDatabase::readWithoutWriting(const QString& path)
{
    // Committed changes not yet carried into the file live in its log, which this reading skips.
    if (QFileInfo(path + QStringLiteral("-wal")).size() > 0)
        throw Failure("read: the log beside the file holds changes", SQLITE_CANTOPEN);
    const SettingsDatabase database(path, ReadOnly{});
    return database.load();
}

SettingsDatabase::~SettingsDatabase()
{
    sqlite3_finalize(m_upsert);
    sqlite3_finalize(m_delete);
    sqlite3_close(m_db);
}

QList<SettingsDatabase::Row> SettingsDatabase::load() const
{
    // Highest piece first, so a key's pieces arrive in the order of its bytes and piece 0, the
    // only one most keys have, ends the key.
    sqlite3_stmt* statement =
        prepare(m_db, "SELECT key,piece,type,value FROM entries ORDER BY key,piece DESC");
    QList<Row> rows;
    Row row;
    qint64 expected = -1; // the piece the current key needs next; -1 between keys
    bool whole = true;    // its pieces so far fit together
    const auto finish = [&] {
        if (whole)
            row.value = std::exchange(row.raw, {});
        rows.append(std::move(row));
        row = Row();
        expected = -1;
    };
    for (;;) {
        const int result = sqlite3_step(statement);
        if (result == SQLITE_DONE)
            break;
        if (result != SQLITE_ROW) {
            const Failure error = failure(m_db, "load");
            sqlite3_finalize(statement);
            throw error;
        }
        const QString key = QString::fromUtf8(rawBytes(statement, 0));
        const qint64 piece = sqlite3_column_int64(statement, 1);
        const QString type = QString::fromUtf8(rawBytes(statement, 2));
        if (expected >= 0 && key != row.key) {
            // The pieces below the last one seen are missing.
            whole = false;
            finish();
        }
        if (expected < 0) {
            if (piece == 0) {
                Row single{key, decode(type, statement, 3), type, {}};
                if (!single.value.isValid())
                    single.raw = rawBytes(statement, 3);
                rows.append(std::move(single));
                continue;
            }
            row = Row{key, {}, type, {}};
            row.raw.reserve(qsizetype(std::clamp<qint64>(piece + 1, 1, 1 << 16)) * pieceSize);
            whole = true;
            expected = piece;
        }
        const QByteArray bytes = rawBytes(statement, 3);
        const bool fits =
            row.raw.isEmpty() ? !bytes.isEmpty() && bytes.size() <= pieceSize : bytes.size() == pieceSize;
        whole = whole && fits && piece == expected && type == u"data" &&
                sqlite3_column_type(statement, 3) == SQLITE_BLOB;
        row.raw.append(bytes);
        expected = piece - 1;
        if (piece <= 0)
            finish();
    }
    sqlite3_finalize(statement);
    if (expected >= 0) {
        whole = false;
        finish();
    }
    return rows;
}

bool SettingsDatabase::hasMarker(const QString& name) const
{
    sqlite3_stmt* statement = prepare(m_db, "SELECT 1 FROM markers WHERE name=?");
    const QByteArray utf8 = name.toUtf8();
    sqlite3_bind_text(statement, 1, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    const int result = sqlite3_step(statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        const Failure error = failure(m_db, "read marker");
        sqlite3_finalize(statement);
        throw error;
    }
    sqlite3_finalize(statement);
    return result == SQLITE_ROW;
}

void SettingsDatabase::write(const QList<Change>& changes, const std::optional<QString>& marker)
{
    execute("BEGIN IMMEDIATE");
    try {
        for (const Change& change : changes) {
            if (change.value)
                store(change);
            else
                erase(change.key, 0);
        }
        if (marker) {
            sqlite3_stmt* statement =
                prepare(m_db, "INSERT OR REPLACE INTO markers(name,value) VALUES(?,CURRENT_TIMESTAMP)");
            const QByteArray utf8 = marker->toUtf8();
            sqlite3_bind_text(statement, 1, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
            const int result = sqlite3_step(statement);
            if (result != SQLITE_DONE) {
                const Failure error = failure(m_db, "write marker");
                sqlite3_finalize(statement);
                throw error;
            }
            sqlite3_finalize(statement);
        }
        execute("COMMIT");
    } catch (const Failure&) {
        // A failed COMMIT may leave the transaction open; nothing of it may stay.
        if (!sqlite3_get_autocommit(m_db))
            sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

QString SettingsDatabase::typeName(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return QStringLiteral("bool");
    case QMetaType::LongLong:
    case QMetaType::Int:
        return QStringLiteral("integer");
    case QMetaType::Double:
        return QStringLiteral("double");
    case QMetaType::QString:
        return QStringLiteral("string");
    case QMetaType::QByteArray:
        return QStringLiteral("data");
    case QMetaType::QDateTime:
        return QStringLiteral("date");
    case QMetaType::QStringList:
        return QStringLiteral("strings");
    default:
        return {};
    }
}

void SettingsDatabase::execute(const char* sql)
{
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(m_db, sql);
}

void SettingsDatabase::store(const Change& change)
{
    const QVariant& value = *change.value;
    if (value.typeId() != QMetaType::QByteArray) {
        storePiece(change.key, 0, value);
        erase(change.key, 1);
        return;
    }
    // Piece i holds the pieceSize bytes that end pieceSize * i bytes before the end; the head
    // piece takes what is left. A piece that is whole in both values and equal stays.
    const QByteArray data = value.toByteArray();
    const QByteArray stored =
        change.stored.typeId() == QMetaType::QByteArray ? change.stored.toByteArray() : QByteArray();
    const qsizetype pieces = std::max<qsizetype>(1, (data.size() + pieceSize - 1) / pieceSize);
    for (qsizetype piece = 0; piece < pieces; ++piece) {
        const qsizetype end = data.size() - piece * pieceSize;
        const qsizetype begin = std::max<qsizetype>(0, end - pieceSize);
        const qsizetype storedBegin = stored.size() - (piece + 1) * pieceSize;
        if (end - begin == pieceSize && storedBegin >= 0 &&
            std::memcmp(data.constData() + begin, stored.constData() + storedBegin, size_t(pieceSize)) == 0)
            continue;
        storePiece(change.key, piece, QByteArray::fromRawData(data.constData() + begin, end - begin));
    }
    erase(change.key, pieces);
}

void SettingsDatabase::storePiece(const QString& key, qsizetype piece, const QVariant& value)
{
    Use use(m_upsert);
    bindText(m_db, m_upsert, 1, key.toUtf8());
    if (sqlite3_bind_int64(m_upsert, 2, piece) != SQLITE_OK)
        fail(m_db, "bind piece");
    bindText(m_db, m_upsert, 3, typeName(value).toUtf8());
    bindValue(m_db, m_upsert, 4, value);
    if (sqlite3_step(m_upsert) != SQLITE_DONE)
        fail(m_db, "store");
}

void SettingsDatabase::erase(const QString& key, qsizetype fromPiece)
{
    Use use(m_delete);
    bindText(m_db, m_delete, 1, key.toUtf8());
    if (sqlite3_bind_int64(m_delete, 2, fromPiece) != SQLITE_OK)
        fail(m_db, "bind piece");
    if (sqlite3_step(m_delete) != SQLITE_DONE)
        fail(m_db, "remove");
}
