#include "productivity/WorkspacePaths.h"

#include <QDir>
#include <QFileInfo>

QString WorkspacePaths::clean(const QString& path)
{
    return QDir::cleanPath(path);
}

QStringList WorkspacePaths::fromUrls(const QList<QUrl>& urls)
{
    QStringList paths;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            continue;
        const QString path = clean(url.toLocalFile());
        if (!path.isEmpty() && !paths.contains(path))
            paths.append(path);
    }
    return paths;
}

QStringList WorkspacePaths::unique(const QStringList& paths)
{
    QStringList cleaned;
    for (const QString& path : paths) {
        const QString one = clean(path);
        if (!one.isEmpty() && !cleaned.contains(one))
            cleaned.append(one);
    }
    return cleaned;
}

QList<QUrl> WorkspacePaths::merged(const QList<QUrl>& current, const QList<QUrl>& added)
{
    QList<QUrl> urls;
    for (const QString& path : fromUrls(current + added))
        urls.append(QUrl::fromLocalFile(path));
    return urls;
}

QString WorkspacePaths::name(const QString& path)
{
    const QString cleaned = clean(path);
    const QString last = QFileInfo(cleaned).fileName();
    // The root folder has no last part.
    return last.isEmpty() ? cleaned : last;
}

QStringList WorkspacePaths::existing(const QStringList& paths)
{
    QStringList found;
    for (const QString& path : paths) {
        if (QFileInfo::exists(path))
            found.append(path);
    }
    return found;
}

QString WorkspacePaths::chooserStart()
{
    return QStringLiteral("/usr/share/applications");
}
