#include "clipboard/ClipKind.h"

#include "clipboard/ClipPatterns.h"

#include <algorithm>

namespace ClipKinds {

const QList<ClipKind>& allCases()
{
    static const QList<ClipKind> cases{ClipKind::all,    ClipKind::pinned, ClipKind::text,    ClipKind::links,
                                       ClipKind::emails, ClipKind::phones, ClipKind::numbers, ClipKind::paths,
                                       ClipKind::colors, ClipKind::code};
    return cases;
}

QString label(ClipKind kind)
{
    switch (kind) {
    case ClipKind::all:
        return QStringLiteral("Alle");
    case ClipKind::pinned:
        return QStringLiteral("Favoriten");
    case ClipKind::text:
        return QStringLiteral("Text");
    case ClipKind::links:
        return QStringLiteral("Links");
    case ClipKind::emails:
        return QStringLiteral("E-Mails");
    case ClipKind::phones:
        return QStringLiteral("Telefon");
    case ClipKind::numbers:
        return QStringLiteral("Zahlen");
    case ClipKind::paths:
        return QStringLiteral("Dateipfade");
    case ClipKind::colors:
        return QStringLiteral("Farben");
    case ClipKind::code:
        return QStringLiteral("Code");
    }
    return {};
}

std::optional<ClipKind> fromLabel(QStringView text)
{
    for (ClipKind kind : allCases()) {
        if (label(kind) == text)
            return kind;
    }
    return std::nullopt;
}

namespace {

using Recogniser = bool (*)(QStringView);

// The recognisers in the order that decides ambiguous texts.
struct Step
{
    ClipKind kind;
    Recogniser recognise;
};
constexpr Step steps[] = {
    {ClipKind::links, ClipPatterns::isLink},   {ClipKind::emails, ClipPatterns::isEmail},
    {ClipKind::paths, ClipPatterns::isPath},   {ClipKind::colors, ClipPatterns::isColor},
    {ClipKind::phones, ClipPatterns::isPhone}, {ClipKind::numbers, ClipPatterns::isNumber},
    {ClipKind::code, ClipPatterns::isCode},
};

} // namespace

ClipKind classify(QStringView text)
{
    const QStringView t = text.trimmed();
    for (const Step& step : steps) {
        if (step.recognise(t))
            return step.kind;
    }
    return ClipKind::text;
}

bool matches(ClipKind filter, QStringView text, bool pinned)
{
    switch (filter) {
    case ClipKind::all:
        return true;
    case ClipKind::pinned:
        return pinned;
    case ClipKind::text:
        return classify(text) == ClipKind::text;
    default:
        break;
    }
    // The same answer as classify(text) == filter, cheaper: the filter's own recogniser rules
    // out most texts at once, and only a text it claims must escape the ones before it.
    const QStringView t = text.trimmed();
    const Step* own =
        std::find_if(std::begin(steps), std::end(steps), [&](const Step& s) { return s.kind == filter; });
    if (own == std::end(steps) || !own->recognise(t))
        return false;
    return std::none_of(std::begin(steps), own, [&](const Step& s) { return s.recognise(t); });
}

bool matchesKind(ClipKind filter, ClipKind kind, bool pinned)
{
    if (filter == ClipKind::all)
        return true;
    if (filter == ClipKind::pinned)
        return pinned;
    return kind == filter;
}

} // namespace ClipKinds
