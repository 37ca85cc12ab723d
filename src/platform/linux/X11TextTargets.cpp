#include "platform/linux/X11TextTargets.h"

namespace {

const QByteArray utf8String = QByteArrayLiteral("UTF8_STRING");
const QByteArray latin1String = QByteArrayLiteral("STRING");
const QByteArray text = QByteArrayLiteral("TEXT");
const QByteArray compoundText = QByteArrayLiteral("COMPOUND_TEXT");
const QByteArray plainText = QByteArrayLiteral("text/plain");

bool isUtf8Plain(const QByteArray& name)
{
    // Owners differ in case and spacing: "text/plain;charset=utf-8", "text/plain; charset=UTF-8".
    QByteArray folded = name.toLower();
    folded.replace(' ', QByteArray());
    return folded == "text/plain;charset=utf-8" || folded == "text/plain;charset=utf8";
}

// Lower is better; nothing for a target without text.
std::optional<int> rank(const QByteArray& name)
{
    if (name == utf8String)
        return 0;
    if (isUtf8Plain(name))
        return 1;
    if (name == plainText)
        return 2;
    if (name == latin1String)
        return 3;
    if (name == text)
        return 4;
    return std::nullopt;
}

} // namespace

std::optional<QByteArray> X11TextTargets::best(const QList<QByteArray>& offered)
{
    std::optional<QByteArray> found;
    std::optional<int> foundRank;
    for (const QByteArray& name : offered) {
        const std::optional<int> r = rank(name);
        if (r && (!foundRank || *r < *foundRank)) {
            found = name;
            foundRank = r;
        }
    }
    return found;
}

std::optional<QString> X11TextTargets::decode(const QByteArray& target, const QByteArray& type,
                                              QByteArray data)
{
    // A C string's terminator that some owners send along is not part of the text (Qt drops it too).
    if (data.endsWith('\0'))
        data.chop(1);
    // TEXT lets the owner choose; the property's type says what it chose.
    const QByteArray& encoding = target == text ? type : target;
    if (encoding == utf8String || encoding == plainText || isUtf8Plain(encoding))
        return QString::fromUtf8(data);
    if (encoding == compoundText && data.contains('\x1b'))
        return std::nullopt;
    // STRING is Latin-1 by definition; so is compound text without escape sequences, and an
    // owner that answers TEXT with a type of its own gets the reading ICCCM gives STRING.
    return QString::fromLatin1(data);
}

QStringList X11TextTargets::formats(const QList<QByteArray>& offered)
{
    static const QList<QByteArray> protocol{"TARGETS", "MULTIPLE",         "TIMESTAMP",       "SAVE_TARGETS",
                                            "DELETE",  "INSERT_SELECTION", "INSERT_PROPERTY", "INCR"};
    QStringList formats;
    for (const QByteArray& name : offered) {
        if (name.isEmpty() || protocol.contains(name))
            continue;
        const bool classicText =
            name == utf8String || name == latin1String || name == text || name == compoundText;
        const QString format = classicText ? QString::fromLatin1(plainText) : QString::fromLatin1(name);
        if (!formats.contains(format))
            formats.append(format);
    }
    return formats;
}
