#include "capture/CapturePageTexts.h"

namespace CapturePageTexts {

// clang-format off
QString title() { return QStringLiteral("Bildschirmaufnahme"); }
QString section() { return QStringLiteral("Aufnahme oder Spiegel"); }
QString captureChoice() { return QStringLiteral("Aufnahme"); }
QString mirrorChoice() { return QStringLiteral("Spiegel"); }
QString explanation() { return QStringLiteral("Speicherort wählen, danach den Bereich markieren. Brenlow blendet sich währenddessen aus. Fertige Dateien landen zusätzlich in deiner Ablage und lassen sich per AirDrop teilen."); }
QString screenshotDetail() { return QStringLiteral("Bereich oder Fenster · PNG"); }
QString videoDetail(const QString& extension) { return QStringLiteral("Bildschirmbereich · ") + extension.toUpper(); }
// The macOS wording names its own capture bar; here the area is dragged with slop.
QString selectionHint() { return QStringLiteral("Bereich mit der Maus aufziehen oder ein Fenster anklicken; die Aufnahme beginnt sofort. Escape bricht die Auswahl ab."); }
QString stopHint() { return QStringLiteral("Aufnahmen über „Aufnahme beenden“ im Brenlow-Symbol der Leiste oder hier beenden."); }
QString stopButton() { return QStringLiteral("Aufnahme beenden"); }
QString permissionButton() { return QStringLiteral("Berechtigung für Bildschirmaufnahme öffnen"); }
QString permissionAnchor() { return QStringLiteral("Privacy_ScreenCapture"); }
// clang-format on

} // namespace CapturePageTexts
