#include "productivity/DesktopEntry.h"

#include <QFile>
#include <QLocale>

namespace {

// Values escape "\s", "\n", "\t", "\r" and "\\".
QString unescaped(QStringView value)
{
    QString out;
    out.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value[i];
        if (c != u'\\' || i + 1 == value.size()) {
            out.append(c);
            continue;
        }
        const QChar next = value[++i];
        switch (next.unicode()) {
        case 's':
            out.append(u' ');
            break;
        case 'n':
            out.append(u'\n');
            break;
        case 't':
            out.append(u'\t');
            break;
        case 'r':
            out.append(u'\r');
            break;
        default:
            out.append(next);
            break;
        }
    }
    return out;
}

bool isTrue(const QString& value)
{
    return value.trimmed() == u"true";
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const QString& path, const QStringList& languages)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // Desktop entries are small; anything huge is not one.
    if (file.size() > 1 << 20)
        return std::nullopt;
    const QString text = QString::fromUtf8(file.readAll());

    DesktopEntry entry;
    entry.path = path;
    bool inGroup = false;
    bool sawGroup = false;
    QString plainName;
    int bestLanguage = int(languages.size());
    for (QStringView line : QStringView(text).split(u'\n')) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[')) {
            inGroup = line == u"[Desktop Entry]";
            sawGroup = sawGroup || inGroup;
            continue;
        }
        if (!inGroup)
            continue;
        const qsizetype equals = line.indexOf(u'=');
        if (equals <= 0)
            continue;
        const QStringView key = line.left(equals).trimmed();
        const QString value = unescaped(line.mid(equals + 1).trimmed());
        if (key == u"Name") {
            plainName = value;
        } else if (key.startsWith(u"Name[") && key.endsWith(u']')) {
            const int rank = int(languages.indexOf(key.mid(5, key.size() - 6).toString()));
            if (rank >= 0 && rank < bestLanguage) {
                bestLanguage = rank;
                entry.name = value;
            }
        } else if (key == u"Exec") {
            entry.exec = value;
        } else if (key == u"TryExec") {
            entry.tryExec = value;
        } else if (key == u"Type") {
            entry.application = value == u"Application";
        } else if (key == u"Hidden") {
            entry.hidden = isTrue(value);
        } else if (key == u"NoDisplay") {
            entry.noDisplay = isTrue(value);
        } else if (key == u"Categories") {
            entry.categories = value.split(u';', Qt::SkipEmptyParts);
        }
    }
    if (entry.name.isEmpty())
        entry.name = plainName;
    if (!sawGroup || entry.name.isEmpty())
        return std::nullopt;
    return entry;
}

QStringList DesktopEntry::userLanguages()
{
    QStringList languages;
    for (const QString& language : QLocale().uiLanguages()) {
        QString name = language;
        name.replace(u'-', u'_');
        if (!languages.contains(name))
            languages.append(name);
        const QString base = name.section(u'_', 0, 0);
        if (!languages.contains(base))
            languages.append(base);
    }
    return languages;
}

QString DesktopEntry::program(const QString& exec)
{
    const QString line = exec.trimmed();
    if (line.startsWith(u'"')) {
        const qsizetype end = line.indexOf(u'"', 1);
        return end > 0 ? line.mid(1, end - 1) : QString();
    }
    return line.section(u' ', 0, 0);
}
