#pragma once

#include <QString>

// German description and symbol name of a WMO-style weather code.
namespace WeatherCode {

QString description(int code);
// Only clear and partly cloudy skies have night variants.
QString symbol(int code, bool day);

} // namespace WeatherCode
