#pragma once

#include <QObject>
#include <QStringList>

// Battery, microphone, camera and audio devices as the overview shows them. Until the device
// services exist it holds their starting state: no battery, nothing in use.
class DeviceStatus : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int battery READ battery NOTIFY batteryChanged)
    Q_PROPERTY(bool hasBattery READ hasBattery NOTIFY hasBatteryChanged)
    Q_PROPERTY(bool charging READ charging NOTIFY chargingChanged)
    Q_PROPERTY(bool microphone READ microphone NOTIFY microphoneChanged)
    Q_PROPERTY(bool micMuted READ micMuted NOTIFY micMutedChanged)
    Q_PROPERTY(bool camera READ camera NOTIFY cameraChanged)
    Q_PROPERTY(QStringList devices READ devices NOTIFY devicesChanged)
public:
    using QObject::QObject;

    int battery() const { return m_battery; }
    bool hasBattery() const { return m_hasBattery; }
    bool charging() const { return m_charging; }
    bool microphone() const { return m_microphone; }
    bool micMuted() const { return m_micMuted; }
    bool camera() const { return m_camera; }
    const QStringList& devices() const { return m_devices; }

Q_SIGNALS:
    void batteryChanged();
    void hasBatteryChanged();
    void chargingChanged();
    void microphoneChanged();
    void micMutedChanged();
    void cameraChanged();
    void devicesChanged();

private:
    int m_battery = 0;
    bool m_hasBattery = false;
    bool m_charging = false;
    bool m_microphone = false;
    bool m_micMuted = false;
    bool m_camera = false;
    QStringList m_devices;
};
