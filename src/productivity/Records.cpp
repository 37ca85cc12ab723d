#include "productivity/QuickNote.h"
#include "productivity/WorkspacePreset.h"
#include "settings/Json.h"

#include <QJsonArray>

QJsonObject QuickNote::toJson() const
{
    return {{u"id"_qs, Json::encodeUuid(id)}, {u"text"_qs, text}, {u"date"_qs, Json::encodeDate(date)}};
}

std::optional<QuickNote> QuickNote::fromJson(const QJsonObject& object)
{
    const auto id = Json::decodeUuid(object.value(u"id"));
    const auto text = Json::requiredString(object, u"text"_qs);
    const auto date = Json::decodeDate(object.value(u"date"));
    if (!id || !text || !date)
        return std::nullopt;
    return QuickNote{*id, *text, *date};
}

QJsonObject WorkspacePreset::toJson() const
{
    return {{u"id"_qs, Json::encodeUuid(id)},
            {u"name"_qs, name},
            {u"paths"_qs, QJsonArray::fromStringList(paths)}};
}

std::optional<WorkspacePreset> WorkspacePreset::fromJson(const QJsonObject& object)
{
    const auto id = Json::decodeUuid(object.value(u"id"));
    const auto name = Json::requiredString(object, u"name"_qs);
    const QJsonValue paths = object.value(u"paths");
    if (!id || !name || !paths.isArray())
        return std::nullopt;
    QStringList list;
    for (const QJsonValue& path : paths.toArray()) {
        if (!path.isString())
            return std::nullopt;
        list.append(path.toString());
    }
    return WorkspacePreset{*id, *name, list};
}
