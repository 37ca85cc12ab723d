#pragma once

#include <QString>
#include <QStringList>

// Texts of the overview's device and microphone cards, the header's microphone dot and the mini
// overview, read from the model's hardware state.
class DeviceTexts
{
public:
    // "MacBook · 80 %" with a battery, else "Netzbetrieb".
    static QString powerTitle(bool hasBattery, int battery);
    static QString batterySymbol(bool charging);
    // The first audio device, else what the power supply does.
    static QString powerDetail(const QStringList& devices, bool charging);

    // "Mikrofon stumm", "Mikrofon aktiv" or "Mikrofon bereit": mute wins over activity.
    static QString microphoneLine(bool micMuted, bool microphone);
    static QString cameraLine(bool camera);
    static QString microphoneHint(bool microphone);
    static QString muteHint();
    // The mute button's hint when the default microphone has no mute switch Brenlow can set.
    static QString muteUnavailableHint();
    static QString muteSymbol(bool micMuted);
    // The status line when switching the microphone failed.
    static QString muteFailed();

    // The activity notices: "Ladegerät verbunden" or "Akkubetrieb", the low battery, a new device.
    static QString powerChangeTitle(bool charging);
    static QString batteryDetail(int battery);
    static QString lowBatteryTitle();
    static QString lowBatteryDetail(int battery);
    static QString deviceConnectedTitle();

    // The mini overview's short forms.
    static QString miniBattery(bool hasBattery, int battery);
    static QString miniMicrophone(bool microphone);
};
