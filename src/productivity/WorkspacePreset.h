#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

// A named set of apps, folders and documents that open together.
struct WorkspacePreset
{
    QUuid id;
    QString name;
    QStringList paths;

    bool operator==(const WorkspacePreset&) const = default;
    QJsonObject toJson() const;
    static std::optional<WorkspacePreset> fromJson(const QJsonObject& object);
};
