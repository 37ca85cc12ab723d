#include "clipboard/ClipSearch.h"

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

} // namespace

ClipSearch::ClipSearch(const QString& needle, const QLocale& locale) : m_needle(needle), m_locale(locale)
{
    if (m_needle.isEmpty())
        return;
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
