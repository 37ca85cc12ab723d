#pragma once

#include "common/SerialQueue.h"
#include "devices/DeviceRules.h"

#include <QObject>
#include <QStringList>

class ActivityLog;
class AudioDevices;
class CameraActivity;
class PowerSources;
class QTimer;
class StatusMessage;

// Battery, microphone, camera and Bluetooth audio devices as the overview shows them. A refresh
// reads the services on the "Brenlow.devices" queue and applies the device rules here on the
// main thread; the services' change signals ask for one at once, the heartbeat every 5 seconds.
class DeviceStatus : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int battery READ battery NOTIFY batteryChanged)
    Q_PROPERTY(bool hasBattery READ hasBattery NOTIFY hasBatteryChanged)
    Q_PROPERTY(bool charging READ charging NOTIFY chargingChanged)
    Q_PROPERTY(bool microphone READ microphone NOTIFY microphoneChanged)
    Q_PROPERTY(bool micMuted READ micMuted NOTIFY micMutedChanged)
    Q_PROPERTY(bool micAvailable READ micAvailable NOTIFY micAvailableChanged)
    Q_PROPERTY(bool camera READ camera NOTIFY cameraChanged)
    Q_PROPERTY(QStringList devices READ devices NOTIFY devicesChanged)
public:
    DeviceStatus(PowerSources& power, AudioDevices& audio, CameraActivity& cameras, ActivityLog& activity,
                 StatusMessage& message, QObject* parent = nullptr);
    ~DeviceStatus() override;

    int battery() const { return m_state.battery; }
    bool hasBattery() const { return m_state.hasBattery; }
    bool charging() const { return m_state.charging; }
    bool microphone() const { return m_state.microphone; }
    bool micMuted() const { return m_state.micMuted; }
    bool micAvailable() const { return m_state.micAvailable; }
    bool camera() const { return m_state.camera; }
    const QStringList& devices() const { return m_state.devices; }

    // Reads everything again; a refresh asked for while one runs follows it.
    void refreshHardware();
    // Flips the default microphone's mute, then reads the real state back.
    void toggleMute();
    // Follow the services' change signals (only a running application does).
    void watchServices();
    // How many readings have been applied.
    quint64 refreshes() const { return m_refreshes; }

Q_SIGNALS:
    void batteryChanged();
    void hasBatteryChanged();
    void chargingChanged();
    void microphoneChanged();
    void micMutedChanged();
    void micAvailableChanged();
    void cameraChanged();
    void devicesChanged();
    // A reading was applied.
    void refreshed();

private:
    void finishRefresh(quint64 generation, const HardwareReading& reading);
    void publish(const HardwareState& before);

    PowerSources& m_power;
    AudioDevices& m_audio;
    CameraActivity& m_cameras;
    ActivityLog& m_activity;
    StatusMessage& m_message;
    HardwareState m_state;
    bool m_reading = false;
    bool m_readAgain = false;
    // Moves with every mute switch: a reading begun before it may show the old mute.
    quint64 m_generation = 0;
    quint64 m_refreshes = 0;
    // Change signals come in bursts (a stream starting touches several objects): one read each.
    QTimer* m_changeDelay;
    SerialQueue m_queue{QStringLiteral("Brenlow.devices")};
};
