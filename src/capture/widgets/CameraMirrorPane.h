#pragma once

#include <QWidget>

#include <memory>

class CameraFeed;
class CameraMirror;
class MirrorPreview;
class QLabel;
class QPushButton;

// The mirror view: it owns the mirror, and switches the camera off whenever it disappears (page
// left, panel closed) and when the machine sleeps or the session is locked.
class CameraMirrorPane : public QWidget
{
    Q_OBJECT
public:
    explicit CameraMirrorPane(CameraFeed& feed, QWidget* parent = nullptr);
    ~CameraMirrorPane() override;

    CameraMirror& mirror() const { return *m_mirror; }
    MirrorPreview* preview() const { return m_preview; }
    QPushButton* toggleButton() const { return m_toggle; }
    QPushButton* settingsButton() const { return m_settings; }
    QString statusText() const;

Q_SIGNALS:
    // "Kamerafreigabe öffnen": the privacy settings for the camera.
    void settingsRequested(const QString& anchor);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void sync();
    void toggle();

    std::unique_ptr<CameraMirror> m_mirror;
    MirrorPreview* m_preview;
    QLabel* m_starting;
    QLabel* m_status;
    QPushButton* m_toggle;
    QPushButton* m_settings;
};
