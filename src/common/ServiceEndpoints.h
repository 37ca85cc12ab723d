#pragma once

#include <QString>
#include <QUrl>

// The web services this program talks to, in one place. Each base URL can be pointed elsewhere
// through an environment variable (tests run local servers); an override is taken only when it
// is HTTPS, or plain HTTP to a loopback address, so nothing leaves the machine unencrypted.
namespace ServiceEndpoints {

// MET Norway Locationforecast; BRENLOW_MET_BASE_URL.
QUrl forecastBase();
// Open-Meteo geocoding (city search); BRENLOW_GEOCODE_BASE_URL.
QUrl geocodeBase();
// Nominatim (place of a point); BRENLOW_REVERSE_GEOCODE_BASE_URL.
QUrl reverseGeocodeBase();

// `text` as a base URL when it passes the rule above; otherwise an invalid URL.
QUrl acceptedOverride(const QString& text);
// The override in `variable` when set and accepted, else `fallback`.
QUrl fromEnvironment(const char* variable, const QUrl& fallback);

// "Brenlow/<version>" with the build's contact in parentheses when one was configured.
QString userAgent();

} // namespace ServiceEndpoints
