#include "setup/OnboardingTexts.h"

#include "setup/PermissionTexts.h"

#include <algorithm>

namespace {

struct Heading
{
    const char16_t* title;
    const char16_t* subtitle;
};

constexpr Heading headings[OnboardingTexts::stepCount] = {
    {u"Willkommen in deiner Notch.", u"Ein kurzer Rundgang – du entscheidest, was du aktivierst."},
    {u"Befehle deiner Apps.", u"Command halten zeigt die Menü-Kurzbefehle der aktiven App."},
    {u"Deine Musik, direkt hier.", u"Cover, Wiedergabe und Songposition für Spotify und Apple Music."},
    {u"Deine Stadt. Dein Wetter.", u"Nutze deinen Standort oder wähle eine Stadt ohne Standortfreigabe."},
    {u"Momente festhalten.", u"Screenshots und Bildschirmvideos über das Kamerasymbol."},
    {u"Alles bereit für deinen Mac.", u"Diese Handgriffe machen Brenlow im Alltag schnell."},
};

int clampStep(int step)
{
    return std::clamp(step, 0, OnboardingTexts::stepCount - 1);
}

QString text(const char16_t* utf16)
{
    return QString::fromUtf16(utf16);
}

} // namespace

QString OnboardingTexts::brand()
{
    return QStringLiteral("BRENLOW");
}

QString OnboardingTexts::stepDescription(int step)
{
    return QStringLiteral("Einführung, Schritt ") + QString::number(clampStep(step) + 1) +
           QStringLiteral(" von 6");
}

QString OnboardingTexts::title(int step)
{
    return text(headings[clampStep(step)].title);
}
QString OnboardingTexts::subtitle(int step)
{
    return text(headings[clampStep(step)].subtitle);
}
bool OnboardingTexts::hasBack(int step)
{
    return step >= 1;
}
QString OnboardingTexts::back()
{
    return QStringLiteral("Zurück");
}

std::optional<QString> OnboardingTexts::badge(int step)
{
    if (step >= 1 && step <= 4)
        return QStringLiteral("Optional · später änderbar");
    return std::nullopt;
}

QString OnboardingTexts::primary(int step)
{
    if (step <= 0)
        return QStringLiteral("Los geht’s");
    if (step >= stepCount - 1)
        return QStringLiteral("Brenlow starten");
    return QStringLiteral("Weiter");
}

bool OnboardingTexts::primaryFinishes(int step)
{
    return step >= stepCount - 1;
}
QString OnboardingTexts::later()
{
    return QStringLiteral("Später einrichten");
}

OnboardingTexts::Content OnboardingTexts::content(int step, const States& states, HistoryShortcut shortcut)
{
    const bool accessibilityTrusted = states.accessibility;
    const bool screenCaptureAllowed = states.screenCapture;
    Content content;
    content.restartNote = !accessibilityTrusted;
    switch (clampStep(step)) {
    case 0:
        content.symbol = QStringLiteral("rectangle.topthird.inset.filled");
        content.lead = QStringLiteral("Kleiner Platz. Viele Möglichkeiten.");
        content.paragraphs = {
            QStringLiteral("Musik, Fokuszeit, Dateien, schnelle Notizen und dein Copy-Verlauf – "
                           "nur eine Mausbewegung entfernt.")};
        content.tips = {
            {QStringLiteral("pin.fill"), QStringLiteral("Maus auf die Notch"),
             QStringLiteral(
                 "Öffnet automatisch. Beim Verlassen klappt sie wieder ein; die Stecknadel hält sie offen.")},
            {QStringLiteral("hand.raised"), QStringLiteral("Deine Freigaben, deine Wahl"),
             QStringLiteral(
                 "Wir erklären jede Berechtigung vor dem Öffnen des macOS-Dialogs. Du kannst jeden Schritt "
                 "überspringen.")},
        };
        break;
    case 1:
        content.granted = accessibilityTrusted;
        content.state = accessibilityTrusted ? PermissionTexts::accessibilityGranted()
                                             : PermissionTexts::accessibilityNotYet();
        content.paragraphs = {
            QStringLiteral(
                "macOS schützt die Menüs anderer Apps. Erlaube Brenlow unter Datenschutz & Sicherheit → "
                "Bedienungshilfen den Zugriff, damit es deren Kurzbefehle lesen kann."),
            QStringLiteral(
                "Beim Wechsel von einer älteren Testversion kann macOS eine neue Freigabe verlangen. Füge "
                "dann die aktuelle Brenlow-App hinzu. Vorhandene Freigaben werden automatisch geprüft."),
        };
        content.buttons = {{Action::openAccessibility, QStringLiteral("Berechtigung öffnen")},
                           {Action::revealApp, QStringLiteral("Aktuelle App im Finder zeigen")}};
        content.refreshRow = true;
        content.tips = {
            {QStringLiteral("command"), QStringLiteral("So verwendest du es"),
             QStringLiteral("Eine andere App aktivieren, Command kurz halten und die Befehle ansehen. "
                            "Beim Loslassen schließt die Übersicht.")}};
        break;
    case 2:
        content.automation = {
            {PermissionTexts::spotifyTitle(), PermissionTexts::automationText(states.spotify),
             PermissionTexts::automationSymbol(states.spotify), states.spotify == AutomationAccess::allowed},
            {PermissionTexts::musicTitle(), PermissionTexts::automationText(states.music),
             PermissionTexts::automationSymbol(states.music), states.music == AutomationAccess::allowed}};
        content.buttons = {{Action::openAutomation, QStringLiteral("Automation öffnen")}};
        content.refreshRow = true;
        content.paragraphs = {
            QStringLiteral("Öffne Spotify oder Apple Music, um die Freigabe zu prüfen. Ein "
                           "laufender Song ist dafür nicht nötig. Audio verbinden fragt nur noch "
                           "fehlende Freigaben an.")};
        content.tips = {
            {QStringLiteral("music.note"), QStringLiteral("Cover und Zeitleiste"),
             QStringLiteral("Spule mit ±10 oder ±30 Sekunden oder ziehe die Songposition. Andere Apps "
                            "und Browser-Player werden nicht gesteuert.")}};
        break;
    case 3:
        // The location and city choice comes with the weather store.
        content.symbol = QStringLiteral("cloud.sun");
        break;
    case 4:
        content.symbol = QStringLiteral("camera.viewfinder");
        content.granted = screenCaptureAllowed;
        content.state = screenCaptureAllowed ? PermissionTexts::screenCaptureGranted()
                                             : QStringLiteral("Bildschirmaufnahme in macOS einrichten");
        content.paragraphs = {QStringLiteral(
            "Für Bildschirmfotos und Videos kann macOS eine Freigabe unter Datenschutz & Sicherheit → "
            "Bildschirmaufnahme verlangen. Es wird nur aufgenommen, wenn du die Funktion startest und einen "
            "Bereich auswählst.")};
        content.buttons = {{Action::requestScreenCapture, QStringLiteral("Freigabe anfragen")},
                           {Action::openScreenCaptureSettings, QStringLiteral("Systemeinstellungen öffnen")}};
        content.refreshRow = true;
        content.tips = {
            {QStringLiteral("camera.viewfinder"), QStringLiteral("So nimmst du etwas auf"),
             QStringLiteral("Kamerasymbol → Screenshot oder Video → Speicherort → Bereich wählen. Videos "
                            "in der macOS-Leiste starten und über Stopp beenden.")}};
        content.note =
            QStringLiteral("Ein Mikrofon ist nur nötig, wenn du Ton aufnehmen möchtest. Wähle es dann in "
                           "den Optionen der macOS-Aufnahmeleiste; dafür fragt macOS separat nach.");
        break;
    case 5: {
        // Without a global shortcut the tip names only the history.
        const QString key = HistoryShortcuts::label(shortcut);
        const QString historyTitle =
            key.isEmpty() ? QStringLiteral("Copy-Verlauf") : key + QStringLiteral(" · Copy-Verlauf");
        content.tips = {
            {QStringLiteral("doc.on.clipboard"), historyTitle,
             QStringLiteral(
                 "Eintrag anklicken, dann mit Command + V in deiner App einsetzen. Der Kurzbefehl ist in "
                 "den Einstellungen änderbar.")},
            {QStringLiteral("tray.and.arrow.down"), QStringLiteral("Ziehen, ablegen, teilen"),
             QStringLiteral(
                 "Dateien auf die Notch ziehen. In der Ablage wiederfinden oder über AirDrop weitergeben.")},
            {QStringLiteral("timer"), QStringLiteral("Fokus und schnelle Werkzeuge"),
             QStringLiteral(
                 "5 bis 60 Minuten Fokus, Apps und Dateien suchen, Notizen schreiben und Arbeitsbereiche "
                 "öffnen.")},
            {QStringLiteral("slider.horizontal.3"), QStringLiteral("Deine Form wählen"),
             QStringLiteral(
                 "Breit, kompakt oder hoch: unter Einstellungen → Ansicht. Dort lässt sich auch diese "
                 "Einführung erneut starten.")},
        };
        break;
    }
    }
    return content;
}

QString OnboardingTexts::anchor(Action action)
{
    switch (action) {
    case Action::openAccessibility:
        return PermissionTexts::accessibilityAnchor();
    case Action::openAutomation:
        return PermissionTexts::automationAnchor();
    case Action::openScreenCaptureSettings:
        return PermissionTexts::screenCaptureAnchor();
    case Action::revealApp:
    case Action::requestScreenCapture:
        break;
    }
    return {};
}
