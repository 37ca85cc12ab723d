#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include <optional>

struct QuickNote
{
    QUuid id;
    QString text;
    QDateTime date;

    bool operator==(const QuickNote&) const = default;
    QJsonObject toJson() const;
    static std::optional<QuickNote> fromJson(const QJsonObject& object);
};
