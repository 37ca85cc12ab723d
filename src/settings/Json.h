#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

// The record encoding shared by every stored list: dates as seconds since 2001-01-01 UTC,
// UUIDs upper-case with hyphens, data as base64.
namespace Json {

QDateTime referenceDate();
double encodeDate(const QDateTime& date);
QDateTime decodeDate(double seconds);
// A number of seconds within the years 1 to 9999, or nothing.
std::optional<QDateTime> decodeDate(const QJsonValue& value);

QString encodeUuid(const QUuid& uuid);
std::optional<QUuid> decodeUuid(const QString& text);
std::optional<QUuid> decodeUuid(const QJsonValue& value);

QString encodeData(const QByteArray& data);
std::optional<QByteArray> decodeData(const QJsonValue& value);

// An array of strings only; anything else gives nothing.
std::optional<QStringList> decodeStringList(const QJsonValue& value);

// A required string field; absent or another type gives nothing.
std::optional<QString> requiredString(const QJsonObject& object, const QString& key);

} // namespace Json
