#pragma once

#include "platform/TrayItems.h"

#include <QList>
#include <QString>

// One remotely operable status item of another application.
struct MenuBarEntry
{
    // appID, a colon, then the item's own id or "item-" and its index among its app's items.
    QString id;
    QString appID;
    // The owning application's name, or its id when it has none.
    QString name;
    // The item's title, else its tool tip's title, else the application's name.
    QString detail;
    // The item's title, tool-tip title and tool-tip text that are present, joined with " · ".
    QString notificationLabel;
    // The status item itself, kept for opening its menu.
    TrayItem item;
    double x = 0;
};
Q_DECLARE_METATYPE(MenuBarEntry)
