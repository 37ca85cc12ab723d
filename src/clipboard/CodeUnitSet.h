#pragma once

#include <QStringView>

#include <array>

// A small set of UTF-16 code units (at most eight) that a text can be scanned for quickly.
// Classification and search run over every stored clip on each keystroke, so the scan that
// skips ordinary characters is vectorised where the processor allows it.
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

private:
    std::array<char16_t, capacity> m_units{};
    int m_size = 0;
};
