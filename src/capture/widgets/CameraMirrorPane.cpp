#include "capture/widgets/CameraMirrorPane.h"

#include "capture/CameraMirror.h"
#include "capture/MirrorTexts.h"
#include "capture/widgets/MirrorPreview.h"
#include "platform/CameraFeed.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

CameraMirrorPane::CameraMirrorPane(CameraFeed& feed, QWidget* parent)
    : QWidget(parent), m_mirror(std::make_unique<CameraMirror>(feed)), m_preview(new MirrorPreview),
      m_starting(new TextLabel(MirrorTexts::startingPreview(), 11, TextLabel::secondary)),
      m_status((new TextLabel(QString(), 11))->wrapping()), m_toggle(new QPushButton),
      m_settings(new QPushButton(PanelTheme::buttonText(MirrorTexts::settingsButton())))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    auto* heading = new QHBoxLayout;
    heading->addWidget(new SymbolLabel(QStringLiteral("person.crop.rectangle"), 18));
    heading->addWidget(new TextLabel(MirrorTexts::title(), 14, TextLabel::primary, QFont::DemiBold), 1);
    column->addLayout(heading);
    m_starting->setAlignment(Qt::AlignCenter);
    column->addWidget(m_preview, 1);
    column->addWidget(m_starting, 1);
    column->addWidget(m_status);
    column->addWidget((new TextLabel(MirrorTexts::note(), 10, TextLabel::secondary))->wrapping());
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_toggle);
    buttons->addWidget(m_settings);
    buttons->addStretch(1);
    column->addLayout(buttons);

    CameraMirror* mirror = m_mirror.get();
    connect(mirror, &CameraMirror::runningChanged, this, &CameraMirrorPane::sync);
    connect(mirror, &CameraMirror::startingChanged, this, &CameraMirrorPane::sync);
    connect(mirror, &CameraMirror::statusChanged, this, &CameraMirrorPane::sync);
    connect(mirror, &CameraMirror::deniedChanged, this, &CameraMirrorPane::sync);
    connect(mirror, &CameraMirror::frameChanged, this, [this] { m_preview->setFrame(m_mirror->frame()); });
    connect(m_toggle, &QPushButton::clicked, this, &CameraMirrorPane::toggle);
    connect(m_settings, &QPushButton::clicked, this,
            [this] { Q_EMIT settingsRequested(MirrorTexts::settingsAnchor()); });
    sync();
}

CameraMirrorPane::~CameraMirrorPane() = default;

QString CameraMirrorPane::statusText() const
{
    return m_status->text();
}

void CameraMirrorPane::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (m_mirror->running() || m_mirror->starting())
        m_mirror->stop();
}

void CameraMirrorPane::toggle()
{
    if (m_mirror->running() || m_mirror->starting())
        m_mirror->stop();
    else
        m_mirror->start();
}

void CameraMirrorPane::sync()
{
    const CameraMirror& mirror = *m_mirror;
    const bool starting = mirror.starting();
    m_preview->setVisible(!starting);
    m_starting->setVisible(starting);
    m_status->setText(mirror.status());
    m_toggle->setText(PanelTheme::buttonText(mirror.running() || starting ? MirrorTexts::stopButton()
                                                                          : MirrorTexts::startButton()));
    m_settings->setVisible(mirror.denied());
}
