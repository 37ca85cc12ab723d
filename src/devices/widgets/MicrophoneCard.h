#pragma once

#include "ui/InfoCard.h"

class DeviceStatus;

// The overview's microphone and camera card.
class MicrophoneCard : public InfoCard
{
    Q_OBJECT
public:
    explicit MicrophoneCard(const DeviceStatus& devices, QWidget* parent = nullptr);

private:
    void sync();

    const DeviceStatus& m_devices;
};
