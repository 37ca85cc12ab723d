#include "settings/Defaults.h"

#include "common/Log.h"
#include "settings/LegacyDomainFile.h"
#include "settings/PrivateFiles.h"
#include "settings/SettingsDatabase.h"
#include "settings/StorageTexts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QScopedValueRollback>
#include <QStandardPaths>

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <utility>

namespace {

const QString legacyImported = QStringLiteral("legacyImported");
// Files beside the database that belong to the domain: the log and index of the write-ahead
// log, and a rollback journal a crash may have left.
const QStringList databaseCompanions = {QStringLiteral("-wal"), QStringLiteral("-shm"),
                                        QStringLiteral("-journal")};

WriteProblem problemOfErrno(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return WriteProblem::diskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return WriteProblem::noPermission;
    case EIO:
        return WriteProblem::diskError;
    default:
        return WriteProblem::unknown;
    }
}

WriteProblem problemOf(const SettingsDatabase::Failure& failure)
{
    if (failure.systemError != 0 && problemOfErrno(failure.systemError) != WriteProblem::unknown)
        return problemOfErrno(failure.systemError);
    switch (failure.code) {
    case SQLITE_FULL:
        return WriteProblem::diskFull;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
    case SQLITE_AUTH:
        return WriteProblem::noPermission;
    case SQLITE_IOERR:
        return WriteProblem::diskError;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return WriteProblem::locked;
    default:
        return WriteProblem::unknown;
    }
}

// The bytes a value was stored as, for a copy a person can open.
QByteArray rawForm(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QByteArray:
        return value.toByteArray();
    case QMetaType::QStringList:
        return QJsonDocument(QJsonArray::fromStringList(value.toStringList())).toJson();
    case QMetaType::QDateTime:
        return value.toDateTime().toString(Qt::ISODateWithMs).toUtf8();
    default:
        return value.toString().toUtf8();
    }
}

// Keys become part of a file name; a slash would make it a folder.
QString fileSafe(QString key)
{
    return key.replace(u'/', u'_');
}

} // namespace

Defaults::Defaults(QString domain, QObject* parent) : Defaults(std::move(domain), standardFolder(), parent) {}

Defaults::Defaults(QString domain, QString folder, QObject* parent)
    : QObject(parent), m_domain(std::move(domain)), m_folder(std::move(folder))
{
    open();
}

Defaults::~Defaults()
{
    // Only through a database that is open: a removed domain must not come back.
    if (m_database && !m_pending.isEmpty())
        flush();
    if (!m_pending.isEmpty())
        qCWarning(lcSettings) << "settings domain" << m_domain << "ends with" << m_pending.size()
                              << "unwritten keys:" << QStringList(m_pending.begin(), m_pending.end());
}

QString Defaults::standardFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Brenlow");
}

QString Defaults::filePath() const
{
    return m_folder + u'/' + m_domain + QStringLiteral(".sqlite");
}

std::optional<bool> Defaults::boolValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() != QMetaType::Bool)
        return std::nullopt;
    return value.toBool();
}

std::optional<qint64> Defaults::integerValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() == QMetaType::LongLong)
        return value.toLongLong();
    if (value.typeId() == QMetaType::Double) {
        // Converting a double outside the integers' range is undefined; it is the wrong type.
        const double number = value.toDouble();
        if (std::isfinite(number) && std::trunc(number) == number && std::abs(number) < 9.2e18)
            return qint64(number);
    }
    return std::nullopt;
}

std::optional<double> Defaults::doubleValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() == QMetaType::LongLong)
        return value.toDouble();
    if (value.typeId() == QMetaType::Double && std::isfinite(value.toDouble()))
        return value.toDouble();
    return std::nullopt;
}

std::optional<QString> Defaults::stringValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

std::optional<QByteArray> Defaults::dataValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() != QMetaType::QByteArray)
        return std::nullopt;
    return value.toByteArray();
}

std::optional<QDateTime> Defaults::dateValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() != QMetaType::QDateTime)
        return std::nullopt;
    return value.toDateTime();
}

std::optional<QStringList> Defaults::stringArrayValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() != QMetaType::QStringList)
        return std::nullopt;
    return value.toStringList();
}

void Defaults::set(const QString& key, const QVariant& value)
{
    if (SettingsDatabase::typeName(value).isEmpty())
        return;
    const auto stored = m_values.constFind(key);
    // Stores write back what they just loaded; that must cost nothing. A value still waiting
    // for the disk goes out with the next write.
    if (stored != m_values.cend() && stored->typeId() == value.typeId() && *stored == value)
        return;
    m_values.insert(key, value);
    m_pending.insert(key);
    flush();
}

void Defaults::remove(const QString& key)
{
    // A key on disk that could not be read is not in memory, yet removing it must reach the disk.
    if (m_values.remove(key) == 0 && !m_onDisk.contains(key))
        return;
    m_pending.insert(key);
    flush();
}

void Defaults::removeDomain()
{
    m_database.reset();
    m_values.clear();
    m_onDisk.clear();
    m_pending.clear();
    m_uncopied.clear();
    m_legacyImport.reset();
    m_problem.reset();
    m_access = Access::missing;
    removeDomain(m_domain, m_folder);
}

void Defaults::removeDomain(const QString& domain, const QString& folder)
{
    const QDir dir(folder);
    const QString database = domain + QStringLiteral(".sqlite");
    QStringList names{database, domain + QStringLiteral(".json")};
    for (const QString& companion : databaseCompanions)
        names.append(database + companion);
    // Copies of unreadable data, the imported former file, and pieces a crash left behind.
    for (const QString& prefix : {QStringLiteral(".unreadable-"), QStringLiteral(".imported")}) {
        for (const QString& name : dir.entryList({domain + prefix + u'*'}, QDir::Files | QDir::Hidden))
            names.append(name);
    }
    for (const QString& name : std::as_const(names))
        QFile::remove(dir.filePath(name));
}

void Defaults::keepUnreadable(const QString& key, const QString& what)
{
    const auto stored = m_values.constFind(key);
    if (stored == m_values.cend() || m_uncopied.contains(key))
        return;
    keepCopy(key, rawForm(*stored), what);
    flush();
}

QList<StorageDamage> Defaults::takeDamage()
{
    return std::exchange(m_damage, {});
}

void Defaults::retryWrites()
{
    if (!m_pending.isEmpty() || !m_uncopied.isEmpty() || m_legacyImport)
        flush();
}

void Defaults::open()
{
    openDatabase(false);
    if (m_access == Access::held)
        return;
    importLegacyFile();
    retryWrites();
}

// Opens the file, or creates it private and empty first; a damaged file is set aside and a
// fresh one begun. When `retrying`, values read now join those in memory without replacing them.
void Defaults::openDatabase(bool retrying)
{
    if (const auto error = PrivateFiles::makeFolder(m_folder)) {
        const WriteProblem problem = problemOfErrno(errno);
        failed(problem, *error);
        return;
    }
    const QString path = filePath();
    bool created = false;
    if (!QFileInfo::exists(path)) {
        if (const auto error = PrivateFiles::createEmpty(path)) {
            const WriteProblem problem = problemOfErrno(errno);
            failed(problem, *error);
            return;
        }
        created = true;
    } else {
        // A file from an older, looser time is narrowed; SQLite gives its log the same mode.
        PrivateFiles::narrowFile(path);
        for (const QString& companion : databaseCompanions)
            PrivateFiles::narrowFile(path + companion);
    }
    const bool empty = QFileInfo(path).size() == 0;
    QList<SettingsDatabase::Row> rows;
    try {
        auto database = std::make_unique<SettingsDatabase>(path);
        rows = database->load();
        m_database = std::move(database);
    } catch (const SettingsDatabase::Failure& failure) {
        if (failure.damaged() && !created) {
            qCWarning(lcSettings) << "settings domain" << m_domain << "is damaged:" << failure.what();
            setAsideDamagedDatabase();
            if (m_access != Access::held)
                openDatabase(retrying);
            return;
        }
        failed(problemOf(failure), QString::fromStdString(failure.what()));
        // A new file may simply have had no room yet, and a retry keeps what is in memory.
        if (retrying || empty)
            return;
        // A full disk cannot even take the log SQLite needs for writing; what the file holds
        // is still read, so the session starts with the user's values and writes them later.
        try {
            rows = SettingsDatabase::readWithoutWriting(path);
        } catch (const SettingsDatabase::Failure& again) {
            // Writing to a file nobody could read might replace what it holds: it is left alone.
            qCWarning(lcSettings) << "settings domain" << m_domain << "left alone:" << again.what();
            m_access = Access::held;
            return;
        }
        takeRows(rows, false);
        return;
    }
    m_access = Access::open;
    takeRows(rows, retrying);
}

void Defaults::takeRows(const QList<SettingsDatabase::Row>& rows, bool retrying)
{
    for (const SettingsDatabase::Row& row : rows) {
        // A retry finds what an earlier read already took, or what the user has changed since.
        const bool known = m_onDisk.contains(row.key) || m_values.contains(row.key) ||
                           m_pending.contains(row.key) || m_uncopied.contains(row.key);
        m_onDisk.insert(row.key, row.value);
        if (retrying && known)
            continue;
        if (row.value.isValid())
            m_values.insert(row.key, row.value);
        else
            keepCopy(row.key, row.raw, StorageTexts::storedKey(row.key));
    }
}

void Defaults::setAsideDamagedDatabase()
{
    const QString path = filePath();
    const QString copy = PrivateFiles::unusedName(m_folder, m_domain + QStringLiteral(".unreadable-"),
                                                  QStringLiteral(".sqlite"));
    if (const auto error = PrivateFiles::rename(path, copy)) {
        const WriteProblem problem = problemOfErrno(errno);
        m_access = Access::held;
        failed(problem, QStringLiteral("damaged settings could not be set aside: ") + *error);
        noteDamage({StorageTexts::settingsDatabase(), std::nullopt});
        return;
    }
    // The log holds committed changes that belong to the copy; the index is rebuilt from it.
    for (const QString& companion : {QStringLiteral("-wal"), QStringLiteral("-journal")}) {
        if (QFileInfo::exists(path + companion))
            PrivateFiles::rename(path + companion, copy + companion);
    }
    QFile::remove(path + QStringLiteral("-shm"));
    noteDamage({StorageTexts::settingsDatabase(), copy});
}

void Defaults::importLegacyFile()
{
    const QString legacy = m_folder + u'/' + m_domain + QStringLiteral(".json");
    QFile file(legacy);
    if (!file.exists())
        return;
    PrivateFiles::narrowFile(legacy);
    try {
        if (m_database && m_database->hasMarker(legacyImported)) {
            // Imported before, and only the renaming failed.
            retireLegacyFile();
            return;
        }
    } catch (const SettingsDatabase::Failure& failure) {
        qCWarning(lcSettings) << "former settings file left for later:" << failure.what();
        return;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcSettings) << "former settings file" << legacy << "not readable:" << file.errorString();
        return;
    }
    const auto contents = LegacyDomainFile::read(file.readAll());
    file.close();
    if (!contents) {
        const QString copy = PrivateFiles::unusedName(m_folder, m_domain + QStringLiteral(".unreadable-"),
                                                      QStringLiteral(".json"));
        const auto error = PrivateFiles::rename(legacy, copy);
        if (error)
            qCWarning(lcSettings) << "unreadable former settings file stays in place:" << *error;
        else
            qCWarning(lcSettings) << "former settings file is no JSON object; kept as" << copy;
        noteDamage({StorageTexts::legacyFile(), error ? std::nullopt : std::optional<QString>(copy)});
        return;
    }
    for (auto it = contents->values.cbegin(); it != contents->values.cend(); ++it) {
        m_values.insert(it.key(), it.value());
        m_pending.insert(it.key());
    }
    m_legacyImport = legacy;
    m_legacyUnreadable = contents->unreadable.size();
    if (m_legacyUnreadable > 0)
        qCWarning(lcSettings) << "former settings file: unreadable keys" << contents->unreadable;
}

// The imported file keeps its name's domain and says what happened to it.
void Defaults::retireLegacyFile()
{
    const QString legacy = m_folder + u'/' + m_domain + QStringLiteral(".json");
    const QString kept =
        PrivateFiles::unusedName(m_folder, m_domain + QStringLiteral(".imported-"), QStringLiteral(".json"));
    const auto error = PrivateFiles::rename(legacy, kept);
    if (error)
        qCWarning(lcSettings) << "imported settings file keeps its name:" << *error;
    // Entries the import could not read wait in the kept file.
    if (m_legacyUnreadable > 0)
        noteDamage({StorageTexts::legacyEntries(m_legacyUnreadable), error ? legacy : kept});
    m_legacyUnreadable = 0;
    m_legacyImport.reset();
}

// Signals go out only once the write is over: a listener that stores something in answer (a
// notice, say) starts a write of its own.
bool Defaults::flush()
{
    if (m_flushing)
        return false;
    bool written = false;
    {
        const QScopedValueRollback guard(m_flushing, true);
        written = writePending();
    }
    announce();
    return written;
}

bool Defaults::writePending()
{
    if (m_access == Access::held)
        return false;
    copyWaitingOriginals();
    if (!m_database) {
        openDatabase(true);
        if (!m_database)
            return false;
    }
    QList<SettingsDatabase::Change> changes;
    for (const QString& key : std::as_const(m_pending)) {
        if (m_uncopied.contains(key))
            continue;
        const auto value = m_values.constFind(key);
        changes.append({key, value != m_values.cend() ? std::optional<QVariant>(*value) : std::nullopt,
                        m_onDisk.value(key)});
    }
    const bool importing = m_legacyImport.has_value();
    if (changes.isEmpty() && !importing)
        return true;
    try {
        m_database->write(changes, importing ? std::optional<QString>(legacyImported) : std::nullopt);
    } catch (const SettingsDatabase::Failure& failure) {
        failed(problemOf(failure), QString::fromStdString(failure.what()));
        return false;
    }
    for (const SettingsDatabase::Change& change : std::as_const(changes)) {
        m_pending.remove(change.key);
        if (change.value)
            m_onDisk.insert(change.key, *change.value);
        else
            m_onDisk.remove(change.key);
    }
    if (importing)
        retireLegacyFile();
    const bool allWritten = std::all_of(m_pending.cbegin(), m_pending.cend(),
                                        [this](const QString& key) { return m_uncopied.contains(key); });
    if (m_problem && allWritten) {
        m_problem.reset();
        m_recovered = true;
        qCInfo(lcSettings) << "settings domain" << m_domain << "written again";
    }
    return true;
}

void Defaults::keepCopy(const QString& key, const QByteArray& raw, const QString& what)
{
    const QString copy =
        PrivateFiles::unusedName(m_folder, m_domain + QStringLiteral(".unreadable-"), u'.' + fileSafe(key));
    if (const auto error = PrivateFiles::writeNew(copy, raw)) {
        qCWarning(lcSettings) << "unreadable" << key
                              << "could not be copied; it is not written over:" << *error;
        m_uncopied.insert(key, Original{raw, what});
        noteDamage({what, std::nullopt});
        return;
    }
    qCWarning(lcSettings) << "unreadable" << key << "kept as" << copy;
    noteDamage({what, copy});
    forgetKept(key);
}

// The copy holds the original now: the stored value goes, so that the next start neither reads
// it nor keeps it a second time. A newer value that waits replaces it anyway.
void Defaults::forgetKept(const QString& key)
{
    if (m_pending.contains(key))
        return;
    m_values.remove(key);
    if (m_onDisk.contains(key))
        m_pending.insert(key);
}

void Defaults::copyWaitingOriginals()
{
    for (auto it = m_uncopied.begin(); it != m_uncopied.end();) {
        const QString copy = PrivateFiles::unusedName(m_folder, m_domain + QStringLiteral(".unreadable-"),
                                                      u'.' + fileSafe(it.key()));
        if (PrivateFiles::writeNew(copy, it->raw)) {
            ++it;
            continue;
        }
        qCInfo(lcSettings) << "unreadable" << it.key() << "kept as" << copy << "at last";
        noteDamage({it->what, copy});
        const QString key = it.key();
        it = m_uncopied.erase(it);
        forgetKept(key);
    }
}

void Defaults::failed(WriteProblem problem, const QString& detail)
{
    if (m_problem)
        return;
    m_problem = problem;
    m_failedNow = true;
    qCWarning(lcSettings) << "settings domain" << m_domain << "not written:" << detail;
    announce();
}

void Defaults::noteDamage(const StorageDamage& damage)
{
    m_damage.append(damage);
    announce();
}

void Defaults::announce()
{
    if (m_flushing)
        return;
    if (std::exchange(m_failedNow, false))
        Q_EMIT writeFailed();
    if (std::exchange(m_recovered, false))
        Q_EMIT writesRecovered();
    if (!m_damage.isEmpty())
        Q_EMIT damageFound();
}
