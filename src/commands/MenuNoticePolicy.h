#pragma once

#include <QHash>
#include <QString>

#include <optional>

// Unread counters in a status item's texts: "3 unread messages", "Unread messages: 4",
// "3 neue Nachrichten". The first value seen for an item is only a baseline.
struct MenuNoticePolicy
{
    // The last recognised counter per watched entry id.
    QHash<QString, int> counts;

    // The counter in a label, by the first of the three patterns that matches.
    static std::optional<int> count(const QString& label);
    // Records the label's counter for an entry; answers the new count when it rose.
    std::optional<int> update(const QString& id, const QString& label);
};
