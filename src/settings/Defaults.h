#pragma once

#include "settings/SettingsDatabase.h"
#include "settings/StorageDamage.h"
#include "settings/WriteProblem.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>

// A settings domain: typed values that keep their type across restarts, one row per key in a
// private SQLite file, written on every change. Nothing the user wrote is given up: a value that
// could not be written stays in memory and is written when writing works again, and stored data
// that cannot be read is kept in a file beside the domain before anything replaces it.
// Main thread only.
class Defaults : public QObject
{
    Q_OBJECT
public:
    // The standard domain of the application.
    static constexpr const char* standardDomain = "Brenlow";

    // The domain in the standard folder, $XDG_CONFIG_HOME/Brenlow.
    explicit Defaults(QString domain = QString::fromLatin1(standardDomain), QObject* parent = nullptr);
    // The domain in `folder`.
    Defaults(QString domain, QString folder, QObject* parent = nullptr);
    // Makes a last attempt at what is still unwritten.
    ~Defaults() override;

    static QString standardFolder();
    const QString& domain() const { return m_domain; }
    const QString& folder() const { return m_folder; }
    // The database file.
    QString filePath() const;

    bool contains(const QString& key) const { return m_values.contains(key); }
    // The stored value with its type (bool, qint64, double, QString, QByteArray, QDateTime,
    // QStringList), or an invalid variant.
    QVariant value(const QString& key) const { return m_values.value(key); }

    std::optional<bool> boolValue(const QString& key) const;
    // Integers, also from stored whole doubles; anything else gives nothing.
    std::optional<qint64> integerValue(const QString& key) const;
    // Finite numbers only.
    std::optional<double> doubleValue(const QString& key) const;
    std::optional<QString> stringValue(const QString& key) const;
    std::optional<QByteArray> dataValue(const QString& key) const;
    std::optional<QDateTime> dateValue(const QString& key) const;
    std::optional<QStringList> stringArrayValue(const QString& key) const;

    // A value equal to the stored one (same type, same value) touches nothing.
    void setBool(const QString& key, bool value) { set(key, QVariant(value)); }
    void setInteger(const QString& key, qint64 value) { set(key, QVariant(value)); }
    void setDouble(const QString& key, double value) { set(key, QVariant(value)); }
    void setString(const QString& key, const QString& value) { set(key, QVariant(value)); }
    void setData(const QString& key, const QByteArray& value) { set(key, QVariant(value)); }
    void setDate(const QString& key, const QDateTime& value) { set(key, QVariant(value)); }
    void setStringArray(const QString& key, const QStringList& value) { set(key, QVariant(value)); }
    void remove(const QString& key);

    // Deletes every key and every file of the domain, copies of unreadable data included.
    void removeDomain();
    static void removeDomain(const QString& domain, const QString& folder = standardFolder());

    // The owner of `key` could not read its value: the stored bytes go to a file beside the
    // domain before anything replaces them. `what` names the data in German. When no copy can
    // be made, the stored value is not written over in this session.
    void keepUnreadable(const QString& key, const QString& what);
    // Damage found since the last call, oldest first.
    QList<StorageDamage> takeDamage();

    // Why the last write failed; nothing while writes work.
    std::optional<WriteProblem> writeProblem() const { return m_problem; }
    // The existing file could not be opened: it is left alone and nothing is written this session.
    bool writesHeld() const { return m_access == Access::held; }
    bool hasUnwrittenChanges() const { return !m_pending.isEmpty(); }
    // Writes what is still waiting; cheap when nothing is.
    void retryWrites();

Q_SIGNALS:
    // A write failed after writes had worked (once per stretch of failures).
    void writeFailed();
    // Everything that waited is written.
    void writesRecovered();
    // takeDamage() has something new.
    void damageFound();

private:
    enum class Access { open, missing, held };

    void open();
    void openDatabase(bool retrying);
    void takeRows(const QList<SettingsDatabase::Row>& rows, bool retrying);
    void setAsideDamagedDatabase();
    void importLegacyFile();
    void retireLegacyFile();
    void set(const QString& key, const QVariant& value);
    bool flush();
    bool writePending();
    void announce();
    void keepCopy(const QString& key, const QByteArray& raw, const QString& what);
    void forgetKept(const QString& key);
    void copyWaitingOriginals();
    void failed(WriteProblem problem, const QString& detail);
    void noteDamage(const StorageDamage& damage);

    QString m_domain;
    QString m_folder;
    QHash<QString, QVariant> m_values;
    // What the file holds, as last read or written (invalid where a row could not be read);
    // shares its data with m_values wherever the two agree.
    QHash<QString, QVariant> m_onDisk;
    // Keys whose value in memory (or absence) is not on disk yet.
    QSet<QString> m_pending;
    struct Original
    {
        QByteArray raw;
        QString what;
    };
    // Unreadable originals that could not be copied yet; their keys are not written.
    QHash<QString, Original> m_uncopied;
    std::unique_ptr<SettingsDatabase> m_database;
    Access m_access = Access::missing;
    std::optional<WriteProblem> m_problem;
    QList<StorageDamage> m_damage;
    // The former JSON file whose values wait to be written; renamed once they are.
    std::optional<QString> m_legacyImport;
    qsizetype m_legacyUnreadable = 0;
    bool m_flushing = false;
    // Signals owed once the current write is over.
    bool m_failedNow = false;
    bool m_recovered = false;
};
