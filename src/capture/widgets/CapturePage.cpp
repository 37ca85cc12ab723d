#include "capture/widgets/CapturePage.h"

#include "capture/CapturePageTexts.h"
#include "capture/widgets/CameraMirrorPane.h"
#include "capture/widgets/CapturePane.h"
#include "model/Model.h"
#include "ui/SegmentedControl.h"
#include "ui/TextLabel.h"

#include <QStackedWidget>
#include <QVBoxLayout>

CapturePage::CapturePage(Model& model, CameraFeed& cameras, QWidget* parent)
    : QWidget(parent), m_model(model), m_cameras(cameras),
      m_choice(new SegmentedControl({CapturePageTexts::captureChoice(), CapturePageTexts::mirrorChoice()},
                                    CapturePageTexts::section())),
      m_stack(new QStackedWidget), m_capture(new CapturePane(model))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(new TextLabel(CapturePageTexts::section(), 10, TextLabel::caps));
    column->addWidget(m_choice);
    column->addWidget(m_stack, 1);
    m_stack->addWidget(m_capture);
    m_choice->setCurrent(CapturePageTexts::captureChoice());
    connect(m_choice, &SegmentedControl::chosen, this, &CapturePage::choose);
}

void CapturePage::choose(const QString& label)
{
    if (label == CapturePageTexts::mirrorChoice()) {
        if (!m_mirror) {
            m_mirror = new CameraMirrorPane(m_cameras);
            connect(m_mirror, &CameraMirrorPane::settingsRequested, &m_model, &Model::openPermissionSettings);
            m_stack->addWidget(m_mirror);
        }
        m_stack->setCurrentWidget(m_mirror);
        return;
    }
    m_stack->setCurrentWidget(m_capture);
    // Leaving the mirror ends it: the pane and its camera go.
    if (m_mirror) {
        m_stack->removeWidget(m_mirror);
        delete m_mirror;
        m_mirror = nullptr;
    }
}
