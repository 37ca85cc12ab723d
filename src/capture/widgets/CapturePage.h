#pragma once

#include <QWidget>

class CameraFeed;
class CameraMirrorPane;
class CapturePane;
class Model;
class QStackedWidget;
class SegmentedControl;

// The "Aufnahme" page: screenshots and recordings, or the camera mirror, chosen at the top.
// The mirror pane exists only while it is chosen, so the camera has no owner otherwise.
class CapturePage : public QWidget
{
    Q_OBJECT
public:
    CapturePage(Model& model, CameraFeed& cameras, QWidget* parent = nullptr);

    SegmentedControl* choice() const { return m_choice; }
    CapturePane* capturePane() const { return m_capture; }
    // While the mirror is chosen.
    CameraMirrorPane* mirrorPane() const { return m_mirror; }

private:
    void choose(const QString& label);

    Model& m_model;
    CameraFeed& m_cameras;
    SegmentedControl* m_choice;
    QStackedWidget* m_stack;
    CapturePane* m_capture;
    CameraMirrorPane* m_mirror = nullptr;
};
