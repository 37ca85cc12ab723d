#include "commands/CommandAccess.h"

#include "platform/Accessibility.h"

QString CommandAccess::message(int error, qsizetype count)
{
    if (error == AXError::apiDisabled)
        return QStringLiteral("macOS verweigert dieser gestarteten Brenlow-App den Zugriff (AX -25211), auch "
                              "wenn ein alter Eintrag eingeschaltet ist.");
    if (error == AXError::cannotComplete)
        return QStringLiteral(
            "Die ausgewählte App antwortet gerade nicht. Erneut laden oder eine andere App wählen.");
    if (error != AXError::success)
        return QStringLiteral(
                   "Menüleiste momentan nicht lesbar (AX %1). Andere App wählen oder erneut laden.")
            .arg(error);
    if (count == 0)
        return QStringLiteral("Diese App stellt keine lesbaren Tastenkürzel bereit.");
    return QStringLiteral("%1 Menübefehle geladen.").arg(count);
}
