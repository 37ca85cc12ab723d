#include "media/MediaTexts.h"

namespace MediaTexts {

// clang-format off
QString unknownTitle() { return QStringLiteral("Unbekannter Titel"); }
QString noPlayback() { return QStringLiteral("Keine Wiedergabe"); }
QString startPlayer() { return QStringLiteral("Apple Music oder Spotify starten"); }
QString waiting() { return QStringLiteral("Warte auf einen Titel in Music oder Spotify."); }
QString notAnswering() { return QStringLiteral("Player antwortet nicht. Erneut versuchen oder die App öffnen."); }
QString allowAutomation() { return QStringLiteral("Automation in Einstellungen erlauben"); }
QString automationRefused() { return QStringLiteral("Automation wurde nicht erlaubt. Freigabe in den Systemeinstellungen prüfen."); }
QString noPlaybackYet() { return QStringLiteral("Noch keine Wiedergabe"); }
QString connectPlayers() { return QStringLiteral("Apple Music & Spotify verbinden"); }
QString connectHint() { return QStringLiteral("Music oder Spotify verbinden, um die Wiedergabe zu steuern."); }
QString switchedOff() { return QStringLiteral("Musikverbindung ausgeschaltet."); }
QString controlFailed() { return QStringLiteral("Musiksteuerung nicht möglich. Automation-Freigabe prüfen."); }

QString nowPlaying() { return QStringLiteral("JETZT LÄUFT"); }
QString anyPlayer() { return QStringLiteral("MUSIC / SPOTIFY"); }
QString connectButton() { return QStringLiteral("Audio verbinden"); }
QString positionLabel() { return QStringLiteral("Songposition"); }
QString noTime() { return QStringLiteral("–:––"); }
QString back30() { return QStringLiteral("30 Sekunden zurück"); }
QString back10() { return QStringLiteral("10 Sekunden zurück"); }
QString previous() { return QStringLiteral("Voriger Titel"); }
QString playPause() { return QStringLiteral("Wiedergabe / Pause"); }
QString next() { return QStringLiteral("Nächster Titel"); }
QString forward10() { return QStringLiteral("10 Sekunden vor"); }
QString forward30() { return QStringLiteral("30 Sekunden vor"); }
QString cover() { return QStringLiteral("Songcover"); }
QString noCover() { return QStringLiteral("Kein Songcover verfügbar"); }

QString connectToggle() { return QStringLiteral("Apple Music und Spotify verbinden"); }
QString controlsNote() { return QStringLiteral("Spule mit ±10 oder ±30 Sekunden oder ziehe die Songposition. Andere Apps und Browser-Player werden nicht gesteuert."); }
QString scopeNote() { return QStringLiteral("Musik: Music und Spotify, keine Browser-Player."); }
QString toastToggle() { return QStringLiteral("Songtitel und Cover links aus der Notch einblenden"); }
QString toastDuration() { return QStringLiteral("Einblenden für"); }
QString toastPreview() { return QStringLiteral("Einblendung mit aktuellem Song testen"); }
QString toastNote() { return QStringLiteral("Das Feld fährt seitlich aus der geschlossenen Notch und bleibt genau so hoch wie sie. Ohne Cover bleibt der Titel sichtbar. Beim Öffnen von Brenlow wird es geschlossen. Die Dauer gilt auch für App-Hinweise."); }
// clang-format on

QString playerState(const QString& app, bool playing)
{
    return app + (playing ? QStringLiteral(" · Wiedergabe") : QStringLiteral(" · Pausiert"));
}

QString seconds(int count)
{
    return QStringLiteral("%1 Sekunden").arg(count);
}

QString unread(int count)
{
    return QString::number(count) + QStringLiteral(" ungelesene Hinweise");
}

} // namespace MediaTexts
