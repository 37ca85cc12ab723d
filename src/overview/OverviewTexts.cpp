#include "overview/OverviewTexts.h"

#include <QFileInfo>

// Until the weather store exists the header names what it will show.
QString OverviewTexts::weatherHeader()
{
    return QStringLiteral("Ort & Wetter");
}
QString OverviewTexts::miniHeadline()
{
    return QStringLiteral("Alles griffbereit");
}
QString OverviewTexts::miniSearchHint()
{
    return QStringLiteral("Mac durchsuchen");
}
QString OverviewTexts::miniExpandHint()
{
    return QStringLiteral("Übersicht ausklappen");
}

QString OverviewTexts::shelfEmptyTitle()
{
    return QStringLiteral("Hier ist Platz für deine Dateien.");
}
QString OverviewTexts::shelfEmptyDetail()
{
    return QStringLiteral("Auf die Notch ziehen oder über Hinzufügen auswählen.");
}
QString OverviewTexts::shelfAppsHeader()
{
    return QStringLiteral("APP-FAVORITEN");
}

QString OverviewTexts::shelfItemName(const QUrl& url)
{
    const QFileInfo info(url.toLocalFile());
    if (info.suffix().compare(QLatin1String("app"), Qt::CaseInsensitive) == 0)
        return info.completeBaseName();
    return info.fileName();
}
