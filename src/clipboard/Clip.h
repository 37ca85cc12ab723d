#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

// One entry of the clipboard history: a distinct text with a stable identity.
struct Clip
{
    QUuid id;
    QString text;
    // The last time this text was copied.
    QDateTime date;

    bool operator==(const Clip&) const = default;
};
