#pragma once

#include "common/SerialQueue.h"

#include <QObject>
#include <QSet>
#include <QStringList>
#include <QUuid>

struct WorkspacePreset;
class ActivityLog;
class StatusMessage;
class Workspace;

// Opens a workspace's apps, folders and documents and reports the outcome in the status line
// and the activity list. Whether the paths exist is asked on the "Brenlow.workspaces" queue (a
// folder on a sleeping network share can take seconds to answer); opening happens back on the
// main thread, in the preset's order.
class WorkspaceLauncher : public QObject
{
    Q_OBJECT
public:
    WorkspaceLauncher(Workspace& workspace, StatusMessage& message, ActivityLog& activity,
                      QObject* parent = nullptr);

    // A second launch of a preset while its first is still being looked up is the same click
    // twice and is dropped.
    void launch(const WorkspacePreset& preset);
    bool launching(const QUuid& id) const { return m_pending.contains(id); }

    // Opens the paths that exist, in order; answers the paths that did not open.
    static QStringList openExisting(const QStringList& paths, const QStringList& existing,
                                    Workspace& workspace);

private:
    Workspace& m_workspace;
    StatusMessage& m_message;
    ActivityLog& m_activity;
    QSet<QUuid> m_pending;
    SerialQueue m_queue{QStringLiteral("Brenlow.workspaces")};
};
