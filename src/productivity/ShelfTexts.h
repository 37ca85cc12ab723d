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
    // A file's name; an application bundle without its extension.
    static QString itemName(const QUrl& url);
};
