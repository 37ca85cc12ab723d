#pragma once

#include <QList>
#include <QString>

#include <algorithm>

// The order of search results: by name as the user's language sorts, numbers by their value
// ("Datei 2" before "Datei 10"), case ignored.
namespace SearchOrder {

// Negative, zero or positive, as a before, equal to or after b.
int compare(const QString& a, const QString& b);

template <typename Item, typename Name> void sortByName(QList<Item>& items, Name name)
{
    std::stable_sort(items.begin(), items.end(),
                     [&](const Item& a, const Item& b) { return compare(name(a), name(b)) < 0; });
}

} // namespace SearchOrder
