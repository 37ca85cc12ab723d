#pragma once

#include <QWidget>

class Model;
class QLabel;
class QPushButton;

// Screenshot and recording: the two capture buttons, the hints, the stop button while a
// recording runs, and the capture status line.
class CapturePane : public QWidget
{
    Q_OBJECT
public:
    explicit CapturePane(Model& model, QWidget* parent = nullptr);

    QPushButton* screenshotButton() const { return m_screenshot; }
    QPushButton* videoButton() const { return m_video; }
    QPushButton* stopButton() const { return m_stop; }
    QString statusText() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void sync();

    Model& m_model;
    QPushButton* m_screenshot;
    QPushButton* m_video;
    QPushButton* m_stop;
    QLabel* m_status;
};
