#pragma once

#include "ui/InfoCard.h"

class DeviceStatus;

// The overview's devices card: battery or mains power, and the first audio device.
class PowerCard : public InfoCard
{
    Q_OBJECT
public:
    explicit PowerCard(const DeviceStatus& devices, QWidget* parent = nullptr);

private:
    void sync();

    const DeviceStatus& m_devices;
};
