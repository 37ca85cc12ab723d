#include "devices/widgets/MicrophoneCard.h"

#include "devices/DeviceStatus.h"
#include "devices/DeviceTexts.h"
#include "ui/SymbolButton.h"

MicrophoneCard::MicrophoneCard(DeviceStatus& devices, QWidget* parent)
    : InfoCard(parent), m_devices(devices),
      m_mute(addButton(DeviceTexts::muteSymbol(false), DeviceTexts::muteHint()))
{
    setSymbol(QStringLiteral("mic"));
    connect(m_mute, &SymbolButton::clicked, &devices, &DeviceStatus::toggleMute);
    for (auto signal : {&DeviceStatus::microphoneChanged, &DeviceStatus::micMutedChanged,
                        &DeviceStatus::micAvailableChanged, &DeviceStatus::cameraChanged})
        connect(&devices, signal, this, &MicrophoneCard::sync);
    sync();
}

void MicrophoneCard::sync()
{
    setLines(DeviceTexts::microphoneLine(m_devices.micMuted(), m_devices.microphone()),
             DeviceTexts::cameraLine(m_devices.camera()));
    setToolTip(DeviceTexts::microphoneHint(m_devices.microphone()));
    const bool available = m_devices.micAvailable();
    m_mute->setSymbol(DeviceTexts::muteSymbol(m_devices.micMuted()));
    m_mute->setEnabled(available);
    m_mute->setCursor(available ? Qt::PointingHandCursor : Qt::ArrowCursor);
    const QString hint = available ? DeviceTexts::muteHint() : DeviceTexts::muteUnavailableHint();
    m_mute->setToolTip(hint);
    m_mute->setAccessibleName(hint);
}
