#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// One application as its desktop entry describes it (the freedesktop.org format).
struct DesktopEntry
{
    QString path;
    // The desktop-file id: the path below the applications folder, "/" written as "-".
    QString id;
    // The name in the user's language where the entry has one.
    QString name;
    QString exec;
    QString tryExec;
    QStringList categories;
    bool application = false;
    // Entries the desktop keeps out of menus and searches.
    bool hidden = false;
    bool noDisplay = false;

    // Reads the [Desktop Entry] group; nothing when the file cannot be read or has no such group
    // or no name. `languages` are tried in order ("de_DE", "de") before the plain name.
    static std::optional<DesktopEntry> read(const QString& path, const QStringList& languages);
    // The user's languages as desktop entries name them, most specific first.
    static QStringList userLanguages();
    // The program an Exec line starts: its first word without quotes.
    static QString program(const QString& exec);
};
