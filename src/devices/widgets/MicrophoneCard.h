#pragma once

#include "ui/InfoCard.h"

class DeviceStatus;
class SymbolButton;

// The overview's microphone and camera card with the hardware mute button. The button is live
// while the default microphone's mute can be set; otherwise it is greyed and its hint says why.
class MicrophoneCard : public InfoCard
{
    Q_OBJECT
public:
    explicit MicrophoneCard(DeviceStatus& devices, QWidget* parent = nullptr);

    SymbolButton* muteButton() const { return m_mute; }

private:
    void sync();

    DeviceStatus& m_devices;
    SymbolButton* m_mute;
};
