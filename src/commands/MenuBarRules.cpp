#include "commands/MenuBarRules.h"

#include <QCollator>
#include <QHash>
#include <QLocale>
#include <QSet>

#include <algorithm>

QList<MenuBarEntry> MenuBarRules::entries(const QList<TrayItem>& items)
{
    QList<MenuBarEntry> list;
    QHash<QString, int> indexInApp;
    for (const TrayItem& item : items) {
        MenuBarEntry entry;
        entry.appID = item.appId;
        const int index = indexInApp[item.appId]++;
        const QString key = item.itemId.isEmpty() ? QStringLiteral("item-%1").arg(index) : item.itemId;
        entry.id = item.appId + u':' + key;
        entry.name = item.appName.isEmpty() ? item.appId : item.appName;
        if (!item.title.isEmpty())
            entry.detail = item.title;
        else if (!item.toolTipTitle.isNull())
            entry.detail = item.toolTipTitle;
        else
            entry.detail = entry.name;
        QStringList present;
        for (const QString* value : {&item.title, &item.toolTipTitle, &item.toolTipText}) {
            if (!value->isNull())
                present.append(*value);
        }
        entry.notificationLabel = present.join(QStringLiteral(" · "));
        entry.item = item;
        entry.x = item.x;
        list.append(entry);
    }
    return list;
}

QList<MenuBarEntry> MenuBarRules::unique(const QList<MenuBarEntry>& entries)
{
    QList<MenuBarEntry> list;
    QSet<QString> seen;
    for (const MenuBarEntry& entry : entries) {
        if (!seen.contains(entry.id)) {
            seen.insert(entry.id);
            list.append(entry);
        }
    }
    // The user's locale; a bare C locale has no numeric collation, so the interface's German stands in.
    QLocale locale;
    if (locale.language() == QLocale::C)
        locale = QLocale(QLocale::German, QLocale::Germany);
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(list.begin(), list.end(), [&collator](const MenuBarEntry& a, const MenuBarEntry& b) {
        return collator.compare(a.name, b.name) < 0;
    });
    return list;
}

QStringList MenuBarRules::adopted(const QList<MenuBarEntry>& entries, double separatorLeftEdge)
{
    QStringList ids;
    for (const MenuBarEntry& entry : entries) {
        if (entry.x > 0 && entry.x < separatorLeftEdge)
            ids.append(entry.id);
    }
    return ids;
}

double MenuBarRules::hiddenSeparatorLength(std::optional<double> widestScreen)
{
    if (!widestScreen)
        return 4096;
    return std::max(2048.0, 2 * *widestScreen);
}
