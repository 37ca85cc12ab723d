#include "shell/HistoryHotKey.h"

#include "platform/HotKeys.h"

std::optional<QString> HistoryHotKey::configure(HistoryShortcut shortcut)
{
    if (m_registered && *m_registered == shortcut)
        return std::nullopt;
    if (m_active)
        m_hotKeys.unregisterHotKey();
    m_active = false;
    m_registered = shortcut;
    const auto modifiers = HistoryShortcuts::modifiers(shortcut);
    if (!modifiers)
        return offText();
    m_active = m_hotKeys.registerHotKey(KeyCode::V, *modifiers);
    return m_active ? activeText(shortcut) : takenText(shortcut);
}

void HistoryHotKey::unregister()
{
    if (m_active)
        m_hotKeys.unregisterHotKey();
    m_active = false;
    m_registered.reset();
}

QString HistoryHotKey::offText()
{
    return QStringLiteral("Globaler Kurzbefehl ausgeschaltet.");
}

QString HistoryHotKey::activeText(HistoryShortcut shortcut)
{
    return HistoryShortcuts::label(shortcut) +
           QStringLiteral(" ist aktiv. Eintrag wählen, dann mit ⌘ V einfügen.");
}

QString HistoryHotKey::takenText(HistoryShortcut shortcut)
{
    return HistoryShortcuts::label(shortcut) +
           QStringLiteral(" ist bereits belegt. Bitte eine andere Kombination wählen.");
}
