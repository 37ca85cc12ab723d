#pragma once

#include "commands/MenuBarEntry.h"

#include <QStringList>

#include <optional>

// The rules that turn a scan's status items into entries and pick the adopted group.
namespace MenuBarRules {
// Entries in scan order; items of one application without ids are keyed by their index.
QList<MenuBarEntry> entries(const QList<TrayItem>& items);
// One entry per id (the first wins), sorted by name as a file manager sorts.
QList<MenuBarEntry> unique(const QList<MenuBarEntry>& entries);
// The entries left of the separator's left edge (never those at 0, which have no position).
QStringList adopted(const QList<MenuBarEntry>& entries, double separatorLeftEdge);
// The hidden separator's length: twice the widest screen, at least 2048; 4096 with no screen.
double hiddenSeparatorLength(std::optional<double> widestScreen);
} // namespace MenuBarRules
