#pragma once

#include "platform/CaptureTool.h"

#include <QByteArray>
#include <QProcess>
#include <QStringList>

#include <optional>

class QTimer;

// Debian's X11 capture programs: `slop` lets the user drag an area or click a window (Escape
// cancels), then `maim` takes the screenshot or `ffmpeg` records the area with x11grab until it
// is asked to finish through the "q" key on its standard input, which writes a complete file.
//
// For tests, BRENLOW_CAPTURE_GEOMETRY ("WxH+X+Y"), read only when set, stands in for the drag;
// everything after the selection runs as usual.
class LinuxCaptureTool final : public CaptureTool
{
    Q_OBJECT
public:
    explicit LinuxCaptureTool(QObject* parent = nullptr);
    ~LinuxCaptureTool() override;

    QString extension(Mode mode) const override;
    QString typeName(Mode mode) const override;
    std::optional<QString> launch(Mode mode, const QString& path) override;
    bool running() const override { return m_stage != Stage::idle; }
    void stop() override;
    void stopAndWait() override;

    // The argument lists, exposed for the tests: the path is always the last, unchanged.
    static QStringList screenshotArguments(const QString& geometry, const QString& path);
    static QStringList videoArguments(const QString& display, const QString& geometry, bool h264,
                                      const QString& path);

private:
    // waitingForEncoders: the area is known, the recording waits for the encoder probe.
    enum class Stage { idle, selecting, waitingForEncoders, capturing };

    void probeEncoders() const;
    void encodersKnown(quint64 probe, std::optional<bool> h264);
    bool h264() const;
    void startSelection();
    void selectionEnded(int exitCode, QProcess::ExitStatus status);
    void captureArea(const QString& geometry, bool first);
    void startCapture(const QString& geometry, bool first);
    void captureEnded(int exitCode, QProcess::ExitStatus status);
    void collectErrors(QProcess* process);
    void finish(int exitStatus, const QString& errorText, bool started = true);
    QProcess* makeProcess(const QString& program);
    // Starts without waiting; a program that cannot be started ends the capture, reported as
    // not started when it is the launch's first program.
    void start(QProcess* process, const QString& program, QIODevice::OpenMode mode, bool first);

    Mode m_mode = Mode::screenshot;
    Stage m_stage = Stage::idle;
    QString m_path;
    QString m_program;
    QProcess* m_process = nullptr;
    QByteArray m_errors;
    bool m_cancelled = false;
    QTimer* m_finishTimeout = nullptr;
    // Counts launches, so that a wait for the encoders ends only the launch that began it.
    quint64 m_launch = 0;
    QString m_waitingGeometry;
    bool m_waitingFirst = false;
    // Whether ffmpeg can write H.264; asked once, in the background, when first needed.
    mutable QProcess* m_probe = nullptr;
    mutable quint64 m_probeSerial = 0;
    mutable std::optional<bool> m_h264;
};
