#include "clipboard/ClipboardArchive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <sqlite3.h>

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include <sys/stat.h>

namespace {

constexpr int openFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX; // 0x10006
static_assert(openFlags == 0x10006);

// Dates are stored as seconds since 2001-01-01 00:00:00 UTC, the records' shared epoch.
constexpr qint64 referenceEpochMSecs = 978'307'200'000;

double encodeDate(const QDateTime& date)
{
    return double(date.toMSecsSinceEpoch() - referenceEpochMSecs) / 1000.0;
}

QDateTime decodeDate(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(referenceEpochMSecs + qint64(std::llround(seconds * 1000.0)),
                                          Qt::UTC);
}

// Canonical UUID text only (8-4-4-4-12 hex digits, either case); the nil UUID is a valid id.
std::optional<QUuid> decodeId(const unsigned char* text, int length)
{
    if (!text || length != 36)
        return std::nullopt;
    for (int i = 0; i < 36; ++i) {
        const char c = char(text[i]);
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (hyphen ? c != '-' : !std::isxdigit(static_cast<unsigned char>(c)))
            return std::nullopt;
    }
    return QUuid::fromString(QLatin1StringView(reinterpret_cast<const char*>(text), 36));
}

QByteArray encodeId(const QUuid& id)
{
    return id.toByteArray(QUuid::WithoutBraces).toUpper();
}

// Creates the missing folders down to `folder`, each private to the user (0700), as the
// intermediate folders of a fresh data directory hold nothing anyone else should list.
// Folders that already exist keep the mode their owner chose.
bool makePrivateFolders(const QString& folder)
{
    QStringList missing;
    QString current = QDir::cleanPath(folder);
    while (!QFileInfo::exists(current)) {
        missing.prepend(current);
        const QString parent = QFileInfo(current).absolutePath();
        if (parent == current)
            break;
        current = parent;
    }
    for (const QString& path : std::as_const(missing)) {
        const QByteArray native = QFile::encodeName(path);
        if (::mkdir(native.constData(), 0700) == 0) {
            // The umask may have taken bits away; the mode must be exactly 0700.
            if (::chmod(native.constData(), 0700) != 0)
                return false;
        } else if (errno != EEXIST) {
            return false;
        }
    }
    return QFileInfo(folder).isDir();
}

// What went wrong in `step`, in SQLite's words (its extended result code included).
[[noreturn]] void fail(sqlite3* db, const char* step)
{
    std::string what = step;
    if (db) {
        what += ": ";
        what += sqlite3_errmsg(db);
        what += " (" + std::to_string(sqlite3_extended_errcode(db)) + ")";
    }
    throw ClipboardArchive::Failure(what);
}

// One prepared statement, finalised when it leaves scope: no statement outlives its call.
class Statement
{
public:
    Statement(sqlite3* db, const char* sql) : m_db(db)
    {
        if (!db || sqlite3_prepare_v2(db, sql, -1, &m_statement, nullptr) != SQLITE_OK) {
            sqlite3_finalize(m_statement);
            fail(db, "prepare");
        }
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    // Text goes in with its explicit byte length so an embedded NUL survives.
    void bindText(int index, const QByteArray& utf8)
    {
        if (utf8.size() > std::numeric_limits<int>::max() ||
            sqlite3_bind_text(m_statement, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT) !=
                SQLITE_OK)
            fail(m_db, "bind text");
    }
    void bindDouble(int index, double value)
    {
        if (sqlite3_bind_double(m_statement, index, value) != SQLITE_OK)
            fail(m_db, "bind date");
    }
    // Steps once and requires the statement to finish.
    void finish()
    {
        if (sqlite3_step(m_statement) != SQLITE_DONE)
            fail(m_db, "step");
    }
    sqlite3_stmt* get() const { return m_statement; }

private:
    sqlite3* m_db;
    sqlite3_stmt* m_statement = nullptr;
};

} // namespace

QString ClipboardArchive::localPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Brenlow/clipboard.sqlite");
}

ClipboardArchive::ClipboardArchive(const std::optional<QString>& path)
{
    QByteArray location = ":memory:";
    if (path) {
        if (!makePrivateFolders(QFileInfo(*path).absolutePath()))
            throw Failure("create folder " + QFileInfo(*path).absolutePath().toStdString() + ": " +
                          std::strerror(errno));
        location = QFile::encodeName(*path);
    }
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(location.constData(), &db, openFlags, nullptr) != SQLITE_OK) {
        const std::string what = std::string("open: ") + (db ? sqlite3_errmsg(db) : "out of memory");
        sqlite3_close(db);
        throw Failure(what);
    }
    m_storage = db;
    try {
        // A file that is not a database fails here, before anything is written to it.
        execute("PRAGMA secure_delete=ON");
        execute("PRAGMA synchronous=FULL");
        execute("CREATE TABLE IF NOT EXISTS clips (id TEXT PRIMARY KEY, text TEXT NOT NULL UNIQUE, date REAL "
                "NOT NULL)");
        if (path && ::chmod(location.constData(), 0600) != 0)
            throw Failure(std::string("chmod: ") + std::strerror(errno));
    } catch (...) {
        sqlite3_close(m_storage);
        m_storage = nullptr;
        throw;
    }
}

ClipboardArchive::~ClipboardArchive()
{
    sqlite3_close(m_storage);
}

QList<Clip> ClipboardArchive::load() const
{
    QList<Clip> clips;
    load([&clips](Clip&& clip) { clips.append(std::move(clip)); });
    return clips;
}

void ClipboardArchive::load(const std::function<void(Clip&&)>& each) const
{
    Statement statement(m_storage, "SELECT id,text,date FROM clips ORDER BY date DESC,rowid DESC");
    for (;;) {
        const int result = sqlite3_step(statement.get());
        if (result == SQLITE_DONE)
            break;
        if (result != SQLITE_ROW)
            fail(m_storage, "load");
        const unsigned char* idText = sqlite3_column_text(statement.get(), 0);
        const auto id = decodeId(idText, sqlite3_column_bytes(statement.get(), 0));
        const void* bytes = sqlite3_column_blob(statement.get(), 1);
        const int length = sqlite3_column_bytes(statement.get(), 1);
        if (!id || !bytes || length <= 0)
            throw Failure("load: a row without a valid id or text");
        // fromUtf8 replaces invalid sequences with U+FFFD and keeps embedded NULs.
        QString text = QString::fromUtf8(static_cast<const char*>(bytes), length);
        each(Clip{*id, std::move(text), decodeDate(sqlite3_column_double(statement.get(), 2))});
    }
}

void ClipboardArchive::save(const Clip& clip)
{
    Statement statement(m_storage, "INSERT INTO clips(id,text,date) VALUES(?,?,?) "
                                   "ON CONFLICT(text) DO UPDATE SET date=excluded.date");
    statement.bindText(1, encodeId(clip.id));
    statement.bindText(2, clip.text.toUtf8());
    statement.bindDouble(3, encodeDate(clip.date));
    statement.finish();
}

void ClipboardArchive::remove(const QString& text)
{
    Statement statement(m_storage, "DELETE FROM clips WHERE text=?");
    statement.bindText(1, text.toUtf8());
    statement.finish();
}

void ClipboardArchive::clear()
{
    execute("DELETE FROM clips");
}

void ClipboardArchive::execute(const char* sql)
{
    if (!m_storage || sqlite3_exec(m_storage, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(m_storage, sql);
}
