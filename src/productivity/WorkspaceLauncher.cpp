#include "productivity/WorkspaceLauncher.h"

#include "common/Log.h"
#include "common/StatusMessage.h"
#include "focus/ActivityLog.h"
#include "platform/Workspace.h"
#include "productivity/WorkspacePaths.h"
#include "productivity/WorkspacePreset.h"
#include "productivity/WorkspaceTexts.h"

WorkspaceLauncher::WorkspaceLauncher(Workspace& workspace, StatusMessage& message, ActivityLog& activity,
                                     QObject* parent)
    : QObject(parent), m_workspace(workspace), m_message(message), m_activity(activity)
{}

void WorkspaceLauncher::launch(const WorkspacePreset& preset)
{
    if (m_pending.contains(preset.id))
        return;
    m_pending.insert(preset.id);
    // Presets stored before paths were cleaned may name a folder twice.
    const QStringList paths = WorkspacePaths::unique(preset.paths);
    m_queue.run<QStringList>(
        this, [paths] { return WorkspacePaths::existing(paths); },
        [this, id = preset.id, name = preset.name, paths](QStringList existing) {
            m_pending.remove(id);
            const QStringList failed = openExisting(paths, existing, m_workspace);
            const QString status = WorkspaceTexts::launched(name, failed);
            m_message.setText(status);
            m_activity.addNotice(WorkspaceTexts::noticeTitle(name), status);
        });
}

QStringList WorkspaceLauncher::openExisting(const QStringList& paths, const QStringList& existing,
                                            Workspace& workspace)
{
    QStringList failed;
    for (const QString& path : paths) {
        const bool there = existing.contains(path);
        if (there && workspace.open(path))
            continue;
        qCInfo(lcProductivity) << "workspace item not opened:" << path
                               << (there ? "(the desktop refused it)" : "(missing)");
        failed.append(path);
    }
    return failed;
}
