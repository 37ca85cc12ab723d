#include "platform/linux/LinuxSound.h"

#include "common/Log.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {
// The macOS names the rules use, mapped to freedesktop theme events.
QString themeEvent(const QString& name)
{
    if (name == u"Glass")
        return QStringLiteral("complete");
    return name.toLower();
}
} // namespace

QString LinuxSound::soundFile(const QString& name, const QStringList& dataDirs)
{
    const QString event = themeEvent(name);
    for (const QString& dir : dataDirs) {
        for (const char* extension : {".oga", ".ogg", ".wav"}) {
            const QString path =
                dir + QStringLiteral("/sounds/freedesktop/stereo/") + event + QLatin1String(extension);
            if (QFileInfo::exists(path))
                return path;
        }
    }
    return {};
}

void LinuxSound::play(const QString& name)
{
    const QString file =
        soundFile(name, QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation));
    if (file.isEmpty())
        return;
    // A detached player never blocks the heartbeat; without one the sound is simply skipped.
    for (const char* player : {"pw-play", "paplay"}) {
        const QString program = QStandardPaths::findExecutable(QLatin1String(player));
        if (!program.isEmpty() && QProcess::startDetached(program, {file}))
            return;
    }
    qCInfo(lcPlatform) << "sound" << name << "not played: neither pw-play nor paplay started";
}
