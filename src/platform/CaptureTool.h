#pragma once

#include <QObject>
#include <QString>

#include <optional>

// The desktop's screenshot and screen-recording programs. One capture at a time: the user picks
// an area (or a window for screenshots), the program writes the file, and finished() reports how
// it ended. Main thread only; the programs run as child processes, never blocking the caller.
class CaptureTool : public QObject
{
    Q_OBJECT
public:
    enum class Mode { screenshot, video };

    // How a capture ended: the program's exit status and what it wrote to standard error,
    // trimmed (a cancelled selection ends with a non-zero status and usually no text). A launch
    // whose first program could not be started ends with started false and the reason, in German.
    struct Outcome
    {
        int exitStatus = 0;
        QString errorText;
        bool started = true;
    };

    using QObject::QObject;

    // The file the mode writes: its extension without the dot and the save dialog's type name.
    virtual QString extension(Mode mode) const = 0;
    virtual QString typeName(Mode mode) const = 0;
    // Starts a capture into `path` (used as it is, one argument). Nothing when it is under way,
    // else the reason, in German, why it could not start; a program that is found but fails to
    // start is reported later, through finished().
    virtual std::optional<QString> launch(Mode mode, const QString& path) = 0;
    virtual bool running() const = 0;
    // Asks a running capture to end: a recording is told to finish, so its file stays complete;
    // a selection still open is cancelled. finished() follows.
    virtual void stop() = 0;
    // The same, waiting (a few seconds at most) until finished() has been sent: for quitting.
    virtual void stopAndWait() = 0;

Q_SIGNALS:
    // Exactly once per launch that returned nothing.
    void finished(const CaptureTool::Outcome& outcome);
};
