#pragma once

#include <QString>
#include <QUrl>

// Fixed texts of the overview, the mini overview, the header and the shelf page.
class OverviewTexts
{
public:
    static QString weatherHeader();
    static QString miniHeadline();
    static QString miniSearchHint();
    static QString miniExpandHint();

    static QString shelfEmptyTitle();
    static QString shelfEmptyDetail();
    static QString shelfAppsHeader();
    // A file's name; an application bundle without its extension.
    static QString shelfItemName(const QUrl& url);
};
