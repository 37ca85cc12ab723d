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
    // What a stored record may hold. Beyond these a number is no setting anyone chose (a delay of
    // 1e308 s would keep the panel shut for good) and the record counts as unreadable.
    static constexpr double longestDelay = 60.0; // seconds, each of the three delays, from 0
    static constexpr int fewestFocusMinutes = 1;
    static constexpr int mostFocusMinutes = 120;
    static constexpr int largestHistoryLimit = 1'000'000; // from 0

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
    // Strict: every key present with its type and within the bounds above, or nothing.
    static std::optional<PreferenceValues> decode(const QByteArray& json);
    // The record with every number brought within the bounds; a number that is no number at
    // all takes the default.
    PreferenceValues bounded() const;
};
