#include "capture/ScreenCapture.h"

#include "capture/CaptureTexts.h"
#include "common/Clock.h"
#include "common/Scheduler.h"
#include "common/StatusMessage.h"
#include "focus/ActivityLog.h"
#include "platform/Dialogs.h"
#include "platform/StatusBar.h"
#include "productivity/Shelf.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <QUuid>

#include <filesystem>
#include <system_error>

namespace {

// The hidden name the tool writes to, beside the destination.
QString temporaryName(const QString& extension)
{
    return QStringLiteral(".brenlow-capture-") + QUuid::createUuid().toString(QUuid::WithoutBraces) +
           QLatin1Char('.') + extension;
}

QString startFolder(CaptureKind kind)
{
    const auto location =
        kind == CaptureKind::screenshot ? QStandardPaths::PicturesLocation : QStandardPaths::MoviesLocation;
    const QString folder = QStandardPaths::writableLocation(location);
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

} // namespace

ScreenCapture::ScreenCapture(Services services, StatusMessage& message, ActivityLog& activity, Shelf& shelf,
                             QObject* parent)
    : QObject(parent), m_services(services), m_message(message), m_activity(activity), m_shelf(shelf)
{
    connect(&m_services.tool, &CaptureTool::finished, this, &ScreenCapture::toolFinished);
    connect(&m_services.statusBar, &StatusBar::stopRequested, this, &ScreenCapture::stopRecording);
}

ScreenCapture::~ScreenCapture()
{
    if (m_recordingActive)
        m_services.statusBar.setStopEntry(CaptureTexts::stopEntry(), false);
}

void ScreenCapture::setCaptureBusy(bool busy)
{
    if (m_captureBusy == busy)
        return;
    m_captureBusy = busy;
    Q_EMIT captureBusyChanged();
}

void ScreenCapture::setCaptureStatus(const QString& status)
{
    if (m_captureStatus == status)
        return;
    m_captureStatus = status;
    Q_EMIT captureStatusChanged();
}

void ScreenCapture::setRecordingActive(bool active)
{
    if (m_recordingActive == active)
        return;
    m_recordingActive = active;
    m_services.statusBar.setStopEntry(CaptureTexts::stopEntry(), active);
    Q_EMIT recordingActiveChanged();
}

QString ScreenCapture::extension(CaptureKind kind) const
{
    return m_services.tool.extension(CaptureKinds::mode(kind));
}

void ScreenCapture::capture(CaptureKind kind)
{
    if (m_captureBusy || m_pending)
        return;
    const CaptureTool::Mode mode = CaptureKinds::mode(kind);
    const QString extension = m_services.tool.extension(mode);
    SaveDialogRequest request;
    request.title = CaptureKinds::saveTitle(kind);
    request.message = CaptureTexts::saveMessage();
    request.proposedName = CaptureKinds::proposedName(m_services.clock.now(), extension);
    request.typeName = m_services.tool.typeName(mode);
    request.extension = extension;
    request.startFolder = startFolder(kind);

    m_lockHeld = true;
    Q_EMIT panelLockChanged(true);
    setCaptureBusy(true);
    m_services.dialogs.save(request, this, [this, kind](std::optional<QUrl> location) {
        if (!location || !location->isLocalFile() || location->toLocalFile().isEmpty()) {
            releasePanel();
            setCaptureBusy(false);
            return;
        }
        saveChosen(kind, location->toLocalFile());
    });
}

void ScreenCapture::saveChosen(CaptureKind kind, const QString& destination)
{
    const QString extension = m_services.tool.extension(CaptureKinds::mode(kind));
    QString folder = QFileInfo(destination).absolutePath();
    // A folder we cannot write to still gets its capture: the file waits in the temporary folder
    // and the move's failure says where.
    if (!QFileInfo(folder).isDir() || !QFileInfo(folder).isWritable())
        folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    m_pending = Pending{kind, destination, QDir(folder).filePath(temporaryName(extension))};
    m_launched = false;
    setCaptureStatus(CaptureKinds::hint(kind));
    Q_EMIT visibilityRequested(true);
    m_services.scheduler.schedule(hideDelay, this, [this] { launch(); });
}

void ScreenCapture::launch()
{
    if (!m_pending || m_launched)
        return;
    const Pending pending = *m_pending;
    if (const std::optional<QString> failure =
            m_services.tool.launch(CaptureKinds::mode(pending.kind), pending.temporary)) {
        finishCapture(CaptureTexts::launchFailed(*failure));
        return;
    }
    m_launched = true;
    if (pending.kind != CaptureKind::video)
        return;
    // The recording runs until the user stops it: the panel comes back meanwhile, so its stop
    // button can be reached, and opens and closes as usual; a second capture still waits.
    setRecordingActive(true);
    releasePanel();
    setCaptureBusy(false);
    Q_EMIT visibilityRequested(false);
}

void ScreenCapture::releasePanel()
{
    if (!m_lockHeld)
        return;
    m_lockHeld = false;
    Q_EMIT panelLockChanged(false);
}

void ScreenCapture::stopRecording()
{
    if (m_pending && m_launched)
        m_services.tool.stop();
}

void ScreenCapture::finishBeforeQuit()
{
    if (m_pending && m_launched)
        m_services.tool.stopAndWait();
}

void ScreenCapture::toolFinished(const CaptureTool::Outcome& outcome)
{
    // Only the capture this flow launched; anything else is not ours to file.
    if (!m_pending || !m_launched)
        return;
    const Pending pending = *m_pending;
    if (!outcome.started) {
        finishCapture(CaptureTexts::launchFailed(outcome.errorText));
        return;
    }
    const QFileInfo written(pending.temporary);
    if (outcome.exitStatus == 0 && written.exists() && written.size() >= 1) {
        if (!moveIntoPlace(pending.temporary, pending.destination)) {
            finishCapture(CaptureTexts::saveFailed(pending.temporary));
            return;
        }
        const QString name = CaptureKinds::displayName(pending.kind);
        m_shelf.addFiles({QUrl::fromLocalFile(pending.destination)});
        m_activity.addNotice(name, QFileInfo(pending.destination).fileName());
        finishCapture(CaptureTexts::saved(name));
        return;
    }
    QFile::remove(pending.temporary);
    finishCapture(CaptureTexts::noCapture(outcome.errorText, errorTextLimit));
}

bool ScreenCapture::moveIntoPlace(const QString& temporary, const QString& destination)
{
    namespace fs = std::filesystem;
    const fs::path from = QFile::encodeName(temporary).toStdString();
    const fs::path to = QFile::encodeName(destination).toStdString();
    std::error_code error;
    // rename() replaces an existing file in one step, so the old one is never lost half-way.
    fs::rename(from, to, error);
    if (!error)
        return true;
    if (error != std::errc::cross_device_link)
        return false;
    // From the temporary folder to another disk: a copy beside the destination, renamed over it.
    const fs::path beside = to.parent_path() / (".brenlow-move-" + to.filename().string());
    if (!fs::copy_file(from, beside, fs::copy_options::overwrite_existing, error)) {
        fs::remove(beside, error);
        return false;
    }
    fs::rename(beside, to, error);
    if (error) {
        fs::remove(beside, error);
        return false;
    }
    fs::remove(from, error);
    return true;
}

void ScreenCapture::finishCapture(const QString& message)
{
    m_pending.reset();
    m_launched = false;
    setRecordingActive(false);
    setCaptureBusy(false);
    releasePanel();
    setCaptureStatus(message);
    m_message.setText(message);
    Q_EMIT visibilityRequested(false);
}
