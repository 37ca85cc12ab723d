#include "setup/PermissionActions.h"

#include "common/Log.h"
#include "common/StatusMessage.h"
#include "platform/Workspace.h"
#include "setup/PermissionStore.h"
#include "setup/PermissionTexts.h"

#include <QCoreApplication>

PermissionActions::PermissionActions(PermissionStore& store, Workspace& workspace, StatusMessage& message,
                                     QObject* parent)
    : QObject(parent), m_store(store), m_workspace(workspace), m_message(message)
{}

void PermissionActions::accessibility()
{
    m_store.requestAccessibility(this, [this](bool trusted) {
        if (trusted)
            m_message.setText(PermissionTexts::accessibilityGranted());
        else
            openPermissionSettings(PermissionTexts::accessibilityAnchor());
    });
}

void PermissionActions::revealCurrentApp()
{
    const QString path = applicationPath();
    if (m_workspace.reveal(path))
        return;
    qCInfo(lcSetup) << "the file manager could not show" << path;
    m_message.setText(PermissionTexts::appPath(path));
}

void PermissionActions::openPermissionSettings(const QString& anchor)
{
    const QString fallback = PermissionTexts::settingsFallback(anchor);
    if (fallback.isEmpty()) {
        qCWarning(lcSetup) << "no settings location for" << anchor;
        return;
    }
    qCInfo(lcSetup) << "no settings location can be opened on this desktop yet:" << anchor;
    m_message.setText(fallback);
}

void PermissionActions::requestScreenCapture()
{
    if (m_store.requestScreenCapture()) {
        m_message.setText(PermissionTexts::screenCaptureGranted());
        return;
    }
    openPermissionSettings(PermissionTexts::screenCaptureAnchor());
}

QString PermissionActions::applicationPath()
{
    return QCoreApplication::applicationFilePath();
}
