#include "settings/Json.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>

namespace Json {

QDateTime referenceDate()
{
    return QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
}

double encodeDate(const QDateTime& date)
{
    return double(referenceDate().msecsTo(date)) / 1000.0;
}

QDateTime decodeDate(double seconds)
{
    return referenceDate().addMSecs(qint64(std::llround(seconds * 1000.0)));
}

std::optional<QDateTime> decodeDate(const QJsonValue& value)
{
    // Years 1 to 9999: anything further out is no date a person made, and far enough out the
    // conversion to milliseconds would overflow.
    constexpr double earliest = -63'113'904'000.0; // 0001-01-01
    constexpr double latest = 252'423'993'600.0;   // 10000-01-01
    if (!value.isDouble())
        return std::nullopt;
    const double seconds = value.toDouble();
    if (!std::isfinite(seconds) || seconds < earliest || seconds >= latest)
        return std::nullopt;
    return decodeDate(seconds);
}

QString encodeUuid(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> decodeUuid(const QString& text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QUuid uuid = QUuid::fromString(text);
    if (uuid.isNull())
        return std::nullopt;
    return uuid;
}

std::optional<QUuid> decodeUuid(const QJsonValue& value)
{
    if (!value.isString())
        return std::nullopt;
    return decodeUuid(value.toString());
}

QString encodeData(const QByteArray& data)
{
    return QString::fromLatin1(data.toBase64());
}

std::optional<QByteArray> decodeData(const QJsonValue& value)
{
    if (!value.isString())
        return std::nullopt;
    auto result =
        QByteArray::fromBase64Encoding(value.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!result)
        return std::nullopt;
    return *result;
}

std::optional<QStringList> decodeStringList(const QJsonValue& value)
{
    if (!value.isArray())
        return std::nullopt;
    QStringList list;
    for (const QJsonValue& item : value.toArray()) {
        if (!item.isString())
            return std::nullopt;
        list.append(item.toString());
    }
    return list;
}

std::optional<QString> requiredString(const QJsonObject& object, const QString& key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        return std::nullopt;
    return value.toString();
}

} // namespace Json
