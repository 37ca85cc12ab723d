#pragma once

#include "settings/PreferenceValues.h"

#include <QString>

#include <optional>

class HotKeys;

// The global shortcut of the clipboard history: registers V with the chosen modifiers and words
// the outcome. A combination is tried once per choice, so a taken one is not retried until the
// preference changes.
class HistoryHotKey
{
public:
    explicit HistoryHotKey(HotKeys& hotKeys) : m_hotKeys(hotKeys) {}

    // Applies `shortcut`; answers the new status text, or nothing when it was already applied.
    std::optional<QString> configure(HistoryShortcut shortcut);
    // Releases the key; the next configure() registers again.
    void unregister();

    std::optional<HistoryShortcut> registeredShortcut() const { return m_registered; }
    bool active() const { return m_active; }

    static QString offText();
    static QString activeText(HistoryShortcut shortcut);
    static QString takenText(HistoryShortcut shortcut);

private:
    HotKeys& m_hotKeys;
    std::optional<HistoryShortcut> m_registered;
    bool m_active = false;
};
