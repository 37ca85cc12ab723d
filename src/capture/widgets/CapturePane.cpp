#include "capture/widgets/CapturePane.h"

#include "capture/CaptureKind.h"
#include "capture/CapturePageTexts.h"
#include "capture/ScreenCapture.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QPushButton* captureButton(const QString& name, const QString& detail)
{
    auto* button = new QPushButton(PanelTheme::buttonText(name + QLatin1Char('\n') + detail));
    button->setAccessibleName(name);
    button->setAccessibleDescription(detail);
    button->setMinimumHeight(44);
    return button;
}

} // namespace

CapturePane::CapturePane(ScreenCapture& capture, QWidget* parent)
    : QWidget(parent), m_capture(capture),
      m_screenshot(captureButton(CaptureKinds::displayName(CaptureKind::screenshot),
                                 CapturePageTexts::screenshotDetail())),
      m_video(captureButton(CaptureKinds::displayName(CaptureKind::video), QString())),
      m_stop(new QPushButton(PanelTheme::buttonText(CapturePageTexts::stopButton()))),
      m_status((new TextLabel(QString(), 11, TextLabel::primary))->wrapping())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(new TextLabel(CapturePageTexts::title(), 14, TextLabel::primary, QFont::DemiBold));
    column->addWidget((new TextLabel(CapturePageTexts::explanation(), 11, TextLabel::secondary))->wrapping());
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_screenshot);
    buttons->addWidget(m_video);
    column->addLayout(buttons);
    column->addWidget(
        (new TextLabel(CapturePageTexts::selectionHint(), 10, TextLabel::secondary))->wrapping());
    column->addWidget((new TextLabel(CapturePageTexts::stopHint(), 10, TextLabel::secondary))->wrapping());
    column->addWidget(m_stop);
    column->addWidget(m_status);
    auto* permission = new QPushButton(PanelTheme::buttonText(CapturePageTexts::permissionButton()));
    column->addWidget(permission, 0, Qt::AlignLeft);
    column->addStretch(1);

    connect(m_screenshot, &QPushButton::clicked, this,
            [this] { m_capture.capture(CaptureKind::screenshot); });
    connect(m_video, &QPushButton::clicked, this, [this] { m_capture.capture(CaptureKind::video); });
    connect(m_stop, &QPushButton::clicked, &m_capture, &ScreenCapture::stopRecording);
    connect(permission, &QPushButton::clicked, this,
            [this] { Q_EMIT permissionSettingsRequested(CapturePageTexts::permissionAnchor()); });
    connect(&capture, &ScreenCapture::captureBusyChanged, this, &CapturePane::sync);
    connect(&capture, &ScreenCapture::captureStatusChanged, this, &CapturePane::sync);
    connect(&capture, &ScreenCapture::recordingActiveChanged, this, &CapturePane::sync);
    sync();
}

QString CapturePane::statusText() const
{
    return m_status->text();
}

void CapturePane::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // The recording's file type is known once the tool has looked at its encoders.
    sync();
}

void CapturePane::sync()
{
    const ScreenCapture& capture = m_capture;
    const QString videoDetail = CapturePageTexts::videoDetail(capture.extension(CaptureKind::video));
    m_video->setText(PanelTheme::buttonText(CaptureKinds::displayName(CaptureKind::video) +
                                            QLatin1Char('\n') + videoDetail));
    m_video->setAccessibleDescription(videoDetail);
    const bool idle = !capture.captureBusy() && !capture.recordingActive();
    m_screenshot->setEnabled(idle);
    m_video->setEnabled(idle);
    m_stop->setVisible(capture.recordingActive());
    m_status->setText(capture.captureStatus());
    m_status->setVisible(!capture.captureStatus().isEmpty());
}
