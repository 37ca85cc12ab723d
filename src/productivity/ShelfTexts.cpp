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

QString ShelfTexts::shareAll()
{
    return QStringLiteral("AirDrop für alle");
}
QString ShelfTexts::addFiles()
{
    return QStringLiteral("Dateien hinzufügen");
}
QString ShelfTexts::addApps()
{
    return QStringLiteral("App hinzufügen");
}
QString ShelfTexts::appFilter()
{
    return QStringLiteral("Programme (*.desktop)");
}
QString ShelfTexts::removeApp()
{
    return QStringLiteral("Aus den Favoriten entfernen");
}
QString ShelfTexts::sharingOpen()
{
    return QStringLiteral("Ein AirDrop-Dialog ist bereits geöffnet.");
}
QString ShelfTexts::sharingEmpty()
{
    return QStringLiteral("Lege zuerst Dateien in die Ablage.");
}
QString ShelfTexts::sharingUnavailable()
{
    return QStringLiteral("AirDrop ist für diese Auswahl nicht verfügbar.");
}
QString ShelfTexts::sharingEnded(const QString& error)
{
    return QStringLiteral("AirDrop beendet: ") + error;
}
QString ShelfTexts::itemGone(const QString& name)
{
    return QStringLiteral("„%1“ ist nicht mehr da. Der Eintrag bleibt, bis du ihn entfernst.").arg(name);
}
QString ShelfTexts::notOpened()
{
    return QStringLiteral("Element konnte nicht geöffnet werden.");
}
QString ShelfTexts::notRevealed()
{
    return QStringLiteral("Der Ordner konnte nicht gezeigt werden.");
}
QString ShelfTexts::addedToShelf()
{
    return QStringLiteral("Zur Ablage hinzugefügt");
}

QString ShelfTexts::itemName(const QUrl& url)
{
    const QFileInfo info(url.toLocalFile());
    if (info.suffix().compare(QLatin1String("app"), Qt::CaseInsensitive) == 0 ||
        info.suffix().compare(QLatin1String("desktop"), Qt::CaseInsensitive) == 0)
        return info.completeBaseName();
    return info.fileName();
}
