#include "media/widgets/MusicCard.h"

#include "media/NowPlaying.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

MusicCard::MusicCard(const NowPlaying& nowPlaying, QWidget* parent)
    : Card(parent), m_nowPlaying(nowPlaying), m_song(new TextLabel(QString(), 15, TextLabel::primary, QFont::DemiBold)),
      m_artist(new TextLabel(QString(), 12, TextLabel::secondary)),
      m_status((new TextLabel(QString(), 11, TextLabel::secondary))->wrapping())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 12, 14, 12);
    column->setSpacing(8);
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    auto* cover = new SymbolLabel(QStringLiteral("music.note"), 26);
    cover->setFixedSize(56, 56);
    cover->setProperty("role", QStringLiteral("secondary"));
    cover->setStyleSheet(QStringLiteral("background: rgba(255,255,255,0.08); border-radius: 10px;"));
    row->addWidget(cover);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch(1);
    texts->addWidget(m_song);
    texts->addWidget(m_artist);
    texts->addStretch(1);
    row->addLayout(texts, 1);
    column->addLayout(row);
    column->addWidget(m_status);
    column->addStretch(1);
    for (QLabel* label : {m_song, m_artist})
        label->setMinimumWidth(60);

    connect(&nowPlaying, &NowPlaying::songChanged, this, &MusicCard::sync);
    connect(&nowPlaying, &NowPlaying::artistChanged, this, &MusicCard::sync);
    connect(&nowPlaying, &NowPlaying::mediaStatusChanged, this, &MusicCard::sync);
    sync();
}

void MusicCard::sync()
{
    m_song->setText(m_nowPlaying.song());
    m_artist->setText(m_nowPlaying.artist());
    m_status->setText(m_nowPlaying.mediaStatus());
}
