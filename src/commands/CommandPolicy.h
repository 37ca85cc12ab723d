#pragma once

#include <QString>

#include <optional>

// The naming rules of menu commands.
namespace CommandPolicy {
// The system's own menu at the front of a menu bar ("Apple" or U+F8FF), which is never listed.
bool isAppleMenu(const QString& title);
// Modifier symbols for the accessibility interface's modifier bits, in the fixed order ⌃⌥⇧⌘;
// without a value the shortcut is ⌘ alone.
QString modifierText(std::optional<int> modifiers);
// The modifier symbols followed by the upper-cased key.
QString keys(const QString& key, std::optional<int> modifiers);
// The command's name under its top-level menu.
QString name(const QString& topLevelTitle, const QString& title);
} // namespace CommandPolicy
