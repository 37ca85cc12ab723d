#include "clipboard/ClipboardArchive.h"

#include "settings/PrivateFiles.h"

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

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

[[noreturn]] void refuse(const QString& path, const char* why)
{
    throw ClipboardArchive::Failure(path.toStdString() + ": " + why);
}

// Refuses a place someone else planted: a symbolic link or another user's file or folder would
// have the history written where that user can read it. Such a place is left untouched.
void refuseForeign(const QString& path, bool folder)
{
    struct stat info
    {
    };
    if (::lstat(QFile::encodeName(path).constData(), &info) != 0) {
        if (errno == ENOENT)
            return;
        refuse(path, std::strerror(errno));
    }
    if (folder ? !S_ISDIR(info.st_mode) : !S_ISREG(info.st_mode))
        refuse(path, folder ? "not a folder (a symbolic link?)" : "not a plain file (a symbolic link?)");
    if (info.st_uid != ::geteuid())
        refuse(path, "belongs to another user");
}

// Our own folder loses any access by others; a missing file is created private, so no reader
// ever sees it with looser rights.
void claimPrivatePlace(const QString& file)
{
    const QString folder = QFileInfo(file).absolutePath();
    refuseForeign(folder, true);
    if (const auto failed = PrivateFiles::makeFolder(folder))
        throw ClipboardArchive::Failure(failed->toStdString());
    refuseForeign(file, false);
    // Exclusive creation also fails on a link planted in between.
    if (!QFileInfo::exists(file) && !QFileInfo(file).isSymLink()) {
        if (const auto failed = PrivateFiles::createEmpty(file))
            throw ClipboardArchive::Failure(failed->toStdString());
    }
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
    throw ClipboardArchive::Failure(what, db ? sqlite3_extended_errcode(db) : 0);
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

bool ClipboardArchive::Failure::readOnly() const
{
    return (code & 0xff) == SQLITE_READONLY;
}

ClipboardArchive::ClipboardArchive(const std::optional<QString>& path) : m_path(path)
{
    if (m_path)
        claimPrivatePlace(*m_path);
    open();
}

void ClipboardArchive::reopen()
{
    sqlite3_close(m_storage);
    m_storage = nullptr;
    open();
}

void ClipboardArchive::open()
{
    const QByteArray location = m_path ? QFile::encodeName(*m_path) : QByteArray(":memory:");
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(location.constData(), &db, openFlags, nullptr) != SQLITE_OK) {
        const std::string what = std::string("open: ") + (db ? sqlite3_errmsg(db) : "out of memory");
        const int code = db ? sqlite3_extended_errcode(db) : SQLITE_NOMEM;
        sqlite3_close(db);
        throw Failure(what, code);
    }
    m_storage = db;
    try {
        sqlite3_busy_timeout(m_storage, busyTimeoutMs);
        // A file that is not a database fails here, before anything is written to it.
        execute("PRAGMA secure_delete=ON");
        execute("PRAGMA synchronous=FULL");
        execute("CREATE TABLE IF NOT EXISTS clips (id TEXT PRIMARY KEY, text TEXT NOT NULL UNIQUE, date REAL "
                "NOT NULL)");
        struct stat info
        {
        };
        // Exactly 0600; a file that already is needs no change (and may not allow one).
        if (m_path && (::stat(location.constData(), &info) != 0 || (info.st_mode & 07777) != 0600) &&
            ::chmod(location.constData(), 0600) != 0)
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
