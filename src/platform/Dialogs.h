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
};
