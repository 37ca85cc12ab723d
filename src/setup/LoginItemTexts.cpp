#include "setup/LoginItemTexts.h"

QString LoginItemTexts::switchTitle()
{
    return QStringLiteral("Bei der Anmeldung automatisch starten");
}

QString LoginItemTexts::statusLine(LoginItemStatus status)
{
    switch (status) {
    case LoginItemStatus::notRegistered:
        return QStringLiteral("Automatischer Start ist ausgeschaltet.");
    case LoginItemStatus::enabled:
        return QStringLiteral("Aktiv · Brenlow startet nach der Anmeldung automatisch.");
    case LoginItemStatus::requiresApproval:
        return QStringLiteral("In macOS unter Anmeldeobjekte noch bestätigen.");
    case LoginItemStatus::notFound:
        return QStringLiteral("Brenlow zuerst im Ordner Programme installieren.");
    }
    return QStringLiteral("Autostart-Status momentan nicht verfügbar.");
}

QString LoginItemTexts::changeFailed(const QString& systemError)
{
    return QStringLiteral("Autostart konnte nicht geändert werden: ") + systemError;
}

QString LoginItemTexts::openSettings()
{
    return QStringLiteral("Anmeldeobjekte öffnen");
}

bool LoginItemTexts::offersSettings(LoginItemStatus status, bool hasError)
{
    return status == LoginItemStatus::requiresApproval || hasError;
}

QString LoginItemTexts::settingsUnavailable()
{
    return QStringLiteral("Diese Arbeitsumgebung hat keine Seite für Autostart-Programme; der Schalter hier "
                          "genügt.");
}
