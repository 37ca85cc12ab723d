#include "media/widgets/MusicCard.h"

#include "media/ArtworkStore.h"
#include "media/MediaMath.h"
#include "media/MediaTexts.h"
#include "media/NowPlaying.h"
#include "media/widgets/SongArtwork.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include <cmath>

namespace {

// The slider counts tenths of a second: fine enough for a drag, whole numbers for QSlider.
constexpr double sliderScale = 10.0;

} // namespace

MusicCard::MusicCard(NowPlaying& media, QWidget* parent)
    : Card(parent), m_media(media), m_player(new TextLabel(QString(), 10, TextLabel::caps)),
      m_connect(new QPushButton(MediaTexts::connectButton())), m_cover(new SongArtwork(media.artwork(), 40)),
      m_song(new TextLabel(QString(), 14, TextLabel::primary, QFont::DemiBold)),
      m_artist(new TextLabel(QString(), 12, TextLabel::secondary)), m_slider(new QSlider(Qt::Horizontal)),
      m_elapsed(new TextLabel(QString(), 10, TextLabel::secondary)),
      m_duration(new TextLabel(QString(), 10, TextLabel::secondary))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 8, 14, 8);
    column->setSpacing(4);

    auto* header = new QHBoxLayout;
    header->setSpacing(6);
    auto* wave = new SymbolLabel(QStringLiteral("waveform"), 13);
    header->addWidget(wave);
    header->addWidget(new TextLabel(MediaTexts::nowPlaying(), 10, TextLabel::caps, QFont::DemiBold));
    header->addStretch(1);
    header->addWidget(m_player);
    column->addLayout(header);

    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(m_cover);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(m_song);
    texts->addWidget(m_artist);
    row->addLayout(texts, 1);
    column->addLayout(row);
    for (QLabel* label : {m_song, m_artist})
        label->setMinimumWidth(60);
    column->addWidget(m_connect, 0, Qt::AlignLeft);
    m_connect->setCursor(Qt::PointingHandCursor);
    m_connect->setProperty("kind", QStringLiteral("primary"));

    m_slider->setAccessibleName(MediaTexts::positionLabel());
    m_slider->setToolTip(MediaTexts::positionLabel());
    m_slider->setStyleSheet(
        QStringLiteral("QSlider::groove:horizontal { height: 4px; border-radius: 2px;"
                       " background: rgba(255,255,255,0.15); }"
                       "QSlider::sub-page:horizontal { border-radius: 2px; background: %1; }"
                       "QSlider::handle:horizontal { width: 10px; margin: -3px 0;"
                       " border-radius: 5px; background: white; }")
            .arg(PanelTheme::accent().name()));
    column->addWidget(m_slider);
    auto* times = new QHBoxLayout;
    times->addWidget(m_elapsed);
    times->addStretch(1);
    times->addWidget(m_duration);
    for (QLabel* label : {m_elapsed, m_duration})
        label->setFont(PanelTheme::digits(10));
    column->addLayout(times);

    auto* controls = new QHBoxLayout;
    controls->setSpacing(2);
    controls->addStretch(1);
    const auto add = [&](const char* symbol, const QString& hint, auto action) {
        auto* button = new SymbolButton(QString::fromLatin1(symbol), hint, 28);
        controls->addWidget(button);
        m_buttons.append(button);
        connect(button, &SymbolButton::clicked, this, action);
        return button;
    };
    add("gobackward.30", MediaTexts::back30(), [this] { m_media.seek(m_media.songPosition() - 30); });
    add("gobackward.10", MediaTexts::back10(), [this] { m_media.seek(m_media.songPosition() - 10); });
    add("backward.end.fill", MediaTexts::previous(),
        [this] { m_media.mediaAction(QStringLiteral("previous track")); });
    m_playPause = add("play.fill", MediaTexts::playPause(),
                      [this] { m_media.mediaAction(QStringLiteral("playpause")); });
    m_playPause->setStyle(SymbolButton::filled);
    add("forward.end.fill", MediaTexts::next(),
        [this] { m_media.mediaAction(QStringLiteral("next track")); });
    add("goforward.10", MediaTexts::forward10(), [this] { m_media.seek(m_media.songPosition() + 10); });
    add("goforward.30", MediaTexts::forward30(), [this] { m_media.seek(m_media.songPosition() + 30); });
    controls->addStretch(1);
    column->addLayout(controls);
    column->addStretch(1);

    connect(m_connect, &QPushButton::clicked, this, [this] { m_media.setMediaEnabled(true); });
    connect(m_slider, &QSlider::sliderPressed, this, &MusicCard::beginDrag);
    connect(m_slider, &QSlider::sliderMoved, this, [this](int value) {
        m_scrubPosition = value / sliderScale;
        syncPosition();
    });
    connect(m_slider, &QSlider::sliderReleased, this, &MusicCard::endDrag);
    connect(m_slider, &QSlider::valueChanged, this, &MusicCard::valueChanged);

    for (auto signal :
         {&NowPlaying::mediaEnabledChanged, &NowPlaying::mediaChanged, &NowPlaying::songChanged,
          &NowPlaying::artistChanged, &NowPlaying::mediaAppChanged, &NowPlaying::playingChanged})
        connect(&media, signal, this, &MusicCard::sync);
    connect(&media, &NowPlaying::songPositionChanged, this, &MusicCard::syncPosition);
    sync();
}

SymbolButton* MusicCard::button(const QString& symbol) const
{
    for (SymbolButton* button : m_buttons)
        if (button->symbol() == symbol || (button == m_playPause && symbol == QLatin1String("playpause")))
            return button;
    return nullptr;
}

QString MusicCard::elapsedText() const
{
    return m_elapsed->text();
}
QString MusicCard::durationText() const
{
    return m_duration->text();
}
QString MusicCard::songText() const
{
    return m_song->text();
}
QString MusicCard::artistText() const
{
    return m_artist->text();
}
QString MusicCard::playerText() const
{
    return m_player->text();
}

bool MusicCard::seekable() const
{
    return m_media.media() && m_media.media()->duration > 0;
}

double MusicCard::elapsed() const
{
    return m_scrubbing ? m_scrubPosition : m_media.songPosition();
}

void MusicCard::sync()
{
    m_player->setText(m_media.mediaApp().isEmpty() ? MediaTexts::anyPlayer() : m_media.mediaApp().toUpper());
    // Switched off, the card offers the connection instead of controls it could not use.
    const bool enabled = m_media.mediaEnabled();
    m_connect->setVisible(!enabled);
    for (QWidget* widget : {static_cast<QWidget*>(m_slider), static_cast<QWidget*>(m_elapsed),
                            static_cast<QWidget*>(m_duration)})
        widget->setVisible(enabled);
    for (SymbolButton* button : m_buttons)
        button->setVisible(enabled);
    m_song->setText(m_media.song());
    m_artist->setText(m_media.artist());
    m_playPause->setSymbol(m_media.playing() ? QStringLiteral("pause.fill") : QStringLiteral("play.fill"));
    const bool seekable = this->seekable();
    m_slider->setEnabled(seekable);
    for (SymbolButton* button : m_buttons)
        if (button->symbol().startsWith(QLatin1String("go")))
            button->setEnabled(seekable);
    syncPosition();
}

void MusicCard::syncPosition()
{
    const bool seekable = this->seekable();
    const double duration = seekable ? m_media.media()->duration : 0;
    m_elapsed->setText(seekable ? MediaMath::timestamp(elapsed()) : MediaTexts::noTime());
    m_duration->setText(seekable ? MediaMath::timestamp(duration) : MediaTexts::noTime());
    if (m_scrubbing)
        return;
    m_syncing = true;
    m_slider->setRange(0, int(std::lround(duration * sliderScale)));
    m_slider->setValue(int(std::lround(elapsed() * sliderScale)));
    m_syncing = false;
}

void MusicCard::beginDrag()
{
    m_scrubPosition = m_media.songPosition();
    m_scrubTrack = m_media.media() ? m_media.media()->trackID : QString();
    m_scrubbing = true;
}

void MusicCard::endDrag()
{
    m_scrubbing = false;
    // A drag that began on another track sends nothing: the player moved on meanwhile.
    if (m_media.media() && m_media.media()->trackID == m_scrubTrack)
        m_media.seek(m_scrubPosition);
    syncPosition();
}

void MusicCard::valueChanged(int value)
{
    if (m_syncing || m_scrubbing || m_slider->isSliderDown())
        return;
    // A click on the track or a key step: seek at once.
    m_scrubPosition = value / sliderScale;
    m_media.seek(m_scrubPosition);
}
