#include "platform/memory/MemoryCaptureTool.h"

#include <QFile>

QString MemoryCaptureTool::extension(Mode mode) const
{
    return mode == Mode::screenshot ? QStringLiteral("png") : QStringLiteral("mp4");
}

QString MemoryCaptureTool::typeName(Mode mode) const
{
    return mode == Mode::screenshot ? QStringLiteral("PNG-Bild") : QStringLiteral("MPEG-4-Video");
}

std::optional<QString> MemoryCaptureTool::launch(Mode mode, const QString& path)
{
    if (m_running)
        return QStringLiteral("Es läuft bereits eine Aufnahme.");
    if (launchFailure)
        return launchFailure;
    ++launches;
    lastMode = mode;
    lastPath = path;
    m_running = true;
    return std::nullopt;
}

void MemoryCaptureTool::stop()
{
    if (!m_running)
        return;
    if (lastMode == Mode::video)
        complete(recorded, 0);
    else
        cancelSelection();
}

bool MemoryCaptureTool::complete(const QByteArray& bytes, int exitStatus, const QString& errorText)
{
    if (!m_running)
        return false;
    m_running = false;
    if (!bytes.isEmpty()) {
        QFile file(lastPath);
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
    }
    Q_EMIT finished(Outcome{exitStatus, errorText});
    return true;
}
