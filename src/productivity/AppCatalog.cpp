#include "productivity/AppCatalog.h"

#include "productivity/DesktopEntry.h"
#include "productivity/SearchOrder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

namespace {

bool programFound(const QString& program)
{
    if (program.isEmpty())
        return false;
    if (program.startsWith(u'/'))
        return QFileInfo(program).isExecutable();
    return !QStandardPaths::findExecutable(program).isEmpty();
}

} // namespace

bool AppCatalog::offered(const DesktopEntry& entry)
{
    if (!entry.application || entry.hidden || entry.noDisplay)
        return false;
    if (!entry.tryExec.isEmpty() && !programFound(entry.tryExec))
        return false;
    return programFound(DesktopEntry::program(entry.exec));
}

QList<InstalledApp> AppCatalog::scan(const QStringList& folders, const QStringList& languages)
{
    QList<InstalledApp> apps;
    QSet<QString> seen;
    for (const QString& folder : folders) {
        const QDir root(folder);
        QDirIterator it(folder, {QStringLiteral("*.desktop")}, QDir::Files | QDir::Readable,
                        QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
        while (it.hasNext()) {
            const QString path = it.next();
            const QString id = root.relativeFilePath(path).replace(u'/', u'-');
            if (seen.contains(id))
                continue;
            seen.insert(id);
            const auto entry = DesktopEntry::read(path, languages);
            if (!entry || !offered(*entry))
                continue;
            apps.append(InstalledApp{path, id, entry->name, entry->categories});
        }
    }
    return apps;
}

QList<InstalledApp> AppCatalog::matching(const QList<InstalledApp>& apps, const QString& text)
{
    QList<InstalledApp> found;
    for (const InstalledApp& app : apps) {
        if (app.name.contains(text, Qt::CaseInsensitive))
            found.append(app);
    }
    SearchOrder::sortByName(found, [](const InstalledApp& app) { return app.name; });
    return found;
}
