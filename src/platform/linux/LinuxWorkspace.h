#pragma once

#include "platform/Workspace.h"

// Applications through EWMH and /proc, files through the desktop's default handlers.
class LinuxWorkspace final : public Workspace
{
public:
    std::optional<RunningApp> frontmostApp() const override;
    qint64 currentPid() const override;
    bool open(const QString& path) override;
    bool reveal(const QString& path) override;
    bool relaunch() override;
    void terminate() override;
    std::optional<RunningApp> runningApp(qint64 pid) const override;
    bool activate(qint64 pid) override;

    // Name and id of a process from /proc.
    static RunningApp describeProcess(qint64 pid);
    // The shell line that waits for `pid` to exit (at most 10 s) and then starts the program
    // with its arguments; run as /bin/sh -c <script> Brenlow-restart <pid> <program> <arguments…>.
    static QString relaunchScript();
};
