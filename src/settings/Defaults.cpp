#include "settings/Defaults.h"

#include "common/Log.h"
#include "settings/Json.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

// Each value is stored with its type so that an integer stays an integer and data stays data.
QJsonObject encode(const QVariant& value)
{
    QJsonObject object;
    switch (value.typeId()) {
    case QMetaType::Bool:
        object[u"type"] = u"bool"_qs;
        object[u"value"] = value.toBool();
        break;
    case QMetaType::LongLong:
    case QMetaType::Int:
        object[u"type"] = u"integer"_qs;
        object[u"value"] = value.toLongLong();
        break;
    case QMetaType::Double:
        object[u"type"] = u"double"_qs;
        object[u"value"] = value.toDouble();
        break;
    case QMetaType::QString:
        object[u"type"] = u"string"_qs;
        object[u"value"] = value.toString();
        break;
    case QMetaType::QByteArray:
        object[u"type"] = u"data"_qs;
        object[u"value"] = Json::encodeData(value.toByteArray());
        break;
    case QMetaType::QDateTime:
        object[u"type"] = u"date"_qs;
        object[u"value"] = Json::encodeDate(value.toDateTime());
        break;
    case QMetaType::QStringList:
        object[u"type"] = u"strings"_qs;
        object[u"value"] = QJsonArray::fromStringList(value.toStringList());
        break;
    default:
        break;
    }
    return object;
}

QVariant decode(const QJsonObject& object)
{
    const QString type = object.value(u"type").toString();
    const QJsonValue value = object.value(u"value");
    if (type == u"bool" && value.isBool())
        return value.toBool();
    if (type == u"integer" && value.isDouble())
        return qint64(value.toDouble());
    if (type == u"double" && value.isDouble())
        return value.toDouble();
    if (type == u"string" && value.isString())
        return value.toString();
    if (type == u"data") {
        if (auto data = Json::decodeData(value))
            return *data;
    }
    if (type == u"date") {
        if (auto date = Json::decodeDate(value))
            return *date;
    }
    if (type == u"strings" && value.isArray()) {
        QStringList list;
        for (const QJsonValue& item : value.toArray())
            list.append(item.toString());
        return list;
    }
    return {};
}

} // namespace

Defaults::Defaults(QString domain) : m_domain(std::move(domain))
{
    load();
}

QString Defaults::filePath() const
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return base + QStringLiteral("/Brenlow/") + m_domain + QStringLiteral(".json");
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
    if (value.typeId() == QMetaType::Double)
        return qint64(value.toDouble());
    return std::nullopt;
}

std::optional<double> Defaults::doubleValue(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::LongLong)
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
    m_values.insert(key, value);
    write();
}

void Defaults::remove(const QString& key)
{
    if (m_values.remove(key) > 0)
        write();
}

void Defaults::removeDomain()
{
    m_values.clear();
    QFile::remove(filePath());
}

void Defaults::load()
{
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    for (auto it = root.begin(); it != root.end(); ++it) {
        const QVariant value = decode(it.value().toObject());
        if (value.isValid())
            m_values.insert(it.key(), value);
    }
}

void Defaults::write()
{
    QJsonObject root;
    for (auto it = m_values.cbegin(); it != m_values.cend(); ++it)
        root.insert(it.key(), encode(it.value()));
    const QString path = filePath();
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    m_lastWriteOk = file.open(QIODevice::WriteOnly) &&
                    file.write(QJsonDocument(root).toJson(QJsonDocument::Compact)) >= 0 && file.commit();
    if (!m_lastWriteOk)
        qCWarning(lcSettings) << "settings domain" << m_domain << "not written:" << file.errorString();
}
