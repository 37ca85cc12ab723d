#pragma once

#include <QString>

#include <optional>

// A menu shortcut as the menus' attributes describe it: the key and the modifier bits of the
// accessibility interface (1 Shift, 2 Option, 4 Control, 8 "no Command").
struct MenuShortcut
{
    QString key;
    int modifiers = 0;
};

// Reads the key binding of an AT-SPI press action. Qt writes "Ctrl+Shift+S"; GTK writes
// "<Primary><Shift>s", possibly after its mnemonics ("n;<Alt>f:n;<Primary>n"). Ctrl and <Primary>
// are Command, Alt is Option, Super and Meta are Control. Nothing for an empty or unreadable text.
namespace AtspiKeyBinding {
std::optional<MenuShortcut> parse(const QString& binding);
// Qt reports an item's mnemonic (Alt and a letter of its title) where it has no shortcut; such a
// binding is not a menu shortcut.
bool isMnemonic(const MenuShortcut& shortcut, const QString& title);
} // namespace AtspiKeyBinding
