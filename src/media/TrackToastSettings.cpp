#include "media/TrackToastSettings.h"

#include "settings/Defaults.h"

TrackToastSettings::TrackToastSettings(Defaults& defaults, QObject* parent)
    : QObject(parent), m_defaults(defaults),
      m_enabled(defaults.boolValue(QString::fromLatin1(enabledKey)).value_or(true)),
      m_duration(
          validDuration(defaults.doubleValue(QString::fromLatin1(durationKey)).value_or(defaultDuration)))
{}

double TrackToastSettings::validDuration(double seconds)
{
    for (double allowed : durations)
        if (seconds == allowed)
            return seconds;
    return defaultDuration;
}

void TrackToastSettings::setEnabled(bool enabled)
{
    m_defaults.setBool(QString::fromLatin1(enabledKey), enabled);
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    Q_EMIT enabledChanged();
}

void TrackToastSettings::setDuration(double seconds)
{
    const double value = validDuration(seconds);
    m_defaults.setDouble(QString::fromLatin1(durationKey), value);
    if (m_duration == value)
        return;
    m_duration = value;
    Q_EMIT durationChanged();
}
