#pragma once

#include <QString>

#include <optional>

// Stored data that could not be read: what it was, in German, and where its original bytes were
// kept. Without a copy the original stays where it is and is not written over.
struct StorageDamage
{
    QString what;
    std::optional<QString> copy;

    bool operator==(const StorageDamage&) const = default;
};
