#include "productivity/WorkspaceLauncher.h"

#include "common/StatusMessage.h"
#include "focus/ActivityLog.h"
#include "platform/Workspace.h"
#include "productivity/Productivity.h"

void WorkspaceLauncher::launch(const WorkspacePreset& preset)
{
    const QString status = Productivity::launchStatus(preset, m_workspace);
    m_message.setText(status);
    m_activity.addNotice(QStringLiteral("Arbeitsbereich: ") + preset.name, status);
}
