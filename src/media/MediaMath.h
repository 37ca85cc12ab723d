#pragma once

#include <QString>

// The small text functions of the music controls.
class MediaMath
{
public:
    // "2:05": whole minutes (no hours field) and seconds; bad or negative input reads 0:00.
    static QString timestamp(double seconds);
    // A quoted string literal for a player script, with backslash escapes.
    static QString literal(const QString& text);
};
