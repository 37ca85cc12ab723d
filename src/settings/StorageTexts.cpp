#include "settings/StorageTexts.h"

namespace StorageTexts {

QString settingsDatabase()
{
    return QStringLiteral("alle Einstellungen");
}

QString legacyFile()
{
    return QStringLiteral("die Einstellungsdatei");
}

QString legacyEntries(qsizetype count)
{
    if (count == 1)
        return QStringLiteral("ein Eintrag der alten Einstellungsdatei");
    return QStringLiteral("%1 Einträge der alten Einstellungsdatei").arg(count);
}

QString storedKey(const QString& key)
{
    return QStringLiteral("der Eintrag „%1“").arg(key);
}

QString damageTitle()
{
    return QStringLiteral("Gespeicherte Daten nicht lesbar");
}

QString damageDetail(const StorageDamage& damage)
{
    if (damage.copy)
        return QStringLiteral("Nicht lesbar: %1. Das Original liegt unter %2.")
            .arg(damage.what, *damage.copy);
    return QStringLiteral("Nicht lesbar: %1. Das Original bleibt unverändert gespeichert und wird nicht "
                          "überschrieben.")
        .arg(damage.what);
}

QString damageMessage(const QList<StorageDamage>& damages)
{
    if (damages.size() == 1 && damages.first().copy)
        return QStringLiteral("Nicht lesbar: %1 – das Original liegt unter %2.")
            .arg(damages.first().what, *damages.first().copy);
    if (damages.size() == 1)
        return QStringLiteral("Nicht lesbar: %1 – das Original bleibt unverändert.")
            .arg(damages.first().what);
    return QStringLiteral("Gespeicherte Daten nicht lesbar – Einzelheiten unter „Aktivität“.");
}

QString reason(WriteProblem problem)
{
    switch (problem) {
    case WriteProblem::diskFull:
        return QStringLiteral("der Datenträger ist voll");
    case WriteProblem::noPermission:
        return QStringLiteral("keine Schreibrechte");
    case WriteProblem::diskError:
        return QStringLiteral("Schreibfehler des Datenträgers");
    case WriteProblem::locked:
        return QStringLiteral("die Datei ist gesperrt");
    case WriteProblem::unknown:
        break;
    }
    return QStringLiteral("unbekannter Fehler");
}

QString writeFailedTitle()
{
    return QStringLiteral("Einstellungen nicht gespeichert");
}

QString writeFailedDetail(WriteProblem problem)
{
    return QStringLiteral("Grund: %1. Deine Änderungen bleiben erhalten und werden gespeichert, sobald es "
                          "wieder geht.")
        .arg(reason(problem));
}

QString writeFailedMessage(WriteProblem problem)
{
    return QStringLiteral("Einstellungen nicht gespeichert: %1. Änderungen bleiben erhalten und werden "
                          "nachgeholt.")
        .arg(reason(problem));
}

QString writesRecoveredTitle()
{
    return QStringLiteral("Einstellungen wieder gespeichert");
}

QString writesRecoveredMessage()
{
    return QStringLiteral("Einstellungen wieder gespeichert – alle Änderungen sind nachgetragen.");
}

QString openFailedDetail(WriteProblem problem)
{
    return QStringLiteral("Die Einstellungsdatei ließ sich nicht öffnen (%1). Sie bleibt unverändert; "
                          "Änderungen gelten nur bis zum Beenden.")
        .arg(reason(problem));
}

QString openFailedMessage(WriteProblem problem)
{
    return QStringLiteral(
               "Einstellungsdatei ließ sich nicht öffnen: %1. Änderungen gelten nur bis zum Beenden.")
        .arg(reason(problem));
}

} // namespace StorageTexts
