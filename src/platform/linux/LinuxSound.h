#pragma once

#include "platform/Sound.h"

#include <QStringList>

// Plays sounds of the freedesktop sound theme through the desktop's sound server.
class LinuxSound final : public Sound
{
public:
    void play(const QString& name) override;

    // The theme file for a system sound name, or empty when the theme lacks it.
    static QString soundFile(const QString& name, const QStringList& dataDirs);
};
