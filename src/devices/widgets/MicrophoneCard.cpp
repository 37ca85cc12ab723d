#include "devices/widgets/MicrophoneCard.h"

#include "devices/DeviceStatus.h"
#include "devices/DeviceTexts.h"
#include "ui/SymbolButton.h"

MicrophoneCard::MicrophoneCard(const DeviceStatus& devices, QWidget* parent)
    : InfoCard(parent), m_devices(devices),
      m_mute(addButton(QStringLiteral("mic.slash"), DeviceTexts::muteUnavailableHint()))
{
    setSymbol(QStringLiteral("mic"));
    // Switching the microphone comes with the audio service; until then the button is there,
    // greyed, and its hint says why.
    m_mute->setEnabled(false);
    m_mute->setCursor(Qt::ArrowCursor);
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
