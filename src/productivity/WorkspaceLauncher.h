#pragma once

struct WorkspacePreset;
class ActivityLog;
class StatusMessage;
class Workspace;

// Opens a workspace's apps, folders and documents and reports the outcome in the status line
// and the activity list.
class WorkspaceLauncher
{
public:
    WorkspaceLauncher(Workspace& workspace, StatusMessage& message, ActivityLog& activity)
        : m_workspace(workspace), m_message(message), m_activity(activity)
    {}

    void launch(const WorkspacePreset& preset);

private:
    Workspace& m_workspace;
    StatusMessage& m_message;
    ActivityLog& m_activity;
};
