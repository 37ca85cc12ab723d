#include "media/NowPlaying.h"

#include "settings/Defaults.h"

NowPlaying::NowPlaying(Defaults& defaults, QObject* parent)
    : QObject(parent), m_defaults(defaults),
      m_mediaEnabled(defaults.boolValue(QString::fromLatin1(enabledKey)).value_or(false))
{}

void NowPlaying::setMediaEnabled(bool enabled)
{
    m_defaults.setBool(QString::fromLatin1(enabledKey), enabled);
    if (m_mediaEnabled == enabled)
        return;
    m_mediaEnabled = enabled;
    Q_EMIT mediaEnabledChanged();
}
