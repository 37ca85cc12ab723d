#include "clipboard/ClipKind.h"

#include "clipboard/ClipPatterns.h"

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

ClipKind classify(QStringView text)
{
    const QStringView t = text.trimmed();
    if (ClipPatterns::isLink(t))
        return ClipKind::links;
    if (ClipPatterns::isEmail(t))
        return ClipKind::emails;
    if (ClipPatterns::isPath(t))
        return ClipKind::paths;
    if (ClipPatterns::isColor(t))
        return ClipKind::colors;
    if (ClipPatterns::isPhone(t))
        return ClipKind::phones;
    if (ClipPatterns::isNumber(t))
        return ClipKind::numbers;
    if (ClipPatterns::isCode(t))
        return ClipKind::code;
    return ClipKind::text;
}

bool matches(ClipKind filter, QStringView text, bool pinned)
{
    switch (filter) {
    case ClipKind::all:
        return true;
    case ClipKind::pinned:
        return pinned;
    default:
        return classify(text) == filter;
    }
}

} // namespace ClipKinds
