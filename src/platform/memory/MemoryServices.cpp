#include "platform/memory/MemoryServices.h"

#include <QUuid>

MemoryPasteboard::MemoryPasteboard(QString name, QObject* parent)
    : Pasteboard(parent),
      m_name(name.isEmpty() ? QUuid::createUuid().toString(QUuid::WithoutBraces) : std::move(name))
{}

void MemoryPasteboard::clearAndWriteString(const QString& text)
{
    m_text = text;
    m_types = {QStringLiteral("text/plain")};
    ++m_changeCount;
    Q_EMIT changed();
}

void MemoryPasteboard::copyFromOutside(std::optional<QString> text, const QStringList& extraTypes)
{
    m_types = extraTypes;
    if (text)
        m_types.prepend(QStringLiteral("text/plain"));
    m_text = std::move(text);
    ++m_changeCount;
    Q_EMIT changed();
}

void MemoryPasteboard::copyFromUnresponsiveOwner(const QStringList& types)
{
    m_types = types;
    m_text.reset();
    ++m_changeCount;
    Q_EMIT changed();
    Q_EMIT unreadable();
}

bool MemoryPermissions::accessibilityTrusted(bool prompt) const
{
    if (prompt) {
        ++promptCount;
        if (grantAccessibilityOnPrompt)
            accessibility = true;
    }
    return accessibility;
}

bool MemoryPermissions::accessibilityTrustedNow() const
{
    ++m_trustReads;
    return accessibility;
}

AutomationAccess MemoryPermissions::automationAccess(const QString& appId) const
{
    waitWhileHeld();
    ++m_checks;
    QMutexLocker lock(&m_mutex);
    return m_automation.value(appId, AutomationAccess::notRunning);
}

void MemoryPermissions::setAutomation(const QString& appId, AutomationAccess access)
{
    QMutexLocker lock(&m_mutex);
    m_automation.insert(appId, access);
}

void MemoryPermissions::hold()
{
    QMutexLocker lock(&m_mutex);
    m_held = true;
}

void MemoryPermissions::release()
{
    QMutexLocker lock(&m_mutex);
    m_held = false;
    m_released.wakeAll();
}

void MemoryPermissions::waitWhileHeld() const
{
    QMutexLocker lock(&m_mutex);
    while (m_held)
        m_released.wait(&m_mutex);
}

bool MemoryPermissions::requestScreenCapture()
{
    if (grantScreenCaptureOnRequest)
        screenCapture = true;
    return screenCapture;
}

bool MemoryWorkspace::open(const QString& path)
{
    if (!openable.contains(path))
        return false;
    opened.append(path);
    return true;
}

bool MemoryWorkspace::reveal(const QString& path)
{
    if (!revealWorks)
        return false;
    revealed.append(path);
    return true;
}

bool MemoryWorkspace::relaunch()
{
    if (!relaunchWorks)
        return false;
    ++relaunches;
    return true;
}

MemoryDisplays::MemoryDisplays()
{
    list.append(
        DisplayInfo{QStringLiteral("memory"), QRectF(0, 0, 1920, 1080), 0, std::nullopt, std::nullopt});
}

void MemoryPointer::moveTo(QPointF position)
{
    m_position = position;
    if (watching)
        Q_EMIT moved();
}

bool MemoryHotKeys::registerHotKey(int keyCode, KeyModifiers modifiers)
{
    Q_UNUSED(keyCode)
    if (taken.contains(modifiers))
        return false;
    registered = modifiers;
    return true;
}

void MemoryStatusBar::show(const QString& symbol, const QString& newTitle)
{
    Q_UNUSED(symbol)
    visible = true;
    title = newTitle;
}

std::optional<RunningApp> MemoryWorkspace::runningApp(qint64 pid) const
{
    if (running.contains(pid))
        return running.value(pid);
    if (frontmost && frontmost->pid == pid)
        return frontmost;
    return std::nullopt;
}

bool MemoryWorkspace::activate(qint64 pid)
{
    const auto app = runningApp(pid);
    if (refuseActivation || !app || app->terminated)
        return false;
    frontmost = app;
    return true;
}

void MemoryStatusBar::showGroupItems(bool on)
{
    m_groupShown = on;
    m_separatorLength = on ? 12 : 0;
}

std::optional<double> MemoryStatusBar::separatorLeftEdge() const
{
    if (!m_groupShown)
        return std::nullopt;
    return separatorEdge;
}

QList<TrayItem> MemoryStatusBar::trayItems()
{
    QMutexLocker lock(&m_mutex);
    ++m_scans;
    return m_items;
}

bool MemoryStatusBar::activateItem(const TrayItem& item)
{
    QMutexLocker lock(&m_mutex);
    for (const TrayItem& known : std::as_const(m_items)) {
        if (known.service == item.service && known.path == item.path) {
            m_activations.append(item.service);
            return true;
        }
    }
    return false;
}

std::optional<QList<TrayMenuEntry>> MemoryStatusBar::itemMenu(const TrayItem& item)
{
    QMutexLocker lock(&m_mutex);
    if (!m_menus.contains(item.service))
        return std::nullopt;
    return m_menus.value(item.service);
}

bool MemoryStatusBar::clickMenuEntry(const TrayItem& item, int entryId)
{
    QMutexLocker lock(&m_mutex);
    if (!m_menus.contains(item.service))
        return false;
    m_clicks.append(item.service + QLatin1Char('#') + QString::number(entryId));
    return true;
}

void MemoryStatusBar::setItems(const QList<TrayItem>& items)
{
    {
        QMutexLocker lock(&m_mutex);
        m_items = items;
    }
    Q_EMIT trayItemsChanged();
}

void MemoryStatusBar::setMenu(const QString& service, const QList<TrayMenuEntry>& menu)
{
    QMutexLocker lock(&m_mutex);
    m_menus.insert(service, menu);
}

QStringList MemoryStatusBar::activations() const
{
    QMutexLocker lock(&m_mutex);
    return m_activations;
}

QStringList MemoryStatusBar::clicks() const
{
    QMutexLocker lock(&m_mutex);
    return m_clicks;
}

int MemoryStatusBar::scans() const
{
    QMutexLocker lock(&m_mutex);
    return m_scans;
}
