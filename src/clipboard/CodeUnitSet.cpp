#include "clipboard/CodeUnitSet.h"

#include <algorithm>
#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

CodeUnitSet::CodeUnitSet(std::initializer_list<char16_t> units)
{
    for (char16_t unit : units)
        add(unit);
}

bool CodeUnitSet::add(char16_t unit)
{
    if (contains(unit))
        return true;
    if (m_size == capacity)
        return false;
    m_units[m_size++] = unit;
    return true;
}

bool CodeUnitSet::contains(char16_t unit) const
{
    return std::find(m_units.begin(), m_units.begin() + m_size, unit) != m_units.begin() + m_size;
}

qsizetype CodeUnitSet::findIn(QStringView text, qsizetype from) const
{
    const char16_t* data = text.utf16();
    const qsizetype size = text.size();
    qsizetype i = std::max<qsizetype>(from, 0);
    if (m_size == 0)
        return -1;
#if defined(__SSE2__)
    __m128i needles[capacity];
    for (int k = 0; k < m_size; ++k)
        needles[k] = _mm_set1_epi16(short(m_units[k]));
    for (; i + 8 <= size; i += 8) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + i));
        __m128i hits = _mm_cmpeq_epi16(block, needles[0]);
        for (int k = 1; k < m_size; ++k)
            hits = _mm_or_si128(hits, _mm_cmpeq_epi16(block, needles[k]));
        if (const int mask = _mm_movemask_epi8(hits))
            return i + std::countr_zero(unsigned(mask)) / 2;
    }
#endif
    for (; i < size; ++i) {
        if (contains(data[i]))
            return i;
    }
    return -1;
}
