#include "settings/PreferenceValues.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace PanelLayouts {

QList<PanelLayout> all()
{
    return {PanelLayout::wide, PanelLayout::balanced, PanelLayout::tall};
}

QString rawValue(PanelLayout layout)
{
    switch (layout) {
    case PanelLayout::wide:
        return QStringLiteral("wide");
    case PanelLayout::balanced:
        return QStringLiteral("balanced");
    case PanelLayout::tall:
        return QStringLiteral("tall");
    }
    return {};
}

std::optional<PanelLayout> fromRawValue(const QString& raw)
{
    for (PanelLayout layout : all()) {
        if (rawValue(layout) == raw)
            return layout;
    }
    return std::nullopt;
}

QString label(PanelLayout layout)
{
    switch (layout) {
    case PanelLayout::wide:
        return QStringLiteral("Breit");
    case PanelLayout::balanced:
        return QStringLiteral("Kompakt");
    case PanelLayout::tall:
        return QStringLiteral("Hoch");
    }
    return {};
}

QString description(PanelLayout layout)
{
    switch (layout) {
    case PanelLayout::wide:
        return QStringLiteral("Alles nebeneinander");
    case PanelLayout::balanced:
        return QStringLiteral("Mehr Breite, weniger Tiefe");
    case PanelLayout::tall:
        return QStringLiteral("Karten untereinander");
    }
    return {};
}

} // namespace PanelLayouts

namespace HistoryShortcuts {

QList<HistoryShortcut> all()
{
    return {HistoryShortcut::controlV, HistoryShortcut::controlShiftV, HistoryShortcut::optionV,
            HistoryShortcut::off};
}

QString rawValue(HistoryShortcut shortcut)
{
    switch (shortcut) {
    case HistoryShortcut::controlV:
        return QStringLiteral("controlV");
    case HistoryShortcut::controlShiftV:
        return QStringLiteral("controlShiftV");
    case HistoryShortcut::optionV:
        return QStringLiteral("optionV");
    case HistoryShortcut::off:
        return QStringLiteral("off");
    }
    return {};
}

std::optional<HistoryShortcut> fromRawValue(const QString& raw)
{
    for (HistoryShortcut shortcut : all()) {
        if (rawValue(shortcut) == raw)
            return shortcut;
    }
    return std::nullopt;
}

QString label(HistoryShortcut shortcut)
{
    switch (shortcut) {
    case HistoryShortcut::controlV:
        return QStringLiteral("⌃ V");
    case HistoryShortcut::controlShiftV:
        return QStringLiteral("⌃ ⇧ V");
    case HistoryShortcut::optionV:
        return QStringLiteral("⌥ V");
    case HistoryShortcut::off:
        return {};
    }
    return {};
}

std::optional<KeyModifiers> modifiers(HistoryShortcut shortcut)
{
    switch (shortcut) {
    case HistoryShortcut::controlV:
        return KeyModifiers(KeyModifier::Control);
    case HistoryShortcut::controlShiftV:
        return KeyModifier::Control | KeyModifier::Shift;
    case HistoryShortcut::optionV:
        return KeyModifiers(KeyModifier::Option);
    case HistoryShortcut::off:
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace HistoryShortcuts

QByteArray PreferenceValues::encode() const
{
    QJsonObject object;
    object[u"layout"] = PanelLayouts::rawValue(layout);
    object[u"hover"] = hover;
    object[u"openDelay"] = openDelay;
    object[u"closeDelay"] = closeDelay;
    object[u"animate"] = animate;
    object[u"rememberPage"] = rememberPage;
    object[u"screenMain"] = screenMain;
    object[u"commands"] = commands;
    object[u"commandDelay"] = commandDelay;
    object[u"shortcut"] = HistoryShortcuts::rawValue(shortcut);
    object[u"historyLimit"] = historyLimit;
    object[u"focusMinutes"] = focusMinutes;
    object[u"focusSound"] = focusSound;
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

namespace {

std::optional<bool> readBool(const QJsonObject& object, const char16_t* key)
{
    const QJsonValue value = object.value(QString::fromUtf16(key));
    if (!value.isBool())
        return std::nullopt;
    return value.toBool();
}

std::optional<double> readNumber(const QJsonObject& object, const char16_t* key)
{
    const QJsonValue value = object.value(QString::fromUtf16(key));
    if (!value.isDouble() || !std::isfinite(value.toDouble()))
        return std::nullopt;
    return value.toDouble();
}

// A delay outside 0…60 s is the wrong type.
std::optional<double> readDelay(const QJsonObject& object, const char16_t* key)
{
    const auto seconds = readNumber(object, key);
    if (!seconds || *seconds < 0 || *seconds > PreferenceValues::longestDelay)
        return std::nullopt;
    return seconds;
}

// An integer field must hold a whole number within its bounds; 25.5 is the wrong type.
std::optional<int> readInt(const QJsonObject& object, const char16_t* key, int lowest, int highest)
{
    const auto number = readNumber(object, key);
    if (!number || std::trunc(*number) != *number || *number < lowest || *number > highest)
        return std::nullopt;
    return int(*number);
}

double boundedDelay(double seconds, double fallback)
{
    // No number at all takes the default; an endless one is as long as a delay may be.
    if (std::isnan(seconds))
        return fallback;
    return std::clamp(seconds, 0.0, PreferenceValues::longestDelay);
}

} // namespace

std::optional<PreferenceValues> PreferenceValues::decode(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();

    const auto layout = PanelLayouts::fromRawValue(object.value(u"layout").toString());
    const auto shortcut = HistoryShortcuts::fromRawValue(object.value(u"shortcut").toString());
    const auto hover = readBool(object, u"hover");
    const auto openDelay = readDelay(object, u"openDelay");
    const auto closeDelay = readDelay(object, u"closeDelay");
    const auto animate = readBool(object, u"animate");
    const auto rememberPage = readBool(object, u"rememberPage");
    const auto screenMain = readBool(object, u"screenMain");
    const auto commands = readBool(object, u"commands");
    const auto commandDelay = readDelay(object, u"commandDelay");
    const auto historyLimit = readInt(object, u"historyLimit", 0, largestHistoryLimit);
    const auto focusMinutes = readInt(object, u"focusMinutes", fewestFocusMinutes, mostFocusMinutes);
    const auto focusSound = readBool(object, u"focusSound");
    if (!layout || !shortcut || !hover || !openDelay || !closeDelay || !animate || !rememberPage ||
        !screenMain || !commands || !commandDelay || !historyLimit || !focusMinutes || !focusSound)
        return std::nullopt;

    return PreferenceValues{*layout,       *hover,        *openDelay, *closeDelay,   *animate,
                            *rememberPage, *screenMain,   *commands,  *commandDelay, *shortcut,
                            *historyLimit, *focusMinutes, *focusSound};
}

PreferenceValues PreferenceValues::bounded() const
{
    const PreferenceValues defaults;
    PreferenceValues values = *this;
    values.openDelay = boundedDelay(openDelay, defaults.openDelay);
    values.closeDelay = boundedDelay(closeDelay, defaults.closeDelay);
    values.commandDelay = boundedDelay(commandDelay, defaults.commandDelay);
    values.historyLimit = std::clamp(historyLimit, 0, largestHistoryLimit);
    values.focusMinutes = std::clamp(focusMinutes, fewestFocusMinutes, mostFocusMinutes);
    return values;
}
