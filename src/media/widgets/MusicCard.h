#pragma once

#include "ui/Card.h"

class NowPlaying;
class QLabel;
class QPushButton;
class QSlider;
class SongArtwork;
class SymbolButton;

// The overview's music tile: the track with its cover, the position slider and the seven transport
// buttons. Its only own state is the drag of the slider, which seeks when it ends on the same track.
class MusicCard : public Card
{
    Q_OBJECT
public:
    explicit MusicCard(NowPlaying& media, QWidget* parent = nullptr);

    QSlider* slider() const { return m_slider; }
    QPushButton* connectButton() const { return m_connect; }
    SymbolButton* button(const QString& symbol) const;
    QString elapsedText() const;
    QString durationText() const;
    QString songText() const;
    QString artistText() const;
    QString playerText() const;
    bool scrubbing() const { return m_scrubbing; }

private:
    void sync();
    void syncPosition();
    double elapsed() const;
    bool seekable() const;
    void beginDrag();
    void endDrag();
    void valueChanged(int value);

    NowPlaying& m_media;
    QLabel* m_player;
    QPushButton* m_connect;
    SongArtwork* m_cover;
    QLabel* m_song;
    QLabel* m_artist;
    QSlider* m_slider;
    QLabel* m_elapsed;
    QLabel* m_duration;
    QList<SymbolButton*> m_buttons;
    SymbolButton* m_playPause = nullptr;
    bool m_scrubbing = false;
    double m_scrubPosition = 0;
    QString m_scrubTrack;
    // Set while the card moves the slider itself, so that is not taken for the user's click.
    bool m_syncing = false;
};
