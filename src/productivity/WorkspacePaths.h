#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

// How a workspace names its items: one cleaned absolute path each, so "/srv/projekt/" and
// "/srv/projekt" are the same folder, kept once and in the order chosen.
class WorkspacePaths
{
public:
    static QString clean(const QString& path);
    // The local files among the URLs as cleaned paths, without repeats.
    static QStringList fromUrls(const QList<QUrl>& urls);
    // Cleaned paths without repeats.
    static QStringList unique(const QStringList& paths);
    // `current` followed by the added items it does not have yet.
    static QList<QUrl> merged(const QList<QUrl>& current, const QList<QUrl>& added);
    // The item's name as the user knows it: the last part of the path.
    static QString name(const QString& path);
    // Which of the paths exist. Blocking: it asks the file system.
    static QStringList existing(const QStringList& paths);
    // Where the chooser starts: the desktop's applications, as a Mac starts in its
    // Applications folder.
    static QString chooserStart();
};
