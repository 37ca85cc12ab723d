#include "productivity/Shelf.h"

#include "settings/Defaults.h"

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

bool isApplication(const QUrl& url)
{
    const QString name = url.fileName();
    return name.contains(u'.') && name.section(u'.', -1).toLower() == u"app";
}
} // namespace

Shelf::Shelf(Defaults& defaults, QObject* parent) : QObject(parent), m_defaults(defaults)
{
    static const QStringList defaultApps = {QStringLiteral("/System/Applications/Safari.app"),
                                            QStringLiteral("/System/Applications/Notes.app"),
                                            QStringLiteral("/System/Applications/Utilities/Terminal.app")};
    // A list of another type reads as missing; its original is kept aside before the shelf's
    // next change replaces it.
    const auto apps = defaults.stringArrayValue(appsKey);
    if (!apps && defaults.contains(appsKey))
        defaults.keepUnreadable(appsKey, QStringLiteral("die Lieblings-Apps"));
    const auto files = defaults.stringArrayValue(filesKey);
    if (!files && defaults.contains(filesKey))
        defaults.keepUnreadable(filesKey, QStringLiteral("die Dateien der Ablage"));
    m_apps = fileUrls(apps.value_or(defaultApps));
    m_files = fileUrls(files.value_or(QStringList()));
}

void Shelf::addFiles(const QList<QUrl>& urls)
{
    QList<QUrl> files = m_files;
    QList<QUrl> apps = m_apps;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            continue;
        QList<QUrl>& target = isApplication(url) ? apps : files;
        if (!target.contains(url))
            target.append(url);
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

void Shelf::persistShelf()
{
    m_defaults.setStringArray(filesKey, filePaths(m_files));
    m_defaults.setStringArray(appsKey, filePaths(m_apps));
}
