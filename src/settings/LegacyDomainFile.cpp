#include "settings/LegacyDomainFile.h"

#include "settings/Json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace LegacyDomainFile {

namespace {

// An integer must be whole and fit 64 bits; converting anything else would be undefined.
std::optional<qint64> wholeNumber(const QJsonValue& value)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (!std::isfinite(number) || std::trunc(number) != number || std::abs(number) >= 9.2e18)
        return std::nullopt;
    return qint64(number);
}

QVariant decode(const QJsonValue& entry)
{
    const QJsonObject object = entry.toObject();
    const QString type = object.value(u"type").toString();
    const QJsonValue value = object.value(u"value");
    if (type == u"bool" && value.isBool())
        return value.toBool();
    if (type == u"integer") {
        if (const auto number = wholeNumber(value))
            return *number;
        return {};
    }
    if (type == u"double" && value.isDouble())
        return value.toDouble();
    if (type == u"string" && value.isString())
        return value.toString();
    if (type == u"data") {
        if (const auto data = Json::decodeData(value))
            return *data;
        return {};
    }
    if (type == u"date") {
        if (const auto date = Json::decodeDate(value))
            return *date;
        return {};
    }
    if (type == u"strings") {
        if (const auto list = Json::decodeStringList(value))
            return *list;
        return {};
    }
    return {};
}

} // namespace

std::optional<Contents> read(const QByteArray& document)
{
    QJsonParseError error{};
    const QJsonDocument json = QJsonDocument::fromJson(document, &error);
    if (error.error != QJsonParseError::NoError || !json.isObject())
        return std::nullopt;
    Contents contents;
    const QJsonObject root = json.object();
    for (auto it = root.begin(); it != root.end(); ++it) {
        const QVariant value = decode(it.value());
        if (value.isValid())
            contents.values.insert(it.key(), value);
        else
            contents.unreadable.append(it.key());
    }
    return contents;
}

} // namespace LegacyDomainFile
