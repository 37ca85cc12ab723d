#include "devices/widgets/PowerCard.h"

#include "devices/DeviceStatus.h"
#include "devices/DeviceTexts.h"

PowerCard::PowerCard(const DeviceStatus& devices, QWidget* parent) : InfoCard(parent), m_devices(devices)
{
    for (auto signal : {&DeviceStatus::batteryChanged, &DeviceStatus::hasBatteryChanged,
                        &DeviceStatus::chargingChanged, &DeviceStatus::devicesChanged})
        connect(&devices, signal, this, &PowerCard::sync);
    sync();
}

void PowerCard::sync()
{
    setSymbol(DeviceTexts::batterySymbol(m_devices.charging()));
    setLines(DeviceTexts::powerTitle(m_devices.hasBattery(), m_devices.battery()),
             DeviceTexts::powerDetail(m_devices.devices(), m_devices.charging()));
}
