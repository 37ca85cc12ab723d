#include "capture/CaptureTexts.h"

#include <algorithm>

namespace CaptureTexts {

QString saveMessage()
{
    return QStringLiteral("Danach wählst du den Bildschirmbereich. Escape bricht die Auswahl ab.");
}

QString launchFailed(const QString& reason)
{
    return QStringLiteral("Bildschirmaufnahme konnte nicht gestartet werden: ") + reason;
}

QString noCapture(const QString& errorText, qsizetype limit)
{
    const QString text = errorText.trimmed();
    if (text.isEmpty())
        return QStringLiteral("Keine Aufnahme erstellt. Auswahl abgebrochen oder keine Datei erstellt.");
    qsizetype cut = std::min(limit, text.size());
    // Never half a character: a surrogate pair stays whole or goes whole.
    if (cut < text.size() && cut > 0 && text.at(cut - 1).isHighSurrogate())
        --cut;
    return QStringLiteral("Keine Aufnahme erstellt. ") + text.left(cut);
}

QString saved(const QString& displayName)
{
    return displayName + QStringLiteral(" gespeichert und zur Ablage hinzugefügt.");
}

QString saveFailed(const QString& temporaryPath)
{
    return QStringLiteral("Speichern fehlgeschlagen. Aufnahme bleibt unter ") + temporaryPath;
}

QString stopEntry()
{
    return QStringLiteral("Aufnahme beenden");
}

} // namespace CaptureTexts
