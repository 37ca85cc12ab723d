#pragma once

#include <QObject>
#include <QString>

class PermissionStore;
class StatusMessage;
class Workspace;

// What the tour and the settings offer to repair access: asking for trust, showing the running
// program in the file manager, pointing to the settings, asking for screen capture. Every outcome
// ends in the status line.
//
// This desktop has no settings location to open yet, so the panel stays open and the status line
// names the way by hand; once a location can be opened, the panel closes first to uncover it.
class PermissionActions : public QObject
{
    Q_OBJECT
public:
    PermissionActions(PermissionStore& store, Workspace& workspace, StatusMessage& message,
                      QObject* parent = nullptr);

    // Asks for trust with the system's prompt (on Linux: switches the desktop's accessibility
    // bus on), then reports what the desktop answers.
    void accessibility();
    // Shows this very program in the file manager.
    void revealCurrentApp();
    void openPermissionSettings(const QString& anchor);
    // Asks for screen capture; when it is still missing, points to its settings.
    void requestScreenCapture();

    // The running program; the file manager shows exactly this copy.
    static QString applicationPath();

private:
    PermissionStore& m_store;
    Workspace& m_workspace;
    StatusMessage& m_message;
};
