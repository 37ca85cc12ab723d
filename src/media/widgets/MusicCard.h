#pragma once

#include "ui/Card.h"

class NowPlaying;
class QLabel;

// The overview's music card. Until the player bridge and its controls exist it shows what the
// store knows (song, artist, player status), read only.
class MusicCard : public Card
{
    Q_OBJECT
public:
    explicit MusicCard(const NowPlaying& nowPlaying, QWidget* parent = nullptr);

private:
    void sync();

    const NowPlaying& m_nowPlaying;
    QLabel* m_song;
    QLabel* m_artist;
    QLabel* m_status;
};
