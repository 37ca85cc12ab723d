#include "shell/HeaderButtons.h"

QList<HeaderButtons::Entry> HeaderButtons::entries(bool menuAppsEnabled)
{
    QList<Entry> entries{
        {pin, QStringLiteral("pin.fill"), QStringLiteral("Panel offen halten")},
        {menuApps, QStringLiteral("menubar.rectangle"), QStringLiteral("Menüleisten-Apps")},
        {capture, QStringLiteral("camera.viewfinder"),
         QStringLiteral("Screenshot, Bildschirmaufnahme & Kameraspiegel")},
        {settings, QStringLiteral("slider.horizontal.3"), QStringLiteral("Einstellungen")},
        {mini, QStringLiteral("rectangle.compress.vertical"), QStringLiteral("Mini-Modus")},
        {close, QStringLiteral("xmark"), QStringLiteral("Schließen · Escape")},
    };
    if (!menuAppsEnabled)
        entries.removeAt(1);
    return entries;
}

QString HeaderButtons::menuSymbol()
{
    return QStringLiteral("ellipsis");
}

QString HeaderButtons::menuSettings()
{
    return QStringLiteral("Einstellungen");
}

QString HeaderButtons::menuQuit()
{
    return QStringLiteral("Beenden");
}
