#include "weather/WeatherTexts.h"

#include "weather/WeatherCode.h"

QString WeatherTexts::start()
{
    return QStringLiteral("Standort verwenden oder eine Stadt auswählen.");
}
QString WeatherTexts::awaitingPermission()
{
    return QStringLiteral("Standortfreigabe in macOS bestätigen oder eine Stadt suchen.");
}
QString WeatherTexts::refusedOnRefresh()
{
    return QStringLiteral("Standort nicht freigegeben. Stadt suchen oder Ortungsdienste in macOS öffnen.");
}
QString WeatherTexts::refusedOnChange()
{
    return QStringLiteral("Standort nicht freigegeben. Wähle eine Stadt oder öffne die Ortungsdienste.");
}
QString WeatherTexts::locating()
{
    return QStringLiteral("Standort wird ermittelt …");
}
QString WeatherTexts::locationTimedOut()
{
    return QStringLiteral("Standort momentan nicht verfügbar. Du kannst eine Stadt auswählen.");
}
QString WeatherTexts::locationFailed()
{
    return QStringLiteral("Standort nicht verfügbar. Bitte eine Stadt suchen.");
}
QString WeatherTexts::noCity()
{
    return QStringLiteral("Stadt konnte nicht ermittelt werden. Bitte über die Suche auswählen.");
}
QString WeatherTexts::updating()
{
    return QStringLiteral("Wetter wird aktualisiert …");
}
QString WeatherTexts::shown(const WeatherResponse::Current& current)
{
    return WeatherCode::description(current.weather_code) +
           QStringLiteral(" · Modellprognose für die aktuelle Stunde");
}
QString WeatherTexts::updateNeeded()
{
    return QStringLiteral(" · Wetteranbindung benötigt ein App-Update.");
}
QString WeatherTexts::noCurrentForecast()
{
    return QStringLiteral("Keine aktuelle Prognose verfügbar.");
}
QString WeatherTexts::paused(const QDateTime& until)
{
    return QStringLiteral("Wetterdienst pausiert. Nächster Versuch ab ") +
           until.toLocalTime().toString(QStringLiteral("HH:mm")) + QLatin1Char('.');
}
QString WeatherTexts::serviceBusy()
{
    return QStringLiteral("Wetterdienst ausgelastet. Abrufe werden vorübergehend pausiert.");
}
QString WeatherTexts::unreachable()
{
    return QStringLiteral("Wetter nicht erreichbar. Erneuter Versuch in einigen Minuten.");
}
QString WeatherTexts::searchTooShort()
{
    return QStringLiteral("Mindestens zwei Buchstaben eingeben.");
}
QString WeatherTexts::chooseCity()
{
    return QStringLiteral("Passende Stadt auswählen.");
}
QString WeatherTexts::noCityFound()
{
    return QStringLiteral("Keine Stadt gefunden.");
}
QString WeatherTexts::searchUnavailable()
{
    return QStringLiteral("Stadtsuche nicht verfügbar. Bitte erneut versuchen.");
}
QString WeatherTexts::switchedOff()
{
    return QStringLiteral("Wetter ausgeschaltet. Standort verwenden oder Stadt auswählen.");
}

QString WeatherTexts::temperature(const std::optional<WeatherResponse::Current>& current)
{
    if (!current)
        return QStringLiteral("–°");
    return QString::asprintf("%.0f", current->temperature_2m) + QChar(0x00B0);
}
QString WeatherTexts::description(const std::optional<WeatherResponse::Current>& current)
{
    return WeatherCode::description(current ? current->weather_code : -1);
}
QString WeatherTexts::symbol(const std::optional<WeatherResponse::Current>& current)
{
    if (!current)
        return WeatherCode::symbol(-1, true);
    return WeatherCode::symbol(current->weather_code, current->day());
}

QString WeatherTexts::headerName(const std::optional<WeatherPlace>& place)
{
    return place ? place->name : QStringLiteral("Ort & Wetter");
}
QString WeatherTexts::resultLine(const WeatherPlace& place)
{
    QStringList where;
    if (place.admin1 && *place.admin1 != place.name)
        where.append(*place.admin1);
    if (place.country)
        where.append(*place.country);
    if (where.isEmpty())
        return place.name;
    return place.name + QStringLiteral(" · ") + where.join(QStringLiteral(", "));
}
QString WeatherTexts::updatedAt(const QDateTime& when)
{
    return QStringLiteral("Aktualisiert ") + when.toLocalTime().toString(QStringLiteral("HH:mm"));
}

QString WeatherTexts::title()
{
    return QStringLiteral("Wetter");
}
QString WeatherTexts::useLocation()
{
    return QStringLiteral("Aktuellen Standort verwenden");
}
QString WeatherTexts::searchPlaceholder()
{
    return QStringLiteral("Stadt suchen …");
}
QString WeatherTexts::searchButton()
{
    return QStringLiteral("Suchen");
}
QString WeatherTexts::resultsName()
{
    return QStringLiteral("Gefundene Orte");
}
QString WeatherTexts::refresh()
{
    return QStringLiteral("Wetter aktualisieren");
}
QString WeatherTexts::openLocationSettings()
{
    return QStringLiteral("Ortungsdienste öffnen");
}
QString WeatherTexts::locationSettingsUnavailable()
{
    return QStringLiteral("Dieser Desktop bietet keine Ortungsdienst-Einstellungen an. Die Stadtsuche "
                          "funktioniert ohne Standortfreigabe.");
}
QString WeatherTexts::switchOff()
{
    return QStringLiteral("Wetter ausschalten");
}
QString WeatherTexts::permissionLine(LocationAuthorization authorization)
{
    switch (authorization) {
    case LocationAuthorization::notDetermined:
        return QStringLiteral("Standort optional · noch nicht angefragt");
    case LocationAuthorization::restricted:
        return QStringLiteral("Standort durch macOS eingeschränkt");
    case LocationAuthorization::denied:
        return QStringLiteral("Standort nicht freigegeben · Stadtwahl weiterhin möglich");
    case LocationAuthorization::authorized:
        break;
    }
    return QStringLiteral("Standort freigegeben");
}
QString WeatherTexts::privacyNote()
{
    // The services this build really uses: Open-Meteo finds cities, OpenStreetMap's Nominatim
    // names the located place.
    return QStringLiteral(
        "Standort ist optional. Stadtsuche und Stadtbestimmung nutzen Open-Meteo und OpenStreetMap "
        "(Nominatim). Für das Wetter erhält MET Norway auf zwei Nachkommastellen gerundete Koordinaten "
        "und deine IP-Adresse. Prognosen werden lokal zwischengespeichert und etwa alle 30–35 Minuten "
        "aktualisiert, frühestens nach Ablauf der Anbieter-Cachezeit. Ausschalten löscht Ort und "
        "Wetter-Cache.");
}
QString WeatherTexts::attribution()
{
    return QStringLiteral("Daten von MET Norway. Temperatur gerundet; Wetterbeschreibung und Symbole von "
                          "Brenlow zugeordnet. Modellprognose, keine lokale Messung.");
}
QString WeatherTexts::settingsTitle()
{
    return QStringLiteral("Wetter");
}
QString WeatherTexts::settingsButton()
{
    return QStringLiteral("Ort & Wetter einrichten");
}
QString WeatherTexts::settingsDetail(const std::optional<WeatherPlace>& place)
{
    if (!place)
        return QStringLiteral("Kein Ort gewählt. Wetter von MET Norway für deinen Standort oder eine Stadt.");
    return QStringLiteral("Wetter für ") + place->name + QStringLiteral(" von MET Norway.");
}
