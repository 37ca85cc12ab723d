#include "productivity/Shelf.h"

#include "settings/Defaults.h"

#include <QSet>

namespace {
const QString filesKey = QStringLiteral("files");
const QString appsKey = QStringLiteral("apps");

QList<QUrl> fileUrls(const QStringList& paths)
{
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    return urls;
}

QStringList filePaths(const QList<QUrl>& urls)
{
    QStringList paths;
    for (const QUrl& url : urls)
        paths.append(url.toLocalFile());
    return paths;
}

} // namespace

bool Shelf::isApplication(const QUrl& url)
{
    const QString name = url.fileName();
    if (!name.contains(u'.'))
        return false;
    const QString extension = name.section(u'.', -1).toLower();
    return extension == u"desktop" || extension == u"app";
}

Shelf::Shelf(Defaults& defaults, const std::function<QStringList()>& defaultApps, QObject* parent)
    : QObject(parent), m_defaults(defaults)
{
    // A list of another type reads as missing; its original is kept aside before the shelf's
    // next change replaces it.
    const auto apps = defaults.stringArrayValue(appsKey);
    if (!apps && defaults.contains(appsKey))
        defaults.keepUnreadable(appsKey, QStringLiteral("die Lieblings-Apps"));
    const auto files = defaults.stringArrayValue(filesKey);
    if (!files && defaults.contains(filesKey))
        defaults.keepUnreadable(filesKey, QStringLiteral("die Dateien der Ablage"));
    m_apps = fileUrls(apps ? *apps : (defaultApps ? defaultApps() : QStringList()));
    m_files = fileUrls(files.value_or(QStringList()));
}

void Shelf::addFiles(const QList<QUrl>& urls)
{
    QList<QUrl> files = m_files;
    QList<QUrl> apps = m_apps;
    // Sets keep a drop of thousands of files from comparing each with every other.
    QSet<QUrl> knownFiles(files.cbegin(), files.cend());
    QSet<QUrl> knownApps(apps.cbegin(), apps.cend());
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            continue;
        const bool application = isApplication(url);
        QSet<QUrl>& known = application ? knownApps : knownFiles;
        if (known.contains(url))
            continue;
        known.insert(url);
        (application ? apps : files).append(url);
    }
    const bool filesMoved = files != m_files;
    const bool appsMoved = apps != m_apps;
    m_files = std::move(files);
    m_apps = std::move(apps);
    persistShelf();
    if (filesMoved)
        Q_EMIT filesChanged();
    if (appsMoved)
        Q_EMIT appsChanged();
}

void Shelf::removeFile(const QUrl& url)
{
    if (m_files.removeAll(url) > 0)
        Q_EMIT filesChanged();
    persistShelf();
}

void Shelf::removeApp(const QUrl& url)
{
    if (m_apps.removeAll(url) > 0)
        Q_EMIT appsChanged();
    persistShelf();
}

void Shelf::persistShelf()
{
    m_defaults.setStringArray(filesKey, filePaths(m_files));
    m_defaults.setStringArray(appsKey, filePaths(m_apps));
}
