#include "productivity/AppCatalog.h"

#include "productivity/DesktopEntry.h"
#include "productivity/SearchOrder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QStandardPaths>

namespace {

// Many entries start the same program (sh, env, flatpak): a scan looks each name up once.
using ProgramCache = QHash<QString, bool>;

bool programFound(const QString& program, ProgramCache& cache)
{
    if (program.isEmpty())
        return false;
    const auto known = cache.constFind(program);
    if (known != cache.cend())
        return *known;
    const bool there = program.startsWith(u'/') ? QFileInfo(program).isExecutable()
                                                : !QStandardPaths::findExecutable(program).isEmpty();
    cache.insert(program, there);
    return there;
}

bool offeredWith(const DesktopEntry& entry, ProgramCache& cache)
{
    if (!entry.application || entry.hidden || entry.noDisplay)
        return false;
    if (!entry.tryExec.isEmpty() && !programFound(entry.tryExec, cache))
        return false;
    return programFound(DesktopEntry::program(entry.exec), cache);
}

} // namespace

bool AppCatalog::offered(const DesktopEntry& entry)
{
    ProgramCache cache;
    return offeredWith(entry, cache);
}

QList<InstalledApp> AppCatalog::scan(const QStringList& folders, const QStringList& languages)
{
    QList<InstalledApp> apps;
    QSet<QString> seen;
    ProgramCache programs;
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
            if (!entry || !offeredWith(*entry, programs))
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
