#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct DesktopEntry;

// An application the search and the favourites offer: a desktop entry that the desktop shows
// and whose program is there.
struct InstalledApp
{
    QString path;
    QString id;
    QString name;
    QStringList categories;
};

// The installed applications, read from the applications folders. Reading touches the disk:
// call it off the main thread, except at a first start without favourites.
class AppCatalog
{
public:
    // Every application of the folders, once per desktop-file id: the first folder that has an
    // id decides, also when it hides the application (that is how a user hides a system entry).
    static QList<InstalledApp> scan(const QStringList& folders, const QStringList& languages);
    // Whether the desktop would list the entry: an application, not hidden, with a program
    // that can be found.
    static bool offered(const DesktopEntry& entry);
    // The applications whose name contains `text`, ignoring case, ordered by name.
    static QList<InstalledApp> matching(const QList<InstalledApp>& apps, const QString& text);
};
