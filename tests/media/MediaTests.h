#pragma once

#include "media/MediaSnapshot.h"
#include "platform/memory/MemoryPlayerBridge.h"

// The test classes of this program; main runs them in turn.
int runRulesTests(int argc, char** argv);
int runStoreTests(int argc, char** argv);
int runArtworkTests(int argc, char** argv);
int runToastTests(int argc, char** argv);

// A player answer with a track, in the bridge's units (Spotify counts milliseconds).
inline PlayerReply trackReply(const QString& id, bool playing, double duration = 200, double position = 10,
                              const QString& title = QStringLiteral("Titel"), const QString& art = {})
{
    return PlayerReply::list(
        MemoryPlayerBridge::track(title, QStringLiteral("Band"), playing, duration, position, id, art));
}
