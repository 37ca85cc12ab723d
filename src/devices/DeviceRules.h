#pragma once

#include "platform/AudioDevices.h"
#include "platform/PowerSources.h"

#include <QList>
#include <QSet>
#include <QStringList>

#include <optional>

// Everything one hardware refresh read; a part that could not be read is empty.
struct HardwareReading
{
    std::optional<QList<PowerSourceReading>> power;
    std::optional<AudioInputState> input;
    std::optional<QList<AudioDeviceInfo>> audioDevices;
    bool cameraInUse = false;
};

// The published hardware state and what the rules remember between refreshes.
struct HardwareState
{
    int battery = 0;
    bool hasBattery = false;
    bool charging = false;
    bool microphone = false;
    bool micMuted = false;
    bool micAvailable = false;
    bool camera = false;
    QStringList devices;

    std::optional<bool> previousPower;
    bool lowBatteryNotified = false;
    QSet<QString> lastDevices;
    // Devices present when the audio system first answered were there before us: no notice.
    bool devicesSeen = false;
};

struct DeviceNotice
{
    QString title;
    QString detail;
    bool operator==(const DeviceNotice&) const = default;
};

// The device rules: battery percent and power state, the charging and low-battery notices,
// microphone and camera, and the Bluetooth audio devices with their "connected" notice.
class DeviceRules
{
public:
    static constexpr int lowBatteryBelow = 21;
    static constexpr int lowBatteryRearmAt = 26;

    // Applies one reading to `state`; answers the notices to record, in order.
    static QList<DeviceNotice> apply(HardwareState& state, const HardwareReading& reading);

    // Current × 100 / max, rounded down; nothing for a pair that is no charge (missing, max ≤ 0,
    // negative or above the maximum).
    static std::optional<int> percent(const PowerSourceReading& source);

private:
    static void applyBattery(HardwareState& state, const QList<PowerSourceReading>& sources,
                             QList<DeviceNotice>& notices);
    static void applyAudioDevices(HardwareState& state, const QList<AudioDeviceInfo>& devices,
                                  QList<DeviceNotice>& notices);
};
