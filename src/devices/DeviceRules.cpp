#include "devices/DeviceRules.h"

#include "devices/DeviceTexts.h"

std::optional<int> DeviceRules::percent(const PowerSourceReading& source)
{
    if (!source.currentCapacity || !source.maxCapacity || *source.maxCapacity <= 0)
        return std::nullopt;
    // A negative charge or more than full is a broken reading; the last good value stays.
    if (*source.currentCapacity < 0 || *source.currentCapacity > *source.maxCapacity)
        return std::nullopt;
    return int(*source.currentCapacity * 100 / *source.maxCapacity);
}

QList<DeviceNotice> DeviceRules::apply(HardwareState& state, const HardwareReading& reading)
{
    QList<DeviceNotice> notices;
    if (reading.power)
        applyBattery(state, *reading.power, notices);

    state.camera = reading.cameraInUse;

    const AudioInputState input = reading.input.value_or(AudioInputState{});
    state.microphone = input.running;
    state.micMuted = input.muted;
    state.micAvailable = reading.input.has_value() && input.muteSettable;

    if (reading.audioDevices && !reading.audioDevices->isEmpty())
        applyAudioDevices(state, *reading.audioDevices, notices);
    return notices;
}

void DeviceRules::applyBattery(HardwareState& state, const QList<PowerSourceReading>& sources,
                               QList<DeviceNotice>& notices)
{
    for (const PowerSourceReading& source : sources) {
        const std::optional<int> charge = percent(source);
        if (!charge)
            continue;
        state.hasBattery = true;
        state.battery = *charge;
        state.charging = source.powerState == PowerSourceReading::acPower();
        if (state.previousPower && *state.previousPower != state.charging)
            notices.append(
                {DeviceTexts::powerChangeTitle(state.charging), DeviceTexts::batteryDetail(state.battery)});
        if (state.battery < lowBatteryBelow && !state.charging && !state.lowBatteryNotified) {
            notices.append({DeviceTexts::lowBatteryTitle(), DeviceTexts::lowBatteryDetail(state.battery)});
            state.lowBatteryNotified = true;
        }
        if (state.battery >= lowBatteryRearmAt || state.charging)
            state.lowBatteryNotified = false;
        state.previousPower = state.charging;
    }
}

void DeviceRules::applyAudioDevices(HardwareState& state, const QList<AudioDeviceInfo>& devices,
                                    QList<DeviceNotice>& notices)
{
    QStringList names;
    for (const AudioDeviceInfo& device : devices) {
        if (device.transport == AudioDeviceInfo::bluetooth() && !device.name.isEmpty())
            names.append(device.name);
    }
    state.devices = names;
    const QSet<QString> current(names.cbegin(), names.cend());
    if (state.devicesSeen) {
        // In list order, each new name once.
        QSet<QString> told;
        for (const QString& name : names) {
            if (!state.lastDevices.contains(name) && !told.contains(name)) {
                notices.append({DeviceTexts::deviceConnectedTitle(), name});
                told.insert(name);
            }
        }
    }
    state.devicesSeen = true;
    state.lastDevices = current;
}
