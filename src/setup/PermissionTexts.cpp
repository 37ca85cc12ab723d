#include "setup/PermissionTexts.h"

#include <QRegularExpression>

QString PermissionTexts::accessibilityAnchor()
{
    return QStringLiteral("Privacy_Accessibility");
}
QString PermissionTexts::automationAnchor()
{
    return QStringLiteral("Privacy_Automation");
}
QString PermissionTexts::screenCaptureAnchor()
{
    return QStringLiteral("Privacy_ScreenCapture");
}

QString PermissionTexts::accessibilityGranted()
{
    return QStringLiteral("Bedienungshilfen freigegeben");
}
QString PermissionTexts::accessibilityNotYet()
{
    return QStringLiteral("Bedienungshilfen noch nicht freigegeben");
}
QString PermissionTexts::accessibilityMissing()
{
    return QStringLiteral("Bedienungshilfen nicht freigegeben");
}
QString PermissionTexts::screenCaptureGranted()
{
    return QStringLiteral("Bildschirmaufnahme freigegeben");
}
QString PermissionTexts::screenCaptureMissing()
{
    return QStringLiteral("Bildschirmaufnahme nicht freigegeben");
}
QString PermissionTexts::allowAccessibility()
{
    return QStringLiteral("Bedienungshilfen erlauben");
}

QString PermissionTexts::spotifyTitle()
{
    return QStringLiteral("Spotify");
}
QString PermissionTexts::musicTitle()
{
    return QStringLiteral("Apple Music");
}

QString PermissionTexts::automationText(AutomationAccess access)
{
    switch (access) {
    case AutomationAccess::allowed:
        return QStringLiteral("Freigegeben");
    case AutomationAccess::needsConsent:
        return QStringLiteral("Noch nicht angefragt");
    case AutomationAccess::denied:
        return QStringLiteral("Nicht freigegeben");
    case AutomationAccess::notRunning:
        return QStringLiteral("Zum Prüfen den Player öffnen");
    case AutomationAccess::unavailable:
        break;
    }
    return QStringLiteral("Momentan nicht prüfbar");
}

QString PermissionTexts::automationSymbol(AutomationAccess access)
{
    return access == AutomationAccess::allowed ? QStringLiteral("checkmark.circle.fill")
                                               : QStringLiteral("circle.dashed");
}

QString PermissionTexts::recheck()
{
    return QStringLiteral("Status erneut prüfen");
}
QString PermissionTexts::checking()
{
    return QStringLiteral("Wird geprüft …");
}
QString PermissionTexts::restartNote()
{
    return QStringLiteral(
        "Wenn der Schalter bereits eingeschaltet ist: Brenlow neu starten. Bleibt der Zugriff "
        "gesperrt, muss die aktuelle App in macOS erneut zugeordnet werden.");
}
QString PermissionTexts::restart()
{
    return QStringLiteral("Brenlow neu starten");
}
QString PermissionTexts::restartHelp()
{
    return QStringLiteral("Verlauf, Favoriten, Notizen und Einstellungen bleiben lokal erhalten.");
}
QString PermissionTexts::restartUnavailable()
{
    return QStringLiteral("Neustart nicht möglich. Bitte Brenlow beenden und erneut öffnen.");
}

QString PermissionTexts::settingsFallback(const QString& anchor)
{
    const QString path = QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → %1 öffnen.");
    if (anchor == accessibilityAnchor())
        return path.arg(QStringLiteral("Bedienungshilfen"));
    if (anchor == automationAnchor())
        return path.arg(QStringLiteral("Automation"));
    if (anchor == screenCaptureAnchor())
        return path.arg(QStringLiteral("Bildschirmaufnahme"));
    // Anything else that could follow "?" in a settings location leads at least to the section.
    static const QRegularExpression location(QStringLiteral("^[A-Za-z_]+$"));
    if (location.match(anchor).hasMatch())
        return QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit öffnen.");
    return {};
}

QString PermissionTexts::appPath(const QString& path)
{
    return QStringLiteral("App-Pfad: ") + path;
}
