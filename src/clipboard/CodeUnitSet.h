#pragma once

#include <QStringView>

#include <array>

// A small set of UTF-16 code units (at most eight) that a text can be scanned for quickly.
// Classification and search run over every stored clip on each keystroke, so the scans that
// skip ordinary characters are vectorised where the processor allows it.
class CodeUnitSet
{
public:
    static constexpr int capacity = 8;

    CodeUnitSet() = default;
    CodeUnitSet(std::initializer_list<char16_t> units);

    // Answers false when the set is full.
    bool add(char16_t unit);
    bool contains(char16_t unit) const;
    int size() const { return m_size; }

    // The first index at or after `from` whose code unit is in the set, or -1.
    qsizetype findIn(QStringView text, qsizetype from = 0) const;

    // The first line break (U+000A–U+000D, U+0085, U+2028, U+2029) at or after `from`, or -1;
    // with `orBacktick`, a backtick stops the scan too. The set is fixed, so the scan keeps it
    // in registers: this is the inner loop of every classification.
    static qsizetype findLineBreak(QStringView text, qsizetype from, bool orBacktick);

private:
    std::array<char16_t, capacity> m_units{};
    int m_size = 0;
};
