#include "productivity/WorkspaceTexts.h"

#include "productivity/WorkspacePaths.h"

QString WorkspaceTexts::intro()
{
    return QStringLiteral("Stelle Apps, Projektordner und Dokumente zusammen. Ein Klick öffnet deinen "
                          "Arbeitsbereich.");
}
QString WorkspaceTexts::namePlaceholder()
{
    return QStringLiteral("Name, z. B. Entwicklung");
}
QString WorkspaceTexts::choose()
{
    return QStringLiteral("Apps / Dateien wählen");
}
QString WorkspaceTexts::chooserTitle()
{
    return QStringLiteral("Apps, Ordner und Dokumente wählen");
}

QString WorkspaceTexts::chosenCount(int count)
{
    if (count <= 0)
        return QStringLiteral("Nichts ausgewählt");
    if (count == 1)
        return QStringLiteral("1 Element ausgewählt");
    return QStringLiteral("%1 Elemente ausgewählt").arg(count);
}

QString WorkspaceTexts::save()
{
    return QStringLiteral("Sichern");
}
QString WorkspaceTexts::saveChanges()
{
    return QStringLiteral("Änderungen sichern");
}
QString WorkspaceTexts::saveHint()
{
    return QStringLiteral("Erst einen Namen eingeben und Apps oder Dateien wählen.");
}
QString WorkspaceTexts::cancelEdit()
{
    return QStringLiteral("Abbrechen");
}
QString WorkspaceTexts::empty()
{
    return QStringLiteral("Noch keine Arbeitsbereiche.");
}
QString WorkspaceTexts::start()
{
    return QStringLiteral("Starten");
}
QString WorkspaceTexts::edit()
{
    return QStringLiteral("Bearbeiten");
}
QString WorkspaceTexts::remove()
{
    return QStringLiteral("Entfernen");
}
QString WorkspaceTexts::dialogOpen()
{
    return QStringLiteral("Ein Auswahldialog ist bereits geöffnet.");
}

QString WorkspaceTexts::items(const QStringList& paths)
{
    QStringList names;
    for (const QString& path : paths)
        names.append(WorkspacePaths::name(path));
    return names.join(QStringLiteral(" · "));
}

QString WorkspaceTexts::launched(const QString& name, const QStringList& failedPaths)
{
    if (failedPaths.isEmpty())
        return name + QStringLiteral(" geöffnet");
    QStringList names;
    for (const QString& path : failedPaths)
        names.append(WorkspacePaths::name(path));
    return QStringLiteral("Nicht geöffnet: ") + names.join(QStringLiteral(", "));
}

QString WorkspaceTexts::noticeTitle(const QString& name)
{
    return QStringLiteral("Arbeitsbereich: ") + name;
}
