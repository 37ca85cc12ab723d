#include "media/widgets/MediaSettings.h"

#include "media/ArtworkStore.h"
#include "media/MediaTexts.h"
#include "media/NowPlaying.h"
#include "media/TrackToastSettings.h"
#include "ui/Divider.h"
#include "ui/SegmentedControl.h"
#include "ui/TextLabel.h"
#include "ui/ToggleRow.h"

#include <QPushButton>
#include <QVBoxLayout>

MediaSettings::MediaSettings(NowPlaying& media, TrackToastSettings& toast, std::function<void()> preview,
                             QWidget* parent)
    : QWidget(parent), m_media(media), m_settings(toast),
      m_connect(new ToggleRow(MediaTexts::connectToggle(), MediaTexts::controlsNote())),
      m_toast(new ToggleRow(MediaTexts::toastToggle())),
      m_duration(
          new SegmentedControl({MediaTexts::seconds(2), MediaTexts::seconds(3), MediaTexts::seconds(5)},
                               MediaTexts::toastDuration())),
      m_preview(new QPushButton(MediaTexts::toastPreview()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new Divider);
    column->addWidget(m_connect);
    column->addWidget(m_toast);
    auto* durationRow = new QHBoxLayout;
    durationRow->addWidget(new TextLabel(MediaTexts::toastDuration(), 12));
    durationRow->addStretch(1);
    durationRow->addWidget(m_duration);
    column->addLayout(durationRow);
    column->addWidget(m_preview, 0, Qt::AlignLeft);
    column->addWidget((new TextLabel(MediaTexts::toastNote(), 11, TextLabel::secondary))->wrapping());
    column->addWidget((new TextLabel(MediaTexts::scopeNote(), 11, TextLabel::secondary))->wrapping());
    m_preview->setCursor(Qt::PointingHandCursor);

    connect(m_connect, &ToggleRow::toggled, &media, &NowPlaying::setMediaEnabled);
    connect(m_toast, &ToggleRow::toggled, &toast, &TrackToastSettings::setEnabled);
    connect(m_duration, &SegmentedControl::chosen, this, [this](const QString& label) {
        m_settings.setDuration(label.section(QLatin1Char(' '), 0, 0).toDouble());
    });
    connect(m_preview, &QPushButton::clicked, this, [preview = std::move(preview)] {
        if (preview)
            preview();
    });
    connect(&media, &NowPlaying::mediaEnabledChanged, this, &MediaSettings::sync);
    connect(&media.artwork(), &ArtworkStore::imageChanged, this, &MediaSettings::sync);
    connect(&toast, &TrackToastSettings::enabledChanged, this, &MediaSettings::sync);
    connect(&toast, &TrackToastSettings::durationChanged, this, &MediaSettings::sync);
    sync();
}

void MediaSettings::sync()
{
    m_connect->setState(m_media.mediaEnabled());
    m_toast->setState(m_settings.enabled());
    m_duration->setCurrent(MediaTexts::seconds(int(m_settings.duration())));
    // The test needs a song with a cover to show what a real announcement looks like.
    m_preview->setEnabled(m_settings.enabled() && m_media.artwork().hasImage());
}
