#include "clipboard/ClipSearch.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

// Rough order of frequency of characters in German and English text: a hit on a rare anchor
// is seldom a false one, so fewer whole comparisons run.
int commonness(char16_t folded)
{
    static constexpr std::u16string_view byFrequency = u" enisratdhulcgmobwfkzvpüäößjyxq";
    const size_t position = byFrequency.find(folded);
    return position == std::u16string_view::npos ? -1 : int(byFrequency.size() - position);
}

bool isSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

// Every one-byte character folded, as the needle is.
struct Latin1Folding
{
    std::array<char16_t, 256> folded{};
    Latin1Folding()
    {
        for (int c = 0; c < 256; ++c)
            folded[size_t(c)] = char16_t(QChar::toCaseFolded(char32_t(c)));
    }
};

const Latin1Folding& latin1Folding()
{
    static const Latin1Folding table;
    return table;
}

// The first byte at or after `from` that is one of `anchors` (at most a few), or -1.
qsizetype findAnyByte(const char* data, qsizetype size, qsizetype from, const QByteArray& anchors)
{
    qsizetype i = from;
#if defined(__SSE2__)
    __m128i needles[4];
    const int count = int(std::min<qsizetype>(anchors.size(), 4));
    for (int k = 0; k < count; ++k)
        needles[k] = _mm_set1_epi8(anchors.at(k));
    if (anchors.size() <= 4) {
        for (; i + 16 <= size; i += 16) {
            const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + i));
            __m128i hits = _mm_cmpeq_epi8(block, needles[0]);
            for (int k = 1; k < count; ++k)
                hits = _mm_or_si128(hits, _mm_cmpeq_epi8(block, needles[k]));
            if (const unsigned mask = unsigned(_mm_movemask_epi8(hits)))
                return i + std::countr_zero(mask);
        }
    }
#endif
    for (; i < size; ++i) {
        if (anchors.contains(data[i]))
            return i;
    }
    return -1;
}

} // namespace

ClipSearch::ClipSearch(const QString& needle, const QLocale& locale) : m_needle(needle), m_locale(locale)
{
    if (m_needle.isEmpty())
        return;
    prepareLatin1();
    if (locale.language() == QLocale::Turkish || locale.language() == QLocale::Azerbaijani) {
        m_mode = Mode::localeLowered;
        m_needle = locale.toLower(needle);
        return;
    }
    // Outside surrogates case folding works unit by unit, so a match can be found through one
    // unit of the needle. A needle made only of surrogates goes the general way.
    int best = std::numeric_limits<int>::max();
    for (qsizetype i = 0; i < m_needle.size(); ++i) {
        const char16_t unit = m_needle.at(i).unicode();
        if (isSurrogate(unit)) {
            m_mode = Mode::folded;
            return;
        }
        const int score = commonness(char16_t(QChar::toCaseFolded(char32_t(unit))));
        if (score < best) {
            best = score;
            m_anchor = i;
        }
    }
    const char32_t folded = QChar::toCaseFolded(char32_t(m_needle.at(m_anchor).unicode()));
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        if (isSurrogate(char16_t(unit)) || QChar::toCaseFolded(unit) != folded)
            continue;
        if (!m_anchorForms.add(char16_t(unit))) {
            m_mode = Mode::folded;
            return;
        }
    }
    m_mode = Mode::anchored;
}

bool ClipSearch::matches(QStringView text) const
{
    switch (m_mode) {
    case Mode::everything:
        return true;
    case Mode::folded:
        return text.contains(m_needle, Qt::CaseInsensitive);
    case Mode::localeLowered:
        return m_locale.toLower(text.toString()).contains(m_needle);
    case Mode::anchored:
        break;
    }
    const qsizetype length = m_needle.size();
    const qsizetype last = text.size() - length;
    qsizetype from = m_anchor;
    while (true) {
        const qsizetype hit = m_anchorForms.findIn(text, from);
        if (hit < 0 || hit - m_anchor > last)
            return false;
        const qsizetype start = hit - m_anchor;
        if (text.sliced(start, length).compare(m_needle, Qt::CaseInsensitive) == 0)
            return true;
        from = hit + 1;
    }
}

void ClipSearch::prepareLatin1()
{
    // A one-byte text holds no surrogates, and only characters whose folding some byte shares.
    const Latin1Folding& table = latin1Folding();
    m_latin1Possible = true;
    for (QChar c : std::as_const(m_needle)) {
        const char16_t folded = char16_t(QChar::toCaseFolded(char32_t(c.unicode())));
        if (isSurrogate(c.unicode()) ||
            std::find(table.folded.begin(), table.folded.end(), folded) == table.folded.end()) {
            m_latin1Possible = false;
            return;
        }
        m_folded.push_back(folded);
    }
    qsizetype rarest = 0;
    int best = std::numeric_limits<int>::max();
    for (qsizetype i = 0; i < qsizetype(m_folded.size()); ++i) {
        const int score = commonness(m_folded[size_t(i)]);
        if (score < best) {
            best = score;
            rarest = i;
        }
    }
    m_latin1Anchor = rarest;
    for (int c = 0; c < 256; ++c) {
        if (table.folded[size_t(c)] == m_folded[size_t(rarest)])
            m_latin1Anchors.append(char(c));
    }
}

bool ClipSearch::matches(QLatin1StringView text) const
{
    if (m_mode == Mode::everything)
        return true;
    if (m_mode == Mode::localeLowered)
        return matches(QStringView(QString(text)));
    if (!m_latin1Possible)
        return false;
    const Latin1Folding& table = latin1Folding();
    const qsizetype length = qsizetype(m_folded.size());
    const qsizetype last = text.size() - length;
    const char* data = text.data();
    qsizetype from = m_latin1Anchor;
    while (true) {
        const qsizetype hit = findAnyByte(data, text.size(), from, m_latin1Anchors);
        if (hit < 0 || hit - m_latin1Anchor > last)
            return false;
        const qsizetype start = hit - m_latin1Anchor;
        qsizetype k = 0;
        while (k < length && table.folded[uchar(data[start + k])] == m_folded[size_t(k)])
            ++k;
        if (k == length)
            return true;
        from = hit + 1;
    }
}
