#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

#include <optional>

// System symbol names used by the pages, drawn as glyphs of the Material Icons font so that
// they take the colour of the text around them.
class Symbol
{
public:
    static constexpr const char* fontFamily = "Material Icons";
    static constexpr const char* fontPath =
        "/usr/share/fonts/truetype/material-design-icons-iconfont/MaterialIcons-Regular.ttf";

    // The font's code point for a symbol name; nothing for names outside the table.
    static std::optional<char16_t> codePoint(const QString& name);
    // Every name of the table, in table order.
    static QStringList names();

    // Makes the icon font known to the application when fontconfig does not list it already;
    // answers whether glyphs can be drawn.
    static bool ensureFont();
    // The icon font at a pixel size, or nothing when it cannot be resolved.
    static std::optional<QFont> font(int pixelSize);
    // What to draw: the glyph when the font is there and knows the name, else the name itself,
    // so a missing font degrades to readable text.
    static QString text(const QString& name, bool fontAvailable);
};
