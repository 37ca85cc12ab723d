#pragma once

#include "ui/Card.h"

class Model;
class QLabel;

// Holds the music card's place in the overview until the player controls arrive: the model's
// song, artist and player status, read only.
class MusicPlaceholder : public Card
{
    Q_OBJECT
public:
    explicit MusicPlaceholder(Model& model, QWidget* parent = nullptr);

private:
    void sync();

    Model& m_model;
    QLabel* m_song;
    QLabel* m_artist;
    QLabel* m_status;
};
