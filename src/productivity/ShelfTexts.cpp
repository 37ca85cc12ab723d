#include "productivity/ShelfTexts.h"

#include <QFileInfo>

QString ShelfTexts::emptyTitle()
{
    return QStringLiteral("Hier ist Platz für deine Dateien.");
}
QString ShelfTexts::emptyDetail()
{
    return QStringLiteral("Auf die Notch ziehen oder über Hinzufügen auswählen.");
}
QString ShelfTexts::appsHeader()
{
    return QStringLiteral("APP-FAVORITEN");
}

QString ShelfTexts::itemName(const QUrl& url)
{
    const QFileInfo info(url.toLocalFile());
    if (info.suffix().compare(QLatin1String("app"), Qt::CaseInsensitive) == 0)
        return info.completeBaseName();
    return info.fileName();
}
