#pragma once

#include <QList>
#include <QString>

// The buttons above the tab bar, in their order, with their symbols and hints.
class HeaderButtons
{
public:
    enum Action { pin, menuApps, capture, settings, mini, close };

    struct Entry
    {
        Action action;
        QString symbol;
        QString hint;
    };

    // "Menüleisten-Apps" appears only while the menu-bar integration is on.
    static QList<Entry> entries(bool menuAppsEnabled);
    static QString menuSymbol();
    // The "…" menu: settings, then quit.
    static QString menuSettings();
    static QString menuQuit();
};
