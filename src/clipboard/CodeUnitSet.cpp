#include "clipboard/CodeUnitSet.h"

#include <algorithm>
#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

bool isLineBreak(char16_t c)
{
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

#if defined(__SSE2__)
// Sixteen code units per step: two blocks of eight, tested together.
constexpr qsizetype stride = 16;

// Runs `hits` over whole blocks of `stride` units from `i`; answers the first hit, or -1 with
// `i` left at the start of the unscanned tail.
template <typename Hits>
qsizetype scanBlocks(const char16_t* data, qsizetype size, qsizetype& i, const Hits& hits)
{
    for (; i + stride <= size; i += stride) {
        const __m128i low = hits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + i)));
        const __m128i high = hits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + i + 8)));
        const unsigned mask = unsigned(_mm_movemask_epi8(low)) | (unsigned(_mm_movemask_epi8(high)) << 16);
        if (mask)
            return i + std::countr_zero(mask) / 2;
    }
    return -1;
}

template <int N> qsizetype findAny(const char16_t* data, qsizetype size, qsizetype i, const char16_t* units)
{
    __m128i needles[N];
    for (int k = 0; k < N; ++k)
        needles[k] = _mm_set1_epi16(short(units[k]));
    auto hits = [&](__m128i block) {
        __m128i mask = _mm_cmpeq_epi16(block, needles[0]);
        for (int k = 1; k < N; ++k)
            mask = _mm_or_si128(mask, _mm_cmpeq_epi16(block, needles[k]));
        return mask;
    };
    if (const qsizetype hit = scanBlocks(data, size, i, hits); hit >= 0)
        return hit;
    for (; i < size; ++i) {
        if (std::find(units, units + N, data[i]) != units + N)
            return i;
    }
    return -1;
}

template <bool orBacktick> qsizetype findBreak(const char16_t* data, qsizetype size, qsizetype i)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i lineFeed = _mm_set1_epi16(0x0A);
    const __m128i three = _mm_set1_epi16(3);
    const __m128i lineSeparator = _mm_set1_epi16(short(0x2028));
    const __m128i one = _mm_set1_epi16(1);
    const __m128i nextLine = _mm_set1_epi16(0x85);
    const __m128i backtick = _mm_set1_epi16('`');
    auto hits = [&](__m128i block) {
        // Unsigned ranges by a wrapping subtraction and a saturating one: LF…CR and LS, PS.
        __m128i mask = _mm_cmpeq_epi16(_mm_subs_epu16(_mm_sub_epi16(block, lineFeed), three), zero);
        mask = _mm_or_si128(mask,
                            _mm_cmpeq_epi16(_mm_subs_epu16(_mm_sub_epi16(block, lineSeparator), one), zero));
        mask = _mm_or_si128(mask, _mm_cmpeq_epi16(block, nextLine));
        if constexpr (orBacktick)
            mask = _mm_or_si128(mask, _mm_cmpeq_epi16(block, backtick));
        return mask;
    };
    if (const qsizetype hit = scanBlocks(data, size, i, hits); hit >= 0)
        return hit;
    for (; i < size; ++i) {
        if (isLineBreak(data[i]) || (orBacktick && data[i] == u'`'))
            return i;
    }
    return -1;
}
#endif

} // namespace

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
    const qsizetype start = std::max<qsizetype>(from, 0);
#if defined(__SSE2__)
    // One instantiation per set size, so the compares unroll.
    switch (m_size) {
    case 0:
        return -1;
    case 1:
        return findAny<1>(data, size, start, m_units.data());
    case 2:
        return findAny<2>(data, size, start, m_units.data());
    case 3:
        return findAny<3>(data, size, start, m_units.data());
    case 4:
        return findAny<4>(data, size, start, m_units.data());
    case 5:
        return findAny<5>(data, size, start, m_units.data());
    case 6:
        return findAny<6>(data, size, start, m_units.data());
    case 7:
        return findAny<7>(data, size, start, m_units.data());
    default:
        return findAny<capacity>(data, size, start, m_units.data());
    }
#else
    for (qsizetype i = start; i < size; ++i) {
        if (contains(data[i]))
            return i;
    }
    return -1;
#endif
}

qsizetype CodeUnitSet::findLineBreak(QStringView text, qsizetype from, bool orBacktick)
{
    const char16_t* data = text.utf16();
    const qsizetype size = text.size();
    const qsizetype start = std::max<qsizetype>(from, 0);
#if defined(__SSE2__)
    return orBacktick ? findBreak<true>(data, size, start) : findBreak<false>(data, size, start);
#else
    for (qsizetype i = start; i < size; ++i) {
        if (isLineBreak(data[i]) || (orBacktick && data[i] == u'`'))
            return i;
    }
    return -1;
#endif
}
