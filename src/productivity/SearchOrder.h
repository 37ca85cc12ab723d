#pragma once

#include <QCollator>
#include <QList>
#include <QString>

#include <algorithm>

// The order of search results: by name as the user's language sorts, numbers by their value
// ("Datei 2" before "Datei 10"), case ignored.
namespace SearchOrder {

QCollator collator();

template <typename Item, typename Name> void sortByName(QList<Item>& items, Name name)
{
    const QCollator order = collator();
    std::stable_sort(items.begin(), items.end(),
                     [&](const Item& a, const Item& b) { return order.compare(name(a), name(b)) < 0; });
}

} // namespace SearchOrder
