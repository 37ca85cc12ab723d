#pragma once

#include "capture/CaptureKind.h"
#include "platform/CaptureTool.h"

#include <QObject>
#include <QString>

#include <optional>

class ActivityLog;
class Clock;
class Dialogs;
class Scheduler;
class Shelf;
class StatusBar;
class StatusMessage;

// Screenshots and recordings: ask where to save, hide the panel, let the capture tool write a
// hidden file beside the destination, then move it into place and put it on the shelf. From the
// save dialog until the file is in place the panel neither opens nor closes on its own (the
// capture holds one interaction lock); a screen recording gives the panel back once it runs, so
// that the page's stop button stays in reach. Main thread only.
class ScreenCapture : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool captureBusy READ captureBusy WRITE setCaptureBusy NOTIFY captureBusyChanged)
    Q_PROPERTY(QString captureStatus READ captureStatus NOTIFY captureStatusChanged)
    Q_PROPERTY(bool recordingActive READ recordingActive NOTIFY recordingActiveChanged)
public:
    // The pause between hiding the panel and starting the tool, so the panel is not in the shot.
    static constexpr double hideDelay = 0.3;
    static constexpr qsizetype errorTextLimit = 240;

    struct Services
    {
        CaptureTool& tool;
        Dialogs& dialogs;
        Scheduler& scheduler;
        Clock& clock;
        StatusBar& statusBar;
    };
    ScreenCapture(Services services, StatusMessage& message, ActivityLog& activity, Shelf& shelf,
                  QObject* parent = nullptr);
    ~ScreenCapture() override;

    bool captureBusy() const { return m_captureBusy; }
    void setCaptureBusy(bool busy);
    const QString& captureStatus() const { return m_captureStatus; }
    // A recording's tool runs: it can be stopped from the page or the tray. captureBusy is false
    // meanwhile (the panel is usable), yet no second capture starts.
    bool recordingActive() const { return m_recordingActive; }
    // The file type of a kind as it is written here: "png", "mp4" …
    QString extension(CaptureKind kind) const;

    // Starts the whole flow; nothing while a capture is in progress.
    void capture(CaptureKind kind);
    // Asks a running recording to finish; the flow then ends as usual.
    void stopRecording();
    // Quitting: a running recording is finished and saved before the program goes.
    void finishBeforeQuit();

Q_SIGNALS:
    void captureBusyChanged();
    void captureStatusChanged();
    void recordingActiveChanged();
    // true: hide the panel for the capture; false: show it again.
    void visibilityRequested(bool hidden);
    // The capture takes (true) or gives back (false) its hold on the open panel.
    void panelLockChanged(bool held);

private:
    struct Pending
    {
        CaptureKind kind;
        QString destination;
        QString temporary;
    };

    void saveChosen(CaptureKind kind, const QString& destination);
    void launch();
    void toolFinished(const CaptureTool::Outcome& outcome);
    // Moves the finished file into place; false leaves it where it is.
    static bool moveIntoPlace(const QString& temporary, const QString& destination);
    void finishCapture(const QString& message);
    void setRecordingActive(bool active);
    void releasePanel();
    void setCaptureStatus(const QString& status);

    Services m_services;
    StatusMessage& m_message;
    ActivityLog& m_activity;
    Shelf& m_shelf;
    bool m_captureBusy = false;
    bool m_recordingActive = false;
    QString m_captureStatus;
    std::optional<Pending> m_pending;
    bool m_launched = false;
    bool m_lockHeld = false;
};
