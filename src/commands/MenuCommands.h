#pragma once

#include "platform/Workspace.h"

#include <QObject>
#include <QString>

#include <optional>

// The commands page's state: whose menus it shows and its status line. The application that was
// frontmost when the panel opened is remembered as the target whose menus are read.
class MenuCommands : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString commandApp READ commandApp NOTIFY commandAppChanged)
    Q_PROPERTY(QString commandStatus READ commandStatus NOTIFY commandStatusChanged)
public:
    using QObject::QObject;

    const QString& commandApp() const { return m_commandApp; }
    const QString& commandStatus() const { return m_commandStatus; }
    const std::optional<RunningApp>& commandTarget() const { return m_commandTarget; }
    void setCommandTarget(std::optional<RunningApp> app) { m_commandTarget = std::move(app); }

Q_SIGNALS:
    void commandAppChanged();
    void commandStatusChanged();

private:
    QString m_commandApp = QStringLiteral("Aktive App");
    QString m_commandStatus = QStringLiteral("Andere App aktivieren und Command halten.");
    std::optional<RunningApp> m_commandTarget;
};
