#include "commands/CommandPolicy.h"

bool CommandPolicy::isAppleMenu(const QString& title)
{
    const QString normalized = title.trimmed().toLower();
    return normalized == u"apple" || normalized == QString(QChar(0xF8FF));
}

QString CommandPolicy::modifierText(std::optional<int> modifiers)
{
    if (!modifiers)
        return QStringLiteral("⌘");
    QString text;
    if (*modifiers & 4)
        text += u'⌃';
    if (*modifiers & 2)
        text += u'⌥';
    if (*modifiers & 1)
        text += u'⇧';
    if (!(*modifiers & 8))
        text += u'⌘';
    return text;
}

QString CommandPolicy::keys(const QString& key, std::optional<int> modifiers)
{
    return modifierText(modifiers) + key.toUpper();
}

QString CommandPolicy::name(const QString& topLevelTitle, const QString& title)
{
    if (topLevelTitle.isEmpty())
        return title;
    return topLevelTitle + QStringLiteral(" › ") + title;
}
