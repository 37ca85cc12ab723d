#include "commands/MenuNoticePolicy.h"

#include <QRegularExpression>

namespace {
// PCRE2 reads these as ICU would: \d, \s and \b are Unicode-aware with UseUnicodePropertiesOption
// and case folding comes from the option instead of an inline (?i).
const QRegularExpression& pattern(int index)
{
    static const QRegularExpression patterns[] = {
        QRegularExpression(
            QStringLiteral(R"((\d+)\s+(?:unread|new)\s+(?:messages?|notifications?|items?|emails?)\b)"),
            QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption),
        QRegularExpression(
            QStringLiteral(
                R"((\d+)\s+(?:ungelesene[nr]?|neue[nr]?)\s+(?:nachrichten?|mitteilungen?|benachrichtigungen?|e-mails?)\b)"),
            QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption),
        QRegularExpression(
            QStringLiteral(
                R"((?:unread\s+(?:messages?|notifications?)|ungelesene\s+(?:nachrichten|benachrichtigungen))\s*[:=]\s*(\d+)\b)"),
            QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption),
    };
    return patterns[index];
}
} // namespace

std::optional<int> MenuNoticePolicy::count(const QString& label)
{
    for (int i = 0; i < 3; ++i) {
        const QRegularExpression& expression = pattern(i);
        if (!expression.isValid())
            continue;
        const QRegularExpressionMatch match = expression.match(label);
        if (!match.hasMatch())
            continue;
        bool ok = false;
        const int value = match.captured(1).toInt(&ok);
        if (ok)
            return value;
    }
    return std::nullopt;
}

std::optional<int> MenuNoticePolicy::update(const QString& id, const QString& label)
{
    const std::optional<int> now = count(label);
    if (!now) {
        counts.remove(id);
        return std::nullopt;
    }
    const auto previous = counts.constFind(id);
    const bool rose = previous != counts.cend() && *previous < *now;
    counts.insert(id, *now);
    return rose ? now : std::nullopt;
}
