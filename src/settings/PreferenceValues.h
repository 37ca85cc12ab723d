#pragma once

#include "platform/KeyModifiers.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

enum class PanelLayout { wide, balanced, tall };
enum class HistoryShortcut { controlV, controlShiftV, optionV, off };

namespace PanelLayouts {
QList<PanelLayout> all();
QString rawValue(PanelLayout layout);
std::optional<PanelLayout> fromRawValue(const QString& raw);
QString label(PanelLayout layout);
QString description(PanelLayout layout);
} // namespace PanelLayouts

namespace HistoryShortcuts {
QList<HistoryShortcut> all();
QString rawValue(HistoryShortcut shortcut);
std::optional<HistoryShortcut> fromRawValue(const QString& raw);
// "⌃ V" and friends; empty for `off`.
QString label(HistoryShortcut shortcut);
// The modifiers that go with the V key; nothing for `off`.
std::optional<KeyModifiers> modifiers(HistoryShortcut shortcut);
} // namespace HistoryShortcuts

// The thirteen panel settings, stored as one JSON document.
struct PreferenceValues
{
    PanelLayout layout = PanelLayout::balanced;
    bool hover = true;
    double openDelay = 0.0;
    double closeDelay = 0.5;
    bool animate = true;
    bool rememberPage = true;
    bool screenMain = false;
    bool commands = true;
    double commandDelay = 0.8;
    HistoryShortcut shortcut = HistoryShortcut::controlV;
    int historyLimit = 60;
    int focusMinutes = 25;
    bool focusSound = true;

    bool operator==(const PreferenceValues&) const = default;

    QByteArray encode() const;
    // Strict: every key present with its type, or nothing.
    static std::optional<PreferenceValues> decode(const QByteArray& json);
};
