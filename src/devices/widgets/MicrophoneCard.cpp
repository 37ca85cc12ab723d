#include "devices/widgets/MicrophoneCard.h"

#include "devices/DeviceStatus.h"
#include "devices/DeviceTexts.h"

MicrophoneCard::MicrophoneCard(const DeviceStatus& devices, QWidget* parent)
    : InfoCard(parent), m_devices(devices)
{
    setSymbol(QStringLiteral("mic"));
    for (auto signal :
         {&DeviceStatus::microphoneChanged, &DeviceStatus::micMutedChanged, &DeviceStatus::cameraChanged})
        connect(&devices, signal, this, &MicrophoneCard::sync);
    sync();
}

void MicrophoneCard::sync()
{
    setLines(DeviceTexts::microphoneLine(m_devices.micMuted(), m_devices.microphone()),
             DeviceTexts::cameraLine(m_devices.camera()));
    setToolTip(DeviceTexts::microphoneHint(m_devices.microphone()));
}
