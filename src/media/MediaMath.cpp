#include "media/MediaMath.h"

#include <algorithm>
#include <cmath>

QString MediaMath::timestamp(double seconds)
{
    const double value = std::isfinite(seconds) ? std::clamp(seconds, 0.0, 8.64e7) : 0.0;
    const auto whole = qint64(std::trunc(value));
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

QString MediaMath::literal(const QString& text)
{
    // The backslash first, so the escapes added after it are not escaped again.
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    escaped.replace(QLatin1Char('"'), QLatin1String("\\\""));
    escaped.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    escaped.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}
