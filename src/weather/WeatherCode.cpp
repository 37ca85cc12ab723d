#include "weather/WeatherCode.h"

namespace {

bool within(int code, int low, int high)
{
    return code >= low && code <= high;
}

} // namespace

QString WeatherCode::description(int code)
{
    if (code == 0)
        return QStringLiteral("Klar");
    if (code == 1 || code == 2)
        return QStringLiteral("Heiter bis wolkig");
    if (code == 3)
        return QStringLiteral("Bewölkt");
    if (code == 45 || code == 48)
        return QStringLiteral("Nebel");
    if (within(code, 51, 57))
        return QStringLiteral("Nieselregen");
    if (within(code, 61, 67))
        return QStringLiteral("Regen");
    if (within(code, 71, 77))
        return QStringLiteral("Schnee");
    if (within(code, 80, 82))
        return QStringLiteral("Regenschauer");
    if (code == 85 || code == 86)
        return QStringLiteral("Schneeschauer");
    if (within(code, 95, 99))
        return QStringLiteral("Gewitter");
    return QStringLiteral("Wetter");
}

QString WeatherCode::symbol(int code, bool day)
{
    if (code == 0)
        return day ? QStringLiteral("sun.max.fill") : QStringLiteral("moon.stars.fill");
    if (code == 1 || code == 2)
        return day ? QStringLiteral("cloud.sun.fill") : QStringLiteral("cloud.moon.fill");
    if (code == 3)
        return QStringLiteral("cloud.fill");
    if (code == 45 || code == 48)
        return QStringLiteral("cloud.fog.fill");
    if (within(code, 51, 67) || within(code, 80, 82))
        return QStringLiteral("cloud.rain.fill");
    if (within(code, 71, 77) || code == 85 || code == 86)
        return QStringLiteral("cloud.snow.fill");
    if (within(code, 95, 99))
        return QStringLiteral("cloud.bolt.rain.fill");
    return QStringLiteral("cloud");
}
