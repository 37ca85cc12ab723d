#pragma once

#include <QWidget>

class DeviceStatus;
class FocusCard;
class FocusTimer;
class InfoCard;
class NowPlaying;
class Preferences;
class QBoxLayout;

// The "Übersicht" page: music and focus side by side (stacked in the tall layout), then the
// devices card and the microphone and camera card.
class OverviewPage : public QWidget
{
    Q_OBJECT
public:
    OverviewPage(NowPlaying& nowPlaying, FocusTimer& focus, DeviceStatus& devices,
                 const Preferences& preferences, QWidget* parent = nullptr);

    FocusCard* focusCard() const { return m_focus; }
    InfoCard* devicesCard() const { return m_devices; }
    InfoCard* microphoneCard() const { return m_microphone; }
    QWidget* musicCard() const { return m_music; }
    bool stacked() const;

private:
    void arrange();

    const Preferences& m_preferences;
    QBoxLayout* m_cards;
    QWidget* m_music;
    FocusCard* m_focus;
    InfoCard* m_devices;
    InfoCard* m_microphone;
};
