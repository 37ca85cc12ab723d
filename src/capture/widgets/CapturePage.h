#pragma once

#include <QWidget>

class CameraFeed;
class CameraMirrorPane;
class CapturePane;
class ScreenCapture;
class QStackedWidget;
class SegmentedControl;

// The "Aufnahme" page: screenshots and recordings, or the camera mirror, chosen at the top.
// The mirror pane exists only while it is chosen, so the camera has no owner otherwise.
class CapturePage : public QWidget
{
    Q_OBJECT
public:
    CapturePage(ScreenCapture& capture, CameraFeed& cameras, QWidget* parent = nullptr);

    SegmentedControl* choice() const { return m_choice; }
    CapturePane* capturePane() const { return m_capture; }
    // While the mirror is chosen.
    CameraMirrorPane* mirrorPane() const { return m_mirror; }

Q_SIGNALS:
    // A privacy settings location ("Privacy_ScreenCapture", "Privacy_Camera") should open.
    void settingsRequested(const QString& anchor);

private:
    void choose(const QString& label);

    CameraFeed& m_cameras;
    SegmentedControl* m_choice;
    QStackedWidget* m_stack;
    CapturePane* m_capture;
    CameraMirrorPane* m_mirror = nullptr;
};
