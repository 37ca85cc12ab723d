#pragma once

#include <QString>
#include <QUrl>

// Texts of the shelf page ("Ablage").
class ShelfTexts
{
public:
    static QString emptyTitle();
    static QString emptyDetail();
    static QString appsHeader();
    static QString shareAll();
    static QString addFiles();
    static QString addApps();
    static QString appFilter();
    static QString removeApp();
    // Sharing.
    static QString sharingOpen();
    static QString sharingEmpty();
    static QString sharingUnavailable();
    static QString sharingEnded(const QString& error);
    // Opening and adding items.
    static QString itemGone(const QString& name);
    static QString notOpened();
    static QString notRevealed();
    static QString addedToShelf();
    // A file's name; an application bundle without its extension.
    static QString itemName(const QUrl& url);
};
