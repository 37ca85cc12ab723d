#include "focus/Notice.h"

#include "settings/Json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QByteArray Notice::encodeList(const QList<Notice>& notices)
{
    QJsonArray array;
    for (const Notice& notice : notices) {
        QJsonObject object;
        object[u"id"] = Json::encodeUuid(notice.id);
        object[u"title"] = notice.title;
        object[u"detail"] = notice.detail;
        object[u"date"] = Json::encodeDate(notice.date);
        array.append(object);
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<Notice>> Notice::decodeList(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return std::nullopt;
    QList<Notice> notices;
    const QJsonArray array = document.array();
    notices.reserve(array.size());
    for (const QJsonValue& value : array) {
        const QJsonObject object = value.toObject();
        const auto id = Json::decodeUuid(object.value(u"id"));
        const auto title = Json::requiredString(object, u"title"_qs);
        const auto detail = Json::requiredString(object, u"detail"_qs);
        const auto date = Json::decodeDate(object.value(u"date"));
        if (!value.isObject() || !id || !title || !detail || !date)
            return std::nullopt;
        notices.append(Notice{*id, *title, *detail, *date});
    }
    return notices;
}
