#pragma once

#include <QWidget>

class ArtworkStore;

// The cover of the current track in a square with rounded corners, or a note when there is none.
class SongArtwork : public QWidget
{
    Q_OBJECT
public:
    SongArtwork(const ArtworkStore& artwork, int side, QWidget* parent = nullptr);
    bool showsCover() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void sync();

    const ArtworkStore& m_artwork;
};
