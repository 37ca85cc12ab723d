#pragma once

#include <QFlags>

// Device-independent modifiers in the system's own terms (Command is Ctrl on Linux).
enum class KeyModifier {
    None = 0,
    Shift = 1,
    Control = 2,
    Option = 4,
    Command = 8,
};
Q_DECLARE_FLAGS(KeyModifiers, KeyModifier)
Q_DECLARE_OPERATORS_FOR_FLAGS(KeyModifiers)

// Virtual key codes as the rules know them.
namespace KeyCode {
constexpr int V = 9;
constexpr int Escape = 53;
} // namespace KeyCode
