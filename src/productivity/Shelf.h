#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

#include <functional>

class Defaults;

// The files on the shelf ("Ablage") and the favourite apps, in the order they arrived; both are
// stored as path lists after every change. Main thread only.
class Shelf : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<QUrl> files READ files NOTIFY filesChanged)
    Q_PROPERTY(QList<QUrl> apps READ apps NOTIFY appsChanged)
public:
    // `defaultApps` gives the favourites of a first start; it is asked only when none are stored.
    Shelf(Defaults& defaults, const std::function<QStringList()>& defaultApps, QObject* parent = nullptr);

    const QList<QUrl>& files() const { return m_files; }
    const QList<QUrl>& apps() const { return m_apps; }

    // The one way onto the shelf: applications join the favourites, other local files the files;
    // what is already there stays where it is.
    void addFiles(const QList<QUrl>& urls);
    void removeFile(const QUrl& url);
    void removeApp(const QUrl& url);
    // Applications are desktop entries here ("….desktop"); bundles named "….app" count too.
    static bool isApplication(const QUrl& url);
    void persistShelf();

Q_SIGNALS:
    void filesChanged();
    void appsChanged();

private:
    Defaults& m_defaults;
    QList<QUrl> m_files;
    QList<QUrl> m_apps;
};
