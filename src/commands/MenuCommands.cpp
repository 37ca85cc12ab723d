#include "commands/MenuCommands.h"

#include "commands/CommandAccess.h"
#include "commands/MenuWalk.h"
#include "common/Clock.h"
#include "common/Scheduler.h"
#include "platform/Accessibility.h"
#include "platform/Permissions.h"
#include "setup/PermissionStore.h"

namespace {
QString noTargetText()
{
    return QStringLiteral("Andere App aktivieren und Command halten.");
}
QString unavailableText()
{
    return QStringLiteral("Befehl nicht verfügbar. Bitte die Liste erneut laden.");
}
} // namespace

MenuCommands::MenuCommands(Services services, PermissionStore& permissionStore, QObject* parent)
    : QObject(parent), m_services(services), m_permissionStore(permissionStore)
{}

MenuCommands::~MenuCommands() = default;

void MenuCommands::readCommands(std::optional<RunningApp> app)
{
    m_permissionStore.refresh();
    Workspace& workspace = m_services.workspace;
    std::optional<RunningApp> target = m_commandTarget;
    if (app && app->pid != workspace.currentPid())
        target = app;
    if (target) {
        // Whether the target still runs is asked of the system, not of the remembered record.
        const auto running = workspace.runningApp(target->pid);
        if (!running || running->terminated)
            target.reset();
    }
    if (!target) {
        setCommands({});
        setCommandStatus(noTargetText());
        return;
    }
    m_commandTarget = target;
    setCommandApp(target->name.isEmpty() ? QStringLiteral("Aktive App") : target->name);
    setCommands({});
    setCommandLoading(true);
    setCommandStatus(QStringLiteral("Menübefehle werden gelesen …"));
    const quint64 token = ++m_commandGeneration;
    const qint64 pid = target->pid;
    Accessibility* accessibility = &m_services.accessibility;
    const Clock* clock = &m_services.clock;
    m_queue.run<MenuRead>(
        this, [accessibility, clock, pid] { return MenuWalk(*accessibility, *clock).read(pid); },
        [this, token](MenuRead read) {
            if (token != m_commandGeneration)
                return;
            setCommandLoading(false);
            const qsizetype count = read.items.size();
            setCommands(std::move(read.items));
            setCommandStatus(CommandAccess::message(read.error, count));
        });
}

void MenuCommands::executeCommand(const CommandItem& item)
{
    const auto running = m_services.workspace.runningApp(item.pid);
    const bool accepted = !m_commandExecuting && item.enabled && m_permissionStore.accessibility() &&
                          running && !running->terminated && m_commandTarget &&
                          m_commandTarget->pid == item.pid;
    if (!accepted) {
        setCommandStatus(unavailableText());
        return;
    }
    setCommandExecuting(true);
    Q_EMIT closeRequested();
    if (!m_services.workspace.activate(item.pid)) {
        setCommandExecuting(false);
        setCommandStatus(QStringLiteral("Die Ziel-App konnte nicht aktiviert werden."));
        return;
    }
    m_services.scheduler.schedule(pressDelay, this, [this, item] { press(item); });
}

void MenuCommands::press(const CommandItem& item)
{
    // The frontmost application is read here, on the main thread, just before the press is
    // queued: a third application activated during the pause makes the press stale.
    const auto front = m_services.workspace.frontmostApp();
    const bool targetFront = front && front->pid == item.pid;
    Accessibility* accessibility = &m_services.accessibility;
    Permissions* permissions = &m_services.permissions;
    m_queue.run<int>(
        this,
        [accessibility, permissions, item, targetFront] {
            const AXElement element = item.element.withTimeout(pressTimeout);
            if (!targetFront || !permissions->accessibilityTrustedNow())
                return AXError::invalidElement;
            qint64 owner = 0;
            if (accessibility->processId(element, owner) != AXError::success || owner != item.pid)
                return AXError::invalidElement;
            QVariant enabled;
            if (accessibility->copyAttribute(element, QStringLiteral("AXEnabled"), enabled) !=
                    AXError::success ||
                enabled.typeId() != QMetaType::Bool || !enabled.toBool())
                return AXError::invalidElement;
            return accessibility->perform(element, QStringLiteral("AXPress"));
        },
        [this, item](int result) { finishPress(item, result); });
}

void MenuCommands::finishPress(const CommandItem& item, int result)
{
    setCommandExecuting(false);
    if (result == AXError::success)
        setCommandStatus(QStringLiteral("Befehl ausgeführt: ") + item.name);
    else
        setCommandStatus(
            QStringLiteral("Befehl nicht mehr verfügbar. Ziel-App aktivieren und Liste erneut laden."));
}

void MenuCommands::setCommands(QList<CommandItem> commands)
{
    if (commands.isEmpty() && m_commands.isEmpty())
        return;
    m_commands = std::move(commands);
    Q_EMIT commandsChanged();
}

void MenuCommands::setCommandApp(const QString& app)
{
    if (app == m_commandApp)
        return;
    m_commandApp = app;
    Q_EMIT commandAppChanged();
}

void MenuCommands::setCommandStatus(const QString& status)
{
    if (status == m_commandStatus)
        return;
    m_commandStatus = status;
    Q_EMIT commandStatusChanged();
}

void MenuCommands::setCommandLoading(bool loading)
{
    if (loading == m_commandLoading)
        return;
    m_commandLoading = loading;
    Q_EMIT commandLoadingChanged();
}

void MenuCommands::setCommandExecuting(bool executing)
{
    if (executing == m_commandExecuting)
        return;
    m_commandExecuting = executing;
    Q_EMIT commandExecutingChanged();
}
