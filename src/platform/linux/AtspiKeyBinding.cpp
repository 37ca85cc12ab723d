#include "platform/linux/AtspiKeyBinding.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr int shiftBit = 1;
constexpr int optionBit = 2;
constexpr int controlBit = 4;
constexpr int noCommandBit = 8;
// Longer texts are not key bindings; they are not worth parsing.
constexpr qsizetype longestBinding = 200;

// A modifier name in either toolkit's spelling, as its bit; Command clears the "no Command" bit.
std::optional<int> modifierBit(const QString& name)
{
    const QString lower = name.toLower();
    if (lower == u"ctrl" || lower == u"control" || lower == u"primary")
        return 0;
    if (lower == u"shift")
        return shiftBit;
    if (lower == u"alt" || lower == u"mod1" || lower == u"option")
        return optionBit;
    if (lower == u"super" || lower == u"meta" || lower == u"hyper")
        return controlBit;
    return std::nullopt;
}

bool isCommand(const QString& name)
{
    const QString lower = name.toLower();
    return lower == u"ctrl" || lower == u"control" || lower == u"primary";
}

// GTK names keys by their keysym; the common punctuation is shown as its character.
QString keyText(const QString& name)
{
    static const QHash<QString, QString> symbols = {
        {QStringLiteral("plus"), QStringLiteral("+")},
        {QStringLiteral("minus"), QStringLiteral("-")},
        {QStringLiteral("equal"), QStringLiteral("=")},
        {QStringLiteral("period"), QStringLiteral(".")},
        {QStringLiteral("comma"), QStringLiteral(",")},
        {QStringLiteral("slash"), QStringLiteral("/")},
        {QStringLiteral("backslash"), QStringLiteral("\\")},
        {QStringLiteral("semicolon"), QStringLiteral(";")},
        {QStringLiteral("space"), QStringLiteral("Space")},
        {QStringLiteral("question"), QStringLiteral("?")},
        {QStringLiteral("KP_Add"), QStringLiteral("+")},
        {QStringLiteral("KP_Subtract"), QStringLiteral("-")},
    };
    return symbols.value(name, name);
}

bool plausibleKey(const QString& key)
{
    if (key.isEmpty() || key.size() > 16)
        return false;
    // "f:n" is GTK's mnemonic path, not a key.
    if (key.size() > 1 && key.contains(u':'))
        return false;
    for (QChar c : key) {
        if (c.isSpace() || c == u'<' || c == u'>')
            return false;
    }
    return true;
}

std::optional<MenuShortcut> parseGtk(const QString& accelerator)
{
    MenuShortcut shortcut;
    int modifiers = noCommandBit;
    qsizetype at = 0;
    while (at < accelerator.size() && accelerator.at(at) == u'<') {
        const qsizetype end = accelerator.indexOf(u'>', at);
        if (end < 0)
            return std::nullopt;
        const QString name = accelerator.mid(at + 1, end - at - 1);
        const auto bit = modifierBit(name);
        if (!bit)
            return std::nullopt;
        if (isCommand(name))
            modifiers &= ~noCommandBit;
        modifiers |= *bit;
        at = end + 1;
    }
    shortcut.key = keyText(accelerator.mid(at));
    shortcut.modifiers = modifiers;
    if (!plausibleKey(shortcut.key))
        return std::nullopt;
    return shortcut;
}

std::optional<MenuShortcut> parseQt(const QString& sequence)
{
    // Only the first chord of a multi-key sequence ("Ctrl+K, Ctrl+C") is a menu key.
    const QString chord = sequence.section(QStringLiteral(", "), 0, 0);
    QStringList parts = chord.split(u'+');
    // "Ctrl++" names the plus key: the split leaves two empty parts at the end.
    if (chord.endsWith(QStringLiteral("++"))) {
        parts.removeLast();
        parts.last() = QStringLiteral("+");
    }
    MenuShortcut shortcut;
    int modifiers = noCommandBit;
    for (qsizetype i = 0; i + 1 < parts.size(); ++i) {
        const auto bit = modifierBit(parts.at(i));
        if (!bit)
            return std::nullopt;
        if (isCommand(parts.at(i)))
            modifiers &= ~noCommandBit;
        modifiers |= *bit;
    }
    shortcut.key = parts.last();
    shortcut.modifiers = modifiers;
    if (!plausibleKey(shortcut.key))
        return std::nullopt;
    return shortcut;
}

} // namespace

std::optional<MenuShortcut> AtspiKeyBinding::parse(const QString& binding)
{
    const QString text = binding.trimmed();
    if (text.isEmpty() || text.size() > longestBinding)
        return std::nullopt;
    // GTK: "mnemonic;mnemonic path;accelerator"; the accelerator is the last field.
    const QString accelerator = text.contains(u';') && !text.endsWith(u';') ? text.section(u';', -1) : text;
    if (accelerator.isEmpty())
        return std::nullopt;
    if (accelerator.startsWith(u'<'))
        return parseGtk(accelerator);
    if (accelerator.contains(u'+') && accelerator.size() > 1)
        return parseQt(accelerator);
    // A lone function key is a shortcut; any other lone key is a mnemonic, not a menu shortcut.
    static const QRegularExpression functionKey(QStringLiteral("^F([1-9]|[12][0-9])$"));
    if (functionKey.match(accelerator).hasMatch())
        return MenuShortcut{accelerator, noCommandBit};
    return std::nullopt;
}

bool AtspiKeyBinding::isMnemonic(const MenuShortcut& shortcut, const QString& title)
{
    return shortcut.modifiers == (noCommandBit | optionBit) && shortcut.key.size() == 1 &&
           title.contains(shortcut.key, Qt::CaseInsensitive);
}
