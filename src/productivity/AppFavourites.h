#pragma once

#include "productivity/AppCatalog.h"

#include <QStringList>

// The favourite apps of a first start: the desktop's web browser, text editor and terminal, as
// the desktop entries that are installed. What is not installed is left out.
class AppFavourites
{
public:
    // `defaultAppFolders`: where mimeapps.list files may be, most important first.
    static QStringList defaults(const QList<InstalledApp>& apps, const QStringList& defaultAppFolders);
    // The desktop-file ids the mimeapps.list files name as default for `mimeType`, in order.
    static QStringList defaultHandlers(const QStringList& defaultAppFolders, const QString& mimeType);
};
