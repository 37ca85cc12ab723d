#include "capture/CaptureKind.h"

namespace CaptureKinds {

QString saveTitle(CaptureKind kind)
{
    return kind == CaptureKind::screenshot ? QStringLiteral("Screenshot speichern")
                                           : QStringLiteral("Bildschirmaufnahme speichern");
}

QString displayName(CaptureKind kind)
{
    return kind == CaptureKind::screenshot ? QStringLiteral("Screenshot")
                                           : QStringLiteral("Bildschirmaufnahme");
}

QString hint(CaptureKind kind)
{
    // slop: a drag takes an area, a click the window under the pointer.
    if (kind == CaptureKind::screenshot)
        return QStringLiteral("Bereich aufziehen; ein Klick wählt ein Fenster. Escape bricht ab.");
    return QStringLiteral("Bereich aufziehen; die Aufnahme beginnt sofort. Beenden über „Aufnahme beenden“ "
                          "im Brenlow-Symbol der Leiste oder auf der Aufnahme-Seite.");
}

CaptureTool::Mode mode(CaptureKind kind)
{
    return kind == CaptureKind::screenshot ? CaptureTool::Mode::screenshot : CaptureTool::Mode::video;
}

QString macExtension(CaptureKind kind)
{
    return kind == CaptureKind::screenshot ? QStringLiteral("png") : QStringLiteral("mov");
}

QString macContentType(CaptureKind kind)
{
    return kind == CaptureKind::screenshot ? QStringLiteral("public.png")
                                           : QStringLiteral("com.apple.quicktime-movie");
}

QStringList arguments(CaptureKind kind, const QString& destination)
{
    if (kind == CaptureKind::screenshot)
        return {QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("png"), destination};
    return {QStringLiteral("-i"), QStringLiteral("-U"), QStringLiteral("-J"), QStringLiteral("video"),
            destination};
}

QString proposedName(const QDateTime& now, const QString& extension, const QLocale& locale)
{
    // Qt has no medium time style; the short one with seconds is what it would be.
    QString timeFormat = locale.timeFormat(QLocale::ShortFormat);
    if (!timeFormat.contains(QLatin1Char('s'))) {
        const qsizetype minutes = timeFormat.lastIndexOf(QStringLiteral("mm"));
        if (minutes >= 0)
            timeFormat.insert(minutes + 2, QStringLiteral(":ss"));
    }
    QString stamp = locale.toString(now.date(), QLocale::ShortFormat) + QStringLiteral(", ") +
                    locale.toString(now.time(), timeFormat);
    stamp.replace(QLatin1Char(':'), QLatin1Char('-')).replace(QLatin1Char('/'), QLatin1Char('-'));
    return QStringLiteral("Brenlow-") + stamp + QLatin1Char('.') + extension;
}

} // namespace CaptureKinds
