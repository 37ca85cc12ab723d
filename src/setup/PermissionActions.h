#pragma once

#include <QObject>
#include <QString>

class PermissionStore;
class StatusMessage;
class SystemSettings;
class Workspace;

// What the tour and the settings offer to repair access: asking for trust, showing the running
// program in the file manager, pointing to the settings, asking for screen capture. Every outcome
// ends in the status line.
//
// Where the desktop's settings application has a page for the anchor, the panel closes to uncover
// it; otherwise the panel stays open and the status line names the way by hand.
class PermissionActions : public QObject
{
    Q_OBJECT
public:
    PermissionActions(PermissionStore& store, Workspace& workspace, SystemSettings& settings,
                      StatusMessage& message, QObject* parent = nullptr);

    // Asks for trust with the system's prompt (on Linux: switches the desktop's accessibility
    // bus on), then reports what the desktop answers.
    void accessibility();
    // Shows this very program in the file manager.
    void revealCurrentApp();
    void openPermissionSettings(const QString& anchor);
    // Asks for screen capture; when it is still missing, points to its settings.
    void requestScreenCapture();
    // Starts a new copy of this program once this one has gone, and ends this one.
    void restartApp();
    // The desktop's page of programs started at login.
    void openLoginItemSettings();

    // The running program; the file manager shows exactly this copy.
    static QString applicationPath();

Q_SIGNALS:
    // A settings page opens: the panel gets out of its way.
    void closeRequested();

private:
    PermissionStore& m_store;
    Workspace& m_workspace;
    SystemSettings& m_settings;
    StatusMessage& m_message;
};
