#pragma once

#include "platform/CaptureTool.h"

#include <QByteArray>

// A capture tool the test plays: launch() remembers the request, and the test ends it as the
// user and the program would, writing (or not) the file at the requested path.
class MemoryCaptureTool final : public CaptureTool
{
    Q_OBJECT
public:
    using CaptureTool::CaptureTool;

    QString extension(Mode mode) const override;
    QString typeName(Mode mode) const override;
    std::optional<QString> launch(Mode mode, const QString& path) override;
    bool running() const override { return m_running; }
    // A recording is told to finish: it writes `recorded` and exits 0; a screenshot cannot be
    // stopped once the area is chosen, so this ends it as a cancelled selection.
    void stop() override;
    void stopAndWait() override { stop(); }

    // The program ends: `bytes` (none: no file) are written to the path, then finished().
    bool complete(const QByteArray& bytes, int exitStatus = 0, const QString& errorText = {});
    // The user presses Escape during the selection.
    bool cancelSelection() { return complete({}, 1); }

    // What launch() will answer next: nothing (starts) or a reason.
    std::optional<QString> launchFailure;
    QByteArray recorded = QByteArrayLiteral("recorded movie");
    int launches = 0;
    Mode lastMode = Mode::screenshot;
    QString lastPath;

private:
    bool m_running = false;
};
