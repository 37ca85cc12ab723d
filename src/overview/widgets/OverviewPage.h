#pragma once

#include <QWidget>

class FocusCard;
class InfoCard;
class Model;
class QBoxLayout;

// The "Übersicht" page: music and focus side by side (or stacked in the tall layout), then the
// devices card and the microphone and camera card.
class OverviewPage : public QWidget
{
    Q_OBJECT
public:
    explicit OverviewPage(Model& model, QWidget* parent = nullptr);

    FocusCard* focusCard() const { return m_focus; }
    InfoCard* devicesCard() const { return m_devices; }
    InfoCard* microphoneCard() const { return m_microphone; }
    QWidget* musicCard() const { return m_music; }
    // The music card arrives with the player controls and takes the placeholder's place.
    void setMusicCard(QWidget* card);
    bool stacked() const;

private:
    void arrange();
    void syncDevices();

    Model& m_model;
    QBoxLayout* m_cards;
    QWidget* m_music;
    FocusCard* m_focus;
    InfoCard* m_devices;
    InfoCard* m_microphone;
};
