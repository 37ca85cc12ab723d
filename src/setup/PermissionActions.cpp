#include "setup/PermissionActions.h"

#include "common/Log.h"
#include "common/StatusMessage.h"
#include "platform/SystemSettings.h"
#include "platform/Workspace.h"
#include "setup/LoginItemTexts.h"
#include "setup/PermissionStore.h"
#include "setup/PermissionTexts.h"

#include <QCoreApplication>

PermissionActions::PermissionActions(PermissionStore& store, Workspace& workspace, SystemSettings& settings,
                                     StatusMessage& message, QObject* parent)
    : QObject(parent), m_store(store), m_workspace(workspace), m_settings(settings), m_message(message)
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
    if (m_settings.open(anchor)) {
        Q_EMIT closeRequested();
        return;
    }
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

void PermissionActions::restartApp()
{
    if (!m_workspace.relaunch()) {
        m_message.setText(PermissionTexts::restartUnavailable());
        return;
    }
    m_workspace.terminate();
}

void PermissionActions::openLoginItemSettings()
{
    if (m_settings.open(SystemSettings::loginItemsAnchor())) {
        Q_EMIT closeRequested();
        return;
    }
    m_message.setText(LoginItemTexts::settingsUnavailable());
}

QString PermissionActions::applicationPath()
{
    return QCoreApplication::applicationFilePath();
}
