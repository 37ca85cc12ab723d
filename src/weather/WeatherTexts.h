#pragma once

#include "platform/Location.h"
#include "weather/WeatherPlace.h"
#include "weather/WeatherResponse.h"

#include <QDateTime>
#include <QString>

#include <optional>

// Every German text of the weather card, its page and its header.
namespace WeatherTexts {

// Status lines of the store.
QString start();
QString awaitingPermission();
QString refusedOnRefresh();
QString refusedOnChange();
QString locating();
QString locationTimedOut();
QString locationFailed();
QString noCity();
QString updating();
// "Klar · Modellprognose für die aktuelle Stunde"
QString shown(const WeatherResponse::Current& current);
QString updateNeeded(); // appended after a 203
QString noCurrentForecast();
// "Wetterdienst pausiert. Nächster Versuch ab 14:35."
QString paused(const QDateTime& until);
QString serviceBusy();
QString unreachable();
QString searchTooShort();
QString chooseCity();
QString noCityFound();
QString searchUnavailable();
QString switchedOff();

// "4°", or "–°" without a value.
QString temperature(const std::optional<WeatherResponse::Current>& current);
QString description(const std::optional<WeatherResponse::Current>& current);
QString symbol(const std::optional<WeatherResponse::Current>& current);

// The header: the place's name, or "Ort & Wetter" before one is chosen.
QString headerName(const std::optional<WeatherPlace>& place);
// A result row: "Zürich · Zürich, Schweiz".
QString resultLine(const WeatherPlace& place);
// "Aktualisiert 14:35"
QString updatedAt(const QDateTime& when);

// The page.
QString title();
QString useLocation();
QString searchPlaceholder();
QString searchButton();
// The result list's name for screen readers.
QString resultsName();
QString refresh();
QString openLocationSettings();
QString locationSettingsUnavailable();
QString switchOff();
QString permissionLine(LocationAuthorization authorization);
QString privacyNote();
QString attribution();
// The connections settings.
QString settingsTitle();
QString settingsButton();
QString settingsDetail(const std::optional<WeatherPlace>& place);

} // namespace WeatherTexts
