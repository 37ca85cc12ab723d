#pragma once

#include <QString>
#include <QStringList>

// Texts of the workspaces page ("Bereiche") and its outcomes.
class WorkspaceTexts
{
public:
    static QString intro();
    static QString namePlaceholder();
    static QString choose();
    static QString chooserTitle();
    // "Nichts ausgewählt", "1 Element ausgewählt", "3 Elemente ausgewählt".
    static QString chosenCount(int count);
    static QString save();
    static QString saveChanges();
    static QString saveHint();
    static QString cancelEdit();
    static QString empty();
    static QString start();
    static QString edit();
    static QString remove();
    // A preset's second line: its items by name.
    static QString items(const QStringList& paths);
    static QString dialogOpen();

    // The launch's outcome: "Nicht geöffnet: a, b" or "Name geöffnet", and the notice title.
    static QString launched(const QString& name, const QStringList& failedPaths);
    static QString noticeTitle(const QString& name);
};
