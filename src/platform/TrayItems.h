#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

// One status item of another application, as the tray host sees it.
struct TrayItem
{
    // Where the item lives: its bus name and object path.
    QString service;
    QString path;
    // The item's own id ("Id"), title ("Title") and tool tip (title and description); a missing
    // value is a null string, an empty one an empty string.
    QString itemId;
    QString title;
    QString toolTipTitle;
    QString toolTipText;
    // The owning application: its desktop-file id and display name, where known.
    qint64 pid = 0;
    QString appId;
    QString appName;
    // Whether the item exports a menu of its own.
    bool hasMenu = false;
    // Horizontal position on screen where the platform knows it, else 0.
    double x = 0;
};
Q_DECLARE_METATYPE(TrayItem)

// One entry of a status item's menu.
struct TrayMenuEntry
{
    int id = 0;
    QString label;
    bool enabled = true;
    bool separator = false;
    QList<TrayMenuEntry> children;
};
