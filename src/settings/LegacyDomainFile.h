#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

// The JSON document in which a settings domain used to live: one object, each key holding
// {"type": …, "value": …}. Read once, when the domain moves into its database.
namespace LegacyDomainFile {

struct Contents
{
    QHash<QString, QVariant> values;
    // Keys whose entry does not fit its type; the file keeps them.
    QStringList unreadable;
};

// The typed values, or nothing when the document is not a JSON object at all.
std::optional<Contents> read(const QByteArray& document);

} // namespace LegacyDomainFile
