#pragma once

#include <QString>

#include <optional>

// One running application; `id` is its desktop-file id where known.
struct RunningApp
{
    QString id;
    qint64 pid = 0;
    QString name;
    bool terminated = false;
};

// Applications and files of the desktop.
class Workspace
{
public:
    virtual ~Workspace() = default;
    // The application that owns the active window, if any.
    virtual std::optional<RunningApp> frontmostApp() const = 0;
    // This process as an application.
    virtual qint64 currentPid() const = 0;
    // Opens a path (starts an app, opens a document in its default app); false when it failed.
    virtual bool open(const QString& path) = 0;
    // Shows the path in the file manager; false when it failed.
    virtual bool reveal(const QString& path) = 0;
    // Starts a new copy of exactly this program with its arguments once this one has exited;
    // false when it could not be started.
    virtual bool relaunch() = 0;
    // Ends this program.
    virtual void terminate() = 0;
    // The running application of a process; terminated when the process has gone.
    virtual std::optional<RunningApp> runningApp(qint64 pid) const = 0;
    // Brings the process's window to the front; false when it was refused or it has none.
    virtual bool activate(qint64 pid) = 0;
};
