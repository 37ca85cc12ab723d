#include "capture/MirrorTexts.h"

namespace MirrorTexts {

// clang-format off
QString initial() { return QStringLiteral("Frontkamera als Spiegel verwenden."); }
QString preparing() { return QStringLiteral("Kamera wird vorbereitet …"); }
QString noCamera() { return QStringLiteral("Keine Kamera gefunden. Verbinde eine Kamera und versuche es erneut."); }
QString cannotOpen() { return QStringLiteral("Kamera konnte nicht geöffnet werden. Bitte erneut versuchen."); }
QString unavailable() { return QStringLiteral("Kamera ist momentan nicht verfügbar."); }
QString notStarted() { return QStringLiteral("Kamera konnte nicht gestartet werden. Prüfe, ob sie von einer anderen App belegt ist."); }
QString active() { return QStringLiteral("Spiegel aktiv · keine Aufnahme"); }
QString stopped() { return QStringLiteral("Spiegel beendet."); }
QString interrupted() { return QStringLiteral("Kamera wurde unterbrochen. Bitte erneut starten."); }
QString denied() { return QStringLiteral("Kamera nicht freigegeben. Erlaube Brenlow den Kamerazugriff in macOS und starte den Spiegel erneut."); }

QString title() { return QStringLiteral("Dein Kameraspiegel"); }
QString startingPreview() { return QStringLiteral("Kamera wird gestartet …"); }
QString previewLabel() { return QStringLiteral("Horizontal gespiegelte Kamera-Vorschau"); }
QString note() { return QStringLiteral("Nur Live-Vorschau · kein Mikrofon · keine Speicherung oder Übertragung. Beim Verlassen wird die Kamera ausgeschaltet."); }
QString startButton() { return QStringLiteral("Spiegel starten"); }
QString stopButton() { return QStringLiteral("Stoppen"); }
QString settingsButton() { return QStringLiteral("Kamerafreigabe öffnen"); }
QString settingsAnchor() { return QStringLiteral("Privacy_Camera"); }
// clang-format on

} // namespace MirrorTexts
