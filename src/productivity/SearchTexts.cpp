#include "productivity/SearchTexts.h"

QString SearchTexts::idle()
{
    return QStringLiteral("Programme und Dateien auf deinem Mac finden.");
}
QString SearchTexts::searching()
{
    return QStringLiteral("Suche im Spotlight-Index …");
}
QString SearchTexts::noResults()
{
    return QStringLiteral("Keine Treffer. Nicht indexierte oder geschützte Dateien können fehlen.");
}
QString SearchTexts::results(int count)
{
    return QString::number(count) + QStringLiteral(" Treffer · Programme zuerst · Spotlight-Dateiindex");
}
QString SearchTexts::unavailable()
{
    return QStringLiteral("Spotlight nicht verfügbar. Gefundene Programme werden angezeigt.");
}
QString SearchTexts::placeholder()
{
    return QStringLiteral("Programme oder Dateien suchen …");
}
QString SearchTexts::scopeAll()
{
    return QStringLiteral("Alle");
}
QString SearchTexts::scopeApps()
{
    return QStringLiteral("Apps");
}
QString SearchTexts::scopeFiles()
{
    return QStringLiteral("Dateien");
}
QString SearchTexts::reveal()
{
    return QStringLiteral("Im Finder zeigen");
}
QString SearchTexts::addToShelf()
{
    return QStringLiteral("Zur Ablage hinzufügen");
}
