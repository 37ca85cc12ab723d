#include "devices/DeviceStatus.h"

#include "common/StatusMessage.h"
#include "devices/DeviceTexts.h"
#include "focus/ActivityLog.h"
#include "platform/AudioDevices.h"
#include "platform/CameraActivity.h"
#include "platform/PowerSources.h"

#include <QTimer>

namespace {
constexpr int changeDelayMs = 100;
}

DeviceStatus::DeviceStatus(PowerSources& power, AudioDevices& audio, CameraActivity& cameras,
                           ActivityLog& activity, StatusMessage& message, QObject* parent)
    : QObject(parent), m_power(power), m_audio(audio), m_cameras(cameras), m_activity(activity),
      m_message(message), m_changeDelay(new QTimer(this))
{
    m_changeDelay->setSingleShot(true);
    m_changeDelay->setInterval(changeDelayMs);
    connect(m_changeDelay, &QTimer::timeout, this, &DeviceStatus::refreshHardware);
}

DeviceStatus::~DeviceStatus() = default;

void DeviceStatus::watchServices()
{
    auto soon = [this] {
        if (!m_changeDelay->isActive())
            m_changeDelay->start();
    };
    connect(&m_power, &PowerSources::changed, this, soon);
    connect(&m_audio, &AudioDevices::changed, this, soon);
}

void DeviceStatus::refreshHardware()
{
    if (m_reading) {
        m_readAgain = true;
        return;
    }
    m_reading = true;
    m_readAgain = false;
    const quint64 generation = m_generation;
    PowerSources* power = &m_power;
    AudioDevices* audio = &m_audio;
    CameraActivity* cameras = &m_cameras;
    m_queue.run<HardwareReading>(
        this,
        [power, audio, cameras] {
            return HardwareReading{power->sources(), audio->defaultInput(), audio->devices(),
                                   cameras->cameraInUse()};
        },
        [this, generation](HardwareReading reading) { finishRefresh(generation, reading); });
}

void DeviceStatus::finishRefresh(quint64 generation, const HardwareReading& reading)
{
    m_reading = false;
    if (generation != m_generation) {
        refreshHardware();
        return;
    }
    const HardwareState before = m_state;
    const QList<DeviceNotice> notices = DeviceRules::apply(m_state, reading);
    ++m_refreshes;
    publish(before);
    for (const DeviceNotice& notice : notices)
        m_activity.addNotice(notice.title, notice.detail);
    Q_EMIT refreshed();
    if (m_readAgain)
        refreshHardware();
}

void DeviceStatus::publish(const HardwareState& before)
{
    if (before.battery != m_state.battery)
        Q_EMIT batteryChanged();
    if (before.hasBattery != m_state.hasBattery)
        Q_EMIT hasBatteryChanged();
    if (before.charging != m_state.charging)
        Q_EMIT chargingChanged();
    if (before.microphone != m_state.microphone)
        Q_EMIT microphoneChanged();
    if (before.micMuted != m_state.micMuted)
        Q_EMIT micMutedChanged();
    if (before.micAvailable != m_state.micAvailable)
        Q_EMIT micAvailableChanged();
    if (before.camera != m_state.camera)
        Q_EMIT cameraChanged();
    if (before.devices != m_state.devices)
        Q_EMIT devicesChanged();
}

void DeviceStatus::toggleMute()
{
    const bool muted = !m_state.micMuted;
    m_audio.setInputMute(muted, this, [this](bool written) {
        if (!written)
            m_message.setText(DeviceTexts::muteFailed());
        ++m_generation;
        refreshHardware();
    });
}
