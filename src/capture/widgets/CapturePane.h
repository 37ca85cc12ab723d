#pragma once

#include <QWidget>

class ScreenCapture;
class QLabel;
class QPushButton;

// Screenshot and recording: the two capture buttons, the hints, the stop button while a
// recording runs, and the capture status line.
class CapturePane : public QWidget
{
    Q_OBJECT
public:
    explicit CapturePane(ScreenCapture& capture, QWidget* parent = nullptr);

    QPushButton* screenshotButton() const { return m_screenshot; }
    QPushButton* videoButton() const { return m_video; }
    QPushButton* stopButton() const { return m_stop; }
    QString statusText() const;

Q_SIGNALS:
    // "Berechtigung für Bildschirmaufnahme öffnen".
    void permissionSettingsRequested(const QString& anchor);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void sync();

    ScreenCapture& m_capture;
    QPushButton* m_screenshot;
    QPushButton* m_video;
    QPushButton* m_stop;
    QLabel* m_status;
};
