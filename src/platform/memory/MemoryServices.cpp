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
