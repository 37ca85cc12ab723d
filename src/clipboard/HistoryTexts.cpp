#include "clipboard/HistoryTexts.h"

QString HistoryTexts::searchPlaceholder()
{
    return QStringLiteral("Im Verlauf suchen …");
}

QString HistoryTexts::recordingHint()
{
    return QStringLiteral("Erfassung pausieren oder fortsetzen");
}

QString HistoryTexts::recordingSymbol(bool recording)
{
    return recording ? QStringLiteral("pause.fill") : QStringLiteral("play.fill");
}

QString HistoryTexts::clearHint()
{
    return QStringLiteral("Gesamten lokal gespeicherten Verlauf einschließlich Favoriten leeren");
}

QString HistoryTexts::clearSymbol()
{
    return QStringLiteral("trash");
}

QString HistoryTexts::pinHint()
{
    return QStringLiteral("Favorit umschalten · wird lokal gespeichert");
}

QString HistoryTexts::pinSymbol(bool pinned)
{
    return pinned ? QStringLiteral("star.fill") : QStringLiteral("star");
}

QString HistoryTexts::deleteLabel()
{
    return QStringLiteral("Eintrag löschen");
}

QString HistoryTexts::deleteHint()
{
    return QStringLiteral("Diesen Eintrag lokal löschen");
}

QString HistoryTexts::deleteSymbol()
{
    return QStringLiteral("xmark");
}

QString HistoryTexts::emptySymbol()
{
    return QStringLiteral("doc.on.clipboard");
}

QString HistoryTexts::emptyTitle()
{
    return QStringLiteral("Keine passenden Einträge.");
}

QString HistoryTexts::emptyDetail()
{
    return QStringLiteral("Alle erfassten Kopien bleiben lokal gespeichert, bis du sie löschst.");
}

QString HistoryTexts::rowCaption(const QString& kindLabel, const QDateTime& date, const QDateTime& now)
{
    const QDateTime local = date.toLocalTime();
    const bool today = local.date() == now.toLocalTime().date();
    const QString when =
        today ? local.toString(QStringLiteral("HH:mm")) : local.toString(QStringLiteral("dd.MM.yy, HH:mm"));
    return kindLabel + QStringLiteral(" · ") + when;
}

QString HistoryTexts::recordingToggle()
{
    return QStringLiteral("Copy-Verlauf erfassen");
}

QString HistoryTexts::historyNote()
{
    return QStringLiteral(
        "Alle erfassten Kopien bleiben auf diesem Mac gespeichert – ohne automatische Begrenzung "
        "oder Ablaufdatum. Lösche einzelne Einträge im Verlauf oder leere alles einschließlich "
        "Favoriten. Vertraulich markierte Kopien werden weiterhin ausgelassen.");
}

QString HistoryTexts::clearHistory()
{
    return QStringLiteral("Verlauf vollständig leeren");
}
