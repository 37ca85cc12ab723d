#include "productivity/AppFavourites.h"

#include <QDir>
#include <QFile>

namespace {

const InstalledApp* byId(const QList<InstalledApp>& apps, const QString& id)
{
    for (const InstalledApp& app : apps) {
        if (app.id == id)
            return &app;
    }
    return nullptr;
}

const InstalledApp* byCategory(const QList<InstalledApp>& apps, const QString& category)
{
    for (const InstalledApp& app : apps) {
        if (app.categories.contains(category))
            return &app;
    }
    return nullptr;
}

// The user's choice for one of the types, else the first application of the category.
const InstalledApp* choose(const QList<InstalledApp>& apps, const QStringList& folders,
                           const QStringList& mimeTypes, const QString& category)
{
    for (const QString& type : mimeTypes) {
        for (const QString& id : AppFavourites::defaultHandlers(folders, type)) {
            if (const InstalledApp* app = byId(apps, id))
                return app;
        }
    }
    return byCategory(apps, category);
}

} // namespace

QStringList AppFavourites::defaultHandlers(const QStringList& defaultAppFolders, const QString& mimeType)
{
    QStringList ids;
    for (const QString& folder : defaultAppFolders) {
        QFile file(QDir(folder).filePath(QStringLiteral("mimeapps.list")));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        bool inDefaults = false;
        const QString text = QString::fromUtf8(file.readAll());
        for (QStringView line : QStringView(text).split(u'\n')) {
            line = line.trimmed();
            if (line.startsWith(u'[')) {
                inDefaults = line == u"[Default Applications]";
                continue;
            }
            const qsizetype equals = line.indexOf(u'=');
            if (!inDefaults || equals <= 0 || line.left(equals).trimmed() != mimeType)
                continue;
            const QStringView value = line.mid(equals + 1);
            for (QStringView id : value.split(u';', Qt::SkipEmptyParts)) {
                if (!ids.contains(id.trimmed().toString()))
                    ids.append(id.trimmed().toString());
            }
        }
    }
    return ids;
}

QStringList AppFavourites::defaults(const QList<InstalledApp>& apps, const QStringList& defaultAppFolders)
{
    const InstalledApp* chosen[] = {
        choose(apps, defaultAppFolders,
               {QStringLiteral("x-scheme-handler/https"), QStringLiteral("x-scheme-handler/http")},
               QStringLiteral("WebBrowser")),
        choose(apps, defaultAppFolders, {QStringLiteral("text/plain")}, QStringLiteral("TextEditor")),
        choose(apps, defaultAppFolders, {}, QStringLiteral("TerminalEmulator")),
    };
    QStringList paths;
    for (const InstalledApp* app : chosen) {
        if (app && !paths.contains(app->path))
            paths.append(app->path);
    }
    return paths;
}
