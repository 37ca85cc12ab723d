#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

// What an open dialog offers: its title, where it starts and what may be chosen.
struct OpenDialogRequest
{
    QString title;
    QString startFolder;
    bool multipleSelection = true;
    bool files = true;
    bool directories = false;
    // Name filters such as "Programme (*.desktop)"; empty shows everything.
    QStringList nameFilters;
};

// What a save dialog offers: its title and message, the proposed file name and the one file
// type it allows (its name and extension without the dot); folders may be created.
struct SaveDialogRequest
{
    QString title;
    QString message;
    QString proposedName;
    QString typeName;
    QString extension;
    QString startFolder;
};

// The desktop's file dialogs. They never block: the answer comes later, on the main thread.
class Dialogs
{
public:
    // The chosen items when the user confirmed, nothing when the dialog was cancelled.
    using Answer = std::function<void(std::optional<QList<QUrl>>)>;

    virtual ~Dialogs() = default;
    // Shows an open dialog above every other window, the panel included; `answer` runs exactly
    // once when it ends, unless `context` is gone by then.
    virtual void open(const OpenDialogRequest& request, QObject* context, Answer answer) = 0;

    // The chosen location when the user confirmed, nothing when the dialog was cancelled.
    using SaveAnswer = std::function<void(std::optional<QUrl>)>;
    // Shows a save dialog above every other window; `answer` runs exactly once when it ends,
    // unless `context` is gone by then. The location carries the type's extension.
    virtual void save(const SaveDialogRequest& request, QObject* context, SaveAnswer answer) = 0;
};
