#include "platform/linux/LinuxLoginItems.h"

#include "common/Log.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace {
// The keys of the [Desktop Entry] group that decide whether it starts.
struct EntryKeys
{
    QString exec;
    bool hidden = false;
    bool gnomeDisabled = false;
    QStringList onlyShowIn;
    QStringList notShowIn;
};

EntryKeys readEntry(const QString& path)
{
    EntryKeys keys;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return keys;
    bool inMainGroup = false;
    // Desktop entries are small; a huge file is no entry of ours and is read only in part.
    const QList<QByteArray> lines = file.read(64 * 1024).split('\n');
    for (const QByteArray& raw : lines) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith('[')) {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (!inMainGroup || equals <= 0)
            continue;
        const QByteArray key = line.left(equals).trimmed();
        const QString value = QString::fromUtf8(line.mid(equals + 1).trimmed());
        if (key == "Exec")
            keys.exec = value;
        else if (key == "Hidden")
            keys.hidden = value == u"true";
        else if (key == "X-GNOME-Autostart-enabled")
            keys.gnomeDisabled = value == u"false";
        else if (key == "OnlyShowIn")
            keys.onlyShowIn = value.split(QLatin1Char(';'), Qt::SkipEmptyParts);
        else if (key == "NotShowIn")
            keys.notShowIn = value.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    }
    return keys;
}

bool shownOnThisDesktop(const EntryKeys& keys)
{
    const QStringList desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    for (const QString& desktop : desktops) {
        if (keys.notShowIn.contains(desktop))
            return false;
    }
    if (keys.onlyShowIn.isEmpty())
        return true;
    for (const QString& desktop : desktops) {
        if (keys.onlyShowIn.contains(desktop))
            return true;
    }
    return false;
}
} // namespace

LinuxLoginItems::LinuxLoginItems(QString userFolder, QStringList systemFolders, QString program,
                                 QString dataFolder)
    : m_userFolder(std::move(userFolder)), m_systemFolders(std::move(systemFolders)),
      m_program(std::move(program)), m_dataFolder(std::move(dataFolder))
{}

QString LinuxLoginItems::defaultDataFolder()
{
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty() || !QDir::isAbsolutePath(data))
        data = QDir::homePath() + QStringLiteral("/.local/share");
    return data;
}

QByteArray LinuxLoginItems::launcherEntry(const QString& program)
{
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Brenlow\n"
           "Comment=Werkzeuge am oberen Bildschirmrand\n"
           "Icon=brenlow\n"
           "Terminal=false\n"
           "Categories=Utility;\n"
           "Exec=" +
           execArgument(program).toUtf8() + '\n';
}

std::optional<QString> LinuxLoginItems::installLauncher()
{
    const QString applications = m_dataFolder + QStringLiteral("/applications");
    const QString path = applications + QLatin1Char('/') + QLatin1String(fileName);
    const QByteArray wanted = launcherEntry(m_program);
    QFile current(path);
    const bool upToDate = current.open(QIODevice::ReadOnly) && current.read(wanted.size() + 1) == wanted;
    current.close();
    if (!upToDate) {
        if (!QDir().mkpath(applications))
            return QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(applications);
        if (const auto failure = writeAtomically(path, wanted))
            return failure;
    }
    const QString icons = m_dataFolder + QStringLiteral("/icons/hicolor/scalable/apps");
    const QString icon = icons + QStringLiteral("/brenlow.svg");
    QFile source(QStringLiteral(":/brenlow/brenlow.svg"));
    if (QFileInfo::exists(icon) || !source.open(QIODevice::ReadOnly))
        return std::nullopt;
    if (!QDir().mkpath(icons))
        return QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(icons);
    return writeAtomically(icon, source.readAll());
}

QString LinuxLoginItems::defaultUserFolder()
{
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty() || !QDir::isAbsolutePath(config))
        config = QDir::homePath() + QStringLiteral("/.config");
    return config + QStringLiteral("/autostart");
}

QStringList LinuxLoginItems::defaultSystemFolders()
{
    QString dirs = qEnvironmentVariable("XDG_CONFIG_DIRS");
    if (dirs.isEmpty())
        dirs = QStringLiteral("/etc/xdg");
    QStringList folders;
    for (const QString& dir : dirs.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        folders.append(dir + QStringLiteral("/autostart"));
    return folders;
}

QString LinuxLoginItems::defaultProgram()
{
    // The real file, so that a symbolic link moved later does not strand the entry.
    const QString path = QCoreApplication::applicationFilePath();
    const QString real = QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? path : real;
}

QString LinuxLoginItems::entryPath() const
{
    return m_userFolder + QLatin1Char('/') + QLatin1String(fileName);
}

QString LinuxLoginItems::effectiveEntry() const
{
    if (QFileInfo::exists(entryPath()) || QFileInfo(entryPath()).isSymLink())
        return entryPath();
    for (const QString& folder : m_systemFolders) {
        const QString path = folder + QLatin1Char('/') + QLatin1String(fileName);
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

LoginItemStatus LinuxLoginItems::status() const
{
    const QString path = effectiveEntry();
    if (path.isEmpty())
        return LoginItemStatus::notRegistered;
    const EntryKeys keys = readEntry(path);
    if (keys.hidden)
        return LoginItemStatus::notRegistered;
    const QString program = execProgram(keys.exec);
    const QString found =
        program.contains(QLatin1Char('/')) ? program : QStandardPaths::findExecutable(program);
    if (found.isEmpty() || !QFileInfo(found).isExecutable())
        return LoginItemStatus::notFound;
    // The desktop's own switch for this entry, or an entry meant for other desktops.
    if (keys.gnomeDisabled || !shownOnThisDesktop(keys))
        return LoginItemStatus::requiresApproval;
    return LoginItemStatus::enabled;
}

std::optional<QString> LinuxLoginItems::registerItem()
{
    if (!QDir().mkpath(m_userFolder))
        return QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(m_userFolder);
    return writeAtomically(entryPath(), entry(m_program));
}

std::optional<QString> LinuxLoginItems::unregisterItem()
{
    const QString path = entryPath();
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink()) {
        // Removing a link removes the link only, never what it points to.
        QFile file(path);
        if (!file.remove())
            return file.errorString();
    }
    // A system-wide entry still starts us unless the user's folder hides it.
    for (const QString& folder : m_systemFolders) {
        if (QFileInfo::exists(folder + QLatin1Char('/') + QLatin1String(fileName))) {
            if (!QDir().mkpath(m_userFolder))
                return QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(m_userFolder);
            return writeAtomically(path, entry(m_program, true));
        }
    }
    return std::nullopt;
}

QByteArray LinuxLoginItems::entry(const QString& program, bool hidden)
{
    QByteArray text = "[Desktop Entry]\n"
                      "Type=Application\n"
                      "Name=Brenlow\n"
                      "Comment=Werkzeuge am oberen Bildschirmrand\n"
                      "Icon=brenlow\n"
                      "Terminal=false\n"
                      "X-GNOME-Autostart-enabled=true\n";
    text += "Exec=" + execArgument(program).toUtf8() + '\n';
    if (hidden)
        text += "Hidden=true\n";
    return text;
}

QString LinuxLoginItems::execArgument(const QString& argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    bool quote = argument.isEmpty();
    for (const QChar c : argument)
        quote = quote || reserved.contains(c);
    QString quoted;
    if (quote) {
        quoted = QStringLiteral("\"");
        for (const QChar c : argument) {
            if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
                quoted += QLatin1Char('\\');
            quoted += c;
        }
        quoted += QLatin1Char('"');
    } else {
        quoted = argument;
    }
    // Field codes start with %; a literal one is doubled. Then the string value's own escapes.
    quoted.replace(QLatin1Char('%'), QStringLiteral("%%"));
    quoted.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    quoted.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    quoted.replace(QLatin1Char('\t'), QStringLiteral("\\t"));
    return quoted;
}

QString LinuxLoginItems::execProgram(const QString& exec)
{
    // Undo the string value's escapes first, then the Exec quoting.
    QString value;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        if (exec[i] != u'\\' || i + 1 == exec.size()) {
            value += exec[i];
            continue;
        }
        const QChar next = exec[++i];
        if (next == u's')
            value += QLatin1Char(' ');
        else if (next == u'n')
            value += QLatin1Char('\n');
        else if (next == u't')
            value += QLatin1Char('\t');
        else if (next == u'\\')
            value += QLatin1Char('\\');
        else
            value += QLatin1Char('\\') + QString(next);
    }
    QString program;
    if (value.startsWith(QLatin1Char('"'))) {
        for (qsizetype i = 1; i < value.size(); ++i) {
            if (value[i] == u'\\' && i + 1 < value.size()) {
                program += value[++i];
            } else if (value[i] == u'"') {
                return program.replace(QStringLiteral("%%"), QStringLiteral("%"));
            } else {
                program += value[i];
            }
        }
        return {};
    }
    program = value.section(QLatin1Char(' '), 0, 0);
    return program.replace(QStringLiteral("%%"), QStringLiteral("%"));
}

std::optional<QString> LinuxLoginItems::writeAtomically(const QString& path, const QByteArray& contents)
{
    if (QFileInfo(path).isSymLink())
        return QStringLiteral("%1 ist ein Verweis auf eine andere Datei und wird nicht überschrieben.")
            .arg(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    file.write(contents);
    if (!file.commit())
        return file.errorString();
    return std::nullopt;
}
