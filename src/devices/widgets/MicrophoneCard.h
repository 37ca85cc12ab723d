#pragma once

#include "ui/InfoCard.h"

class DeviceStatus;
class SymbolButton;

// The overview's microphone and camera card with the hardware mute button.
class MicrophoneCard : public InfoCard
{
    Q_OBJECT
public:
    explicit MicrophoneCard(const DeviceStatus& devices, QWidget* parent = nullptr);

    SymbolButton* muteButton() const { return m_mute; }

private:
    void sync();

    const DeviceStatus& m_devices;
    SymbolButton* m_mute;
};
