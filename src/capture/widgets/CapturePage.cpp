#include "capture/widgets/CapturePage.h"

#include "capture/CapturePageTexts.h"
#include "capture/ScreenCapture.h"
#include "capture/widgets/CameraMirrorPane.h"
#include "capture/widgets/CapturePane.h"
#include "ui/SegmentedControl.h"
#include "ui/TextLabel.h"

#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

CapturePage::CapturePage(ScreenCapture& capture, CameraFeed& cameras, QWidget* parent)
    : QWidget(parent), m_cameras(cameras),
      m_choice(new SegmentedControl({CapturePageTexts::captureChoice(), CapturePageTexts::mirrorChoice()},
                                    CapturePageTexts::section())),
      m_stack(new QStackedWidget), m_capture(new CapturePane(capture))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(new TextLabel(CapturePageTexts::section(), 10, TextLabel::caps));
    column->addWidget(m_choice);
    column->addWidget(m_stack, 1);
    // The hints wrap on narrow layouts; the pane scrolls rather than push the panel's frame.
    auto* scroll = new QScrollArea;
    scroll->setWidget(m_capture);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->viewport()->setAutoFillBackground(false);
    m_stack->addWidget(scroll);
    connect(m_capture, &CapturePane::permissionSettingsRequested, this, &CapturePage::settingsRequested);
    m_choice->setCurrent(CapturePageTexts::captureChoice());
    connect(m_choice, &SegmentedControl::chosen, this, &CapturePage::choose);
}

void CapturePage::choose(const QString& label)
{
    if (label == CapturePageTexts::mirrorChoice()) {
        if (!m_mirror) {
            m_mirror = new CameraMirrorPane(m_cameras);
            connect(m_mirror, &CameraMirrorPane::settingsRequested, this, &CapturePage::settingsRequested);
            m_stack->addWidget(m_mirror);
        }
        m_stack->setCurrentWidget(m_mirror);
        return;
    }
    m_stack->setCurrentIndex(0);
    // Leaving the mirror ends it: the pane and its camera go.
    if (m_mirror) {
        m_stack->removeWidget(m_mirror);
        delete m_mirror;
        m_mirror = nullptr;
    }
}
