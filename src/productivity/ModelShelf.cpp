// The shelf, the favourite apps and workspace launching: the model's members for them.
#include "model/Model.h"

#include "platform/Workspace.h"
#include "productivity/Productivity.h"
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
} // namespace

void Model::loadShelf()
{
    static const QStringList defaultApps = {QStringLiteral("/System/Applications/Safari.app"),
                                            QStringLiteral("/System/Applications/Notes.app"),
                                            QStringLiteral("/System/Applications/Utilities/Terminal.app")};
    m_apps = fileUrls(m_defaults.stringArrayValue(appsKey).value_or(defaultApps));
    m_files = fileUrls(m_defaults.stringArrayValue(filesKey).value_or(QStringList()));
}

void Model::addFiles(const QList<QUrl>& urls)
{
    QList<QUrl> files = m_files;
    QList<QUrl> apps = m_apps;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            continue;
        QList<QUrl>& target =
            url.fileName().section(u'.', -1).toLower() == u"app" && url.fileName().contains(u'.') ? apps
                                                                                                  : files;
        if (!target.contains(url))
            target.append(url);
    }
    setFiles(std::move(files));
    setApps(std::move(apps));
    persistShelf();
}

void Model::removeFile(const QUrl& url)
{
    QList<QUrl> files = m_files;
    files.removeAll(url);
    setFiles(std::move(files));
    persistShelf();
}

void Model::persistShelf()
{
    m_defaults.setStringArray(filesKey, filePaths(m_files));
    m_defaults.setStringArray(appsKey, filePaths(m_apps));
}

void Model::setFiles(QList<QUrl> files)
{
    assign(m_files, files, &Model::filesChanged);
}

void Model::setApps(QList<QUrl> apps)
{
    assign(m_apps, apps, &Model::appsChanged);
}

void Model::launchWorkspace(const WorkspacePreset& preset)
{
    const QString status = m_productivity->launchStatus(preset, m_platform.workspace);
    setMessage(status);
    addNotice(QStringLiteral("Arbeitsbereich: ") + preset.name, status);
}
