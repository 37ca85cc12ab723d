#pragma once

#include "platform/LoginItems.h"

#include <QStringList>

// Start at login through XDG autostart: "brenlow.desktop" in the user's autostart folder,
// pointing at the real path of this binary. Off removes the file, or hides a copy that the
// system's autostart folders provide. Never writes through a symbolic link.
class LinuxLoginItems final : public LoginItems
{
public:
    // Folders: the user's autostart folder and the system's (read only), the program to start, and
    // the user's data folder that holds the launcher's entry and icon.
    LinuxLoginItems(QString userFolder = defaultUserFolder(),
                    QStringList systemFolders = defaultSystemFolders(), QString program = defaultProgram(),
                    QString dataFolder = defaultDataFolder());

    LoginItemStatus status() const override;
    std::optional<QString> registerItem() override;
    std::optional<QString> unregisterItem() override;
    std::optional<QString> installLauncher() override;

    QString entryPath() const;

    static QString defaultUserFolder();
    static QStringList defaultSystemFolders();
    static QString defaultProgram();
    static QString defaultDataFolder();
    static constexpr const char* fileName = "brenlow.desktop";

    // The desktop entry that starts `program`.
    static QByteArray entry(const QString& program, bool hidden = false);
    // The launcher's entry: the same program, listed among the utilities.
    static QByteArray launcherEntry(const QString& program);
    // One argument of an Exec line, quoted where the Desktop Entry rules ask for it and escaped
    // as a string value.
    static QString execArgument(const QString& argument);
    // The program an Exec value starts (the first argument, unquoted); empty when malformed.
    static QString execProgram(const QString& exec);
    // Writes `contents` to `path` atomically; refuses a symbolic link. The failure's text.
    static std::optional<QString> writeAtomically(const QString& path, const QByteArray& contents);

private:
    // The entry that counts: the user's, else the first of the system's.
    QString effectiveEntry() const;

    QString m_userFolder;
    QStringList m_systemFolders;
    QString m_program;
    QString m_dataFolder;
};
