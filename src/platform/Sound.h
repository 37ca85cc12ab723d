#pragma once

#include <QString>

// System sounds by name ("Glass"); a missing sound plays nothing.
class Sound
{
public:
    virtual ~Sound() = default;
    virtual void play(const QString& name) = 0;
};
