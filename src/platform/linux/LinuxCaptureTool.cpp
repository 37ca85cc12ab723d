#include "platform/linux/LinuxCaptureTool.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>

namespace {

// Enough of standard error to explain any failure; a program that prints megabytes is read to
// the end but not kept.
constexpr qsizetype errorLimit = 64 * 1024;
// How long a recording may take to write its end after "q" before it gets SIGTERM, which ffmpeg
// also answers by finishing the file.
constexpr int finishGraceMs = 8000;
// How long a recording waits for the encoder probe before it assumes H.264.
constexpr int probeWaitMs = 2000;

QString missingProgram(const QString& program)
{
    return QStringLiteral("Das Programm „%1“ fehlt. Installiere das Debian-Paket „%1“.").arg(program);
}

struct Area
{
    int width = 0;
    int height = 0;
    int x = 0;
    int y = 0;
};

std::optional<Area> parseGeometry(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral(R"(^\s*(\d+)x(\d+)\+(-?\d+)\+(-?\d+)\s*$)"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return Area{match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt(),
                match.captured(4).toInt()};
}

} // namespace

LinuxCaptureTool::LinuxCaptureTool(QObject* parent) : CaptureTool(parent) {}

LinuxCaptureTool::~LinuxCaptureTool()
{
    // A recording still running is finished, never cut off: its file stays playable.
    if (m_process)
        stopAndWait();
    if (m_probe) {
        m_probe->disconnect(this);
        m_probe->kill();
        m_probe->waitForFinished(1000);
    }
}

QStringList LinuxCaptureTool::screenshotArguments(const QString& geometry, const QString& path)
{
    return {QStringLiteral("--hidecursor"), QStringLiteral("--format=png"), QStringLiteral("-g"), geometry,
            path};
}

QStringList LinuxCaptureTool::videoArguments(const QString& display, const QString& geometry, bool h264,
                                             const QString& path)
{
    const Area area = parseGeometry(geometry).value_or(Area{});
    // The encoders want even sides; a pixel less is invisible, a failed start is not.
    const int width = std::max(2, area.width & ~1);
    const int height = std::max(2, area.height & ~1);
    QStringList arguments{
        QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"),
        QStringLiteral("error"),        QStringLiteral("-y"),
        QStringLiteral("-f"),           QStringLiteral("x11grab"),
        QStringLiteral("-framerate"),   QStringLiteral("25"),
        QStringLiteral("-video_size"),  QStringLiteral("%1x%2").arg(width).arg(height),
        QStringLiteral("-i"),           QStringLiteral("%1+%2,%3").arg(display).arg(area.x).arg(area.y)};
    if (h264)
        arguments << QStringLiteral("-c:v") << QStringLiteral("libx264") << QStringLiteral("-preset")
                  << QStringLiteral("veryfast") << QStringLiteral("-pix_fmt") << QStringLiteral("yuv420p")
                  << QStringLiteral("-f") << QStringLiteral("mp4");
    else
        arguments << QStringLiteral("-c:v") << QStringLiteral("libvpx-vp9") << QStringLiteral("-deadline")
                  << QStringLiteral("realtime") << QStringLiteral("-cpu-used") << QStringLiteral("8")
                  << QStringLiteral("-b:v") << QStringLiteral("2M") << QStringLiteral("-f")
                  << QStringLiteral("webm");
    arguments << path;
    return arguments;
}

void LinuxCaptureTool::probeEncoders() const
{
    if (m_h264 || m_probe)
        return;
    const QString ffmpeg = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (ffmpeg.isEmpty())
        return;
    auto* self = const_cast<LinuxCaptureTool*>(this);
    const quint64 serial = ++m_probeSerial;
    m_probe = new QProcess(self);
    m_probe->setStandardErrorFile(QProcess::nullDevice());
    connect(m_probe, &QProcess::finished, self, [self, serial, probe = m_probe] {
        self->encodersKnown(serial, probe->readAllStandardOutput().contains(" libx264 "));
    });
    connect(m_probe, &QProcess::errorOccurred, self, [self, serial](QProcess::ProcessError error) {
        // A probe that cannot start never finishes; one that crashes still does.
        if (error == QProcess::FailedToStart)
            QTimer::singleShot(0, self, [self, serial] { self->encodersKnown(serial, std::nullopt); });
    });
    m_probe->start(ffmpeg, {QStringLiteral("-hide_banner"), QStringLiteral("-encoders")});
}

void LinuxCaptureTool::encodersKnown(quint64 probe, std::optional<bool> h264)
{
    if (probe != m_probeSerial || !m_probe)
        return;
    m_probe->deleteLater();
    m_probe = nullptr;
    // No answer leaves the question open for the next recording.
    if (h264)
        m_h264 = h264;
    if (m_stage == Stage::waitingForEncoders)
        startCapture(m_waitingGeometry, m_waitingFirst);
}

bool LinuxCaptureTool::h264() const
{
    probeEncoders();
    // Debian's ffmpeg has always carried libx264; WebM is for builds without it.
    return m_h264.value_or(true);
}

QString LinuxCaptureTool::extension(Mode mode) const
{
    if (mode == Mode::screenshot)
        return QStringLiteral("png");
    return h264() ? QStringLiteral("mp4") : QStringLiteral("webm");
}

QString LinuxCaptureTool::typeName(Mode mode) const
{
    if (mode == Mode::screenshot)
        return QStringLiteral("PNG-Bild");
    return h264() ? QStringLiteral("MPEG-4-Video") : QStringLiteral("WebM-Video");
}

std::optional<QString> LinuxCaptureTool::launch(Mode mode, const QString& path)
{
    if (m_stage != Stage::idle)
        return QStringLiteral("Es läuft bereits eine Aufnahme.");
    const QString program = mode == Mode::screenshot ? QStringLiteral("maim") : QStringLiteral("ffmpeg");
    if (QStandardPaths::findExecutable(program).isEmpty())
        return missingProgram(program);
    if (mode == Mode::video && qEnvironmentVariableIsEmpty("DISPLAY"))
        return QStringLiteral("Keine X11-Anzeige gefunden (DISPLAY ist nicht gesetzt).");
    const QString fixed = qEnvironmentVariable("BRENLOW_CAPTURE_GEOMETRY");
    if (!fixed.isEmpty() && !parseGeometry(fixed))
        return QStringLiteral("Ungültiger Bildschirmbereich „%1“.").arg(fixed);
    if (fixed.isEmpty() && QStandardPaths::findExecutable(QStringLiteral("slop")).isEmpty())
        return missingProgram(QStringLiteral("slop"));
    ++m_launch;
    m_mode = mode;
    m_path = path;
    m_program = program;
    m_errors.clear();
    m_cancelled = false;
    if (mode == Mode::video)
        probeEncoders();
    if (!fixed.isEmpty())
        captureArea(fixed, true);
    else
        startSelection();
    return std::nullopt;
}

QProcess* LinuxCaptureTool::makeProcess(const QString& program)
{
    auto* process = new QProcess(this);
    process->setProgram(QStandardPaths::findExecutable(program));
    connect(process, &QProcess::readyReadStandardError, this, [this, process] { collectErrors(process); });
    return process;
}

void LinuxCaptureTool::start(QProcess* process, const QString& program, QIODevice::OpenMode mode, bool first)
{
    connect(process, &QProcess::errorOccurred, this,
            [this, process, program, first](QProcess::ProcessError error) {
                if (error != QProcess::FailedToStart)
                    return;
                // Qt may say so inside start(): the answer waits until launch() has returned.
                QTimer::singleShot(0, this, [this, process, program, first] {
                    if (process != m_process)
                        return;
                    m_process = nullptr;
                    process->deleteLater();
                    finish(1, missingProgram(program), !first);
                });
            });
    process->start(mode);
}

void LinuxCaptureTool::startSelection()
{
    m_process = makeProcess(QStringLiteral("slop"));
    // A click picks the window under the pointer, a drag an area; the frame stays out of the shot.
    m_process->setArguments({QStringLiteral("--format=%wx%h+%x+%y"), QStringLiteral("--nodecorations")});
    connect(m_process, &QProcess::finished, this, &LinuxCaptureTool::selectionEnded);
    m_stage = Stage::selecting;
    start(m_process, QStringLiteral("slop"), QIODevice::ReadOnly, true);
}

void LinuxCaptureTool::selectionEnded(int exitCode, QProcess::ExitStatus status)
{
    QProcess* slop = m_process;
    m_process = nullptr;
    slop->deleteLater();
    collectErrors(slop);
    const QString geometry = QString::fromUtf8(slop->readAllStandardOutput()).trimmed();
    const bool chosen = !m_cancelled && status == QProcess::NormalExit && exitCode == 0 &&
                        parseGeometry(geometry).has_value();
    if (!chosen) {
        // Escape, a right click or our own stop: a cancelled selection, which needs no words.
        const QString text = QString::fromUtf8(m_errors).trimmed();
        const bool cancelled = m_cancelled || text.contains(QStringLiteral("cancel"), Qt::CaseInsensitive);
        finish(exitCode == 0 ? 1 : exitCode, cancelled ? QString() : text);
        return;
    }
    m_errors.clear();
    captureArea(geometry, false);
}

void LinuxCaptureTool::captureArea(const QString& geometry, bool first)
{
    if (m_mode != Mode::video || !m_probe) {
        startCapture(geometry, first);
        return;
    }
    // The encoders decide the arguments: the recording starts when the probe answers, or
    // without its answer when it takes too long.
    m_stage = Stage::waitingForEncoders;
    m_waitingGeometry = geometry;
    m_waitingFirst = first;
    QTimer::singleShot(probeWaitMs, this, [this, launch = m_launch] {
        if (launch == m_launch && m_stage == Stage::waitingForEncoders)
            startCapture(m_waitingGeometry, m_waitingFirst);
    });
}

void LinuxCaptureTool::startCapture(const QString& geometry, bool first)
{
    m_process = makeProcess(m_program);
    if (m_mode == Mode::screenshot)
        m_process->setArguments(screenshotArguments(geometry, m_path));
    else
        m_process->setArguments(
            videoArguments(qEnvironmentVariable("DISPLAY"), geometry, m_h264.value_or(true), m_path));
    m_process->setStandardOutputFile(QProcess::nullDevice());
    connect(m_process, &QProcess::finished, this, &LinuxCaptureTool::captureEnded);
    m_stage = Stage::capturing;
    // ffmpeg keeps its standard input open: that is where "q" arrives.
    start(m_process, m_program, m_mode == Mode::video ? QIODevice::ReadWrite : QIODevice::ReadOnly, first);
}

void LinuxCaptureTool::captureEnded(int exitCode, QProcess::ExitStatus status)
{
    QProcess* process = m_process;
    m_process = nullptr;
    process->deleteLater();
    collectErrors(process);
    QString text = QString::fromUtf8(m_errors).trimmed();
    if (status == QProcess::CrashExit) {
        if (text.isEmpty())
            text = QStringLiteral("„%1“ wurde unerwartet beendet.").arg(m_program);
        finish(-1, text);
        return;
    }
    finish(exitCode, text);
}

void LinuxCaptureTool::collectErrors(QProcess* process)
{
    const QByteArray chunk = process->readAllStandardError();
    if (m_errors.size() < errorLimit)
        m_errors.append(chunk.left(errorLimit - m_errors.size()));
}

void LinuxCaptureTool::finish(int exitStatus, const QString& errorText, bool started)
{
    if (m_finishTimeout) {
        m_finishTimeout->stop();
        m_finishTimeout->deleteLater();
        m_finishTimeout = nullptr;
    }
    m_stage = Stage::idle;
    m_errors.clear();
    Q_EMIT finished(Outcome{exitStatus, errorText, started});
}

void LinuxCaptureTool::stop()
{
    m_cancelled = true;
    if (m_stage == Stage::waitingForEncoders) {
        finish(1, QString());
        return;
    }
    if (!m_process)
        return;
    if (m_stage == Stage::selecting) {
        m_process->terminate();
        return;
    }
    if (m_mode != Mode::video || m_finishTimeout)
        return;
    m_process->write("q");
    m_finishTimeout = new QTimer(this);
    m_finishTimeout->setSingleShot(true);
    connect(m_finishTimeout, &QTimer::timeout, this, [this] {
        if (m_process)
            m_process->terminate();
    });
    m_finishTimeout->start(finishGraceMs);
}

void LinuxCaptureTool::stopAndWait()
{
    stop();
    // Selection first, then (when it had already ended) the recording; finished() runs inside.
    for (int round = 0; round < 2 && m_process; ++round) {
        QProcess* process = m_process;
        if (!process->waitForFinished(finishGraceMs)) {
            process->terminate();
            process->waitForFinished(2000);
        }
    }
}
