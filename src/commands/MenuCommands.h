#pragma once

#include "commands/CommandItem.h"
#include "common/SerialQueue.h"
#include "platform/Workspace.h"

#include <QObject>
#include <QString>

#include <optional>

class Accessibility;
class Clock;
class PermissionStore;
class Permissions;
class Scheduler;

// The commands page's state: the menu shortcuts of the application that was frontmost, read
// through the accessibility interface on the "Brenlow.commands" queue, and pressing one of them.
// A read carries a generation token; only the newest read's result is applied.
class MenuCommands : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString commandApp READ commandApp NOTIFY commandAppChanged)
    Q_PROPERTY(QString commandStatus READ commandStatus NOTIFY commandStatusChanged)
    Q_PROPERTY(bool commandLoading READ commandLoading NOTIFY commandLoadingChanged)
    Q_PROPERTY(bool commandExecuting READ commandExecuting NOTIFY commandExecutingChanged)
public:
    // The pause between activating the target and pressing, so its window is frontmost.
    static constexpr double pressDelay = 0.2;
    static constexpr double pressTimeout = 0.3;

    struct Services
    {
        Accessibility& accessibility;
        Workspace& workspace;
        Permissions& permissions;
        Scheduler& scheduler;
        const Clock& clock;
    };
    MenuCommands(Services services, PermissionStore& permissionStore, QObject* parent = nullptr);
    ~MenuCommands() override;

    const QList<CommandItem>& commands() const { return m_commands; }
    const QString& commandApp() const { return m_commandApp; }
    const QString& commandStatus() const { return m_commandStatus; }
    bool commandLoading() const { return m_commandLoading; }
    bool commandExecuting() const { return m_commandExecuting; }
    quint64 commandGeneration() const { return m_commandGeneration; }
    const std::optional<RunningApp>& commandTarget() const { return m_commandTarget; }
    void setCommandTarget(std::optional<RunningApp> app) { m_commandTarget = std::move(app); }

    // Reads the menus of `app`, or of the previous target when `app` is missing or Brenlow itself.
    void readCommands(std::optional<RunningApp> app);
    // Runs a listed command in its application; the panel closes first.
    void executeCommand(const CommandItem& item);

Q_SIGNALS:
    void commandsChanged();
    void commandAppChanged();
    void commandStatusChanged();
    void commandLoadingChanged();
    void commandExecutingChanged();
    // The panel should close (the command runs in the application behind it).
    void closeRequested();

private:
    void setCommands(QList<CommandItem> commands);
    void setCommandApp(const QString& app);
    void setCommandStatus(const QString& status);
    void setCommandLoading(bool loading);
    void setCommandExecuting(bool executing);
    void press(const CommandItem& item);
    void finishPress(const CommandItem& item, int result);

    Services m_services;
    PermissionStore& m_permissionStore;
    QList<CommandItem> m_commands;
    QString m_commandApp = QStringLiteral("Aktive App");
    QString m_commandStatus = QStringLiteral("Andere App aktivieren und Command halten.");
    bool m_commandLoading = false;
    bool m_commandExecuting = false;
    quint64 m_commandGeneration = 0;
    std::optional<RunningApp> m_commandTarget;
    SerialQueue m_queue{QStringLiteral("Brenlow.commands")};
};
