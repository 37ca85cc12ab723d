#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

// A settings domain: typed values that keep their type across restarts, stored as one JSON
// document per domain and written atomically on every change.
class Defaults
{
public:
    // The standard domain of the application.
    static constexpr const char* standardDomain = "Brenlow";

    explicit Defaults(QString domain = QString::fromLatin1(standardDomain));

    const QString& domain() const { return m_domain; }
    QString filePath() const;

    bool contains(const QString& key) const { return m_values.contains(key); }
    // The stored value with its type (bool, qint64, double, QString, QByteArray, QDateTime,
    // QStringList), or an invalid variant.
    QVariant value(const QString& key) const { return m_values.value(key); }

    std::optional<bool> boolValue(const QString& key) const;
    // Integers, also from stored doubles; absent or another type gives nothing.
    std::optional<qint64> integerValue(const QString& key) const;
    std::optional<double> doubleValue(const QString& key) const;
    std::optional<QString> stringValue(const QString& key) const;
    std::optional<QByteArray> dataValue(const QString& key) const;
    std::optional<QDateTime> dateValue(const QString& key) const;
    std::optional<QStringList> stringArrayValue(const QString& key) const;

    void setBool(const QString& key, bool value) { set(key, QVariant(value)); }
    void setInteger(const QString& key, qint64 value) { set(key, QVariant(value)); }
    void setDouble(const QString& key, double value) { set(key, QVariant(value)); }
    void setString(const QString& key, const QString& value) { set(key, QVariant(value)); }
    void setData(const QString& key, const QByteArray& value) { set(key, QVariant(value)); }
    void setDate(const QString& key, const QDateTime& value) { set(key, QVariant(value)); }
    void setStringArray(const QString& key, const QStringList& value) { set(key, QVariant(value)); }
    void remove(const QString& key);

    // Deletes every key and the domain's file.
    void removeDomain();
    // False after a write failed; the values stay in memory.
    bool lastWriteSucceeded() const { return m_lastWriteOk; }

private:
    void set(const QString& key, const QVariant& value);
    void load();
    void write();

    QString m_domain;
    QHash<QString, QVariant> m_values;
    bool m_lastWriteOk = true;
};
