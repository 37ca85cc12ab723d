#include "devices/DeviceTexts.h"

QString DeviceTexts::powerTitle(bool hasBattery, int battery)
{
    if (!hasBattery)
        return QStringLiteral("Netzbetrieb");
    return QStringLiteral("MacBook · %1 %").arg(battery);
}

QString DeviceTexts::batterySymbol(bool charging)
{
    return charging ? QStringLiteral("battery.100percent.bolt") : QStringLiteral("battery.75percent");
}

QString DeviceTexts::powerDetail(const QStringList& devices, bool charging)
{
    if (!devices.isEmpty())
        return devices.first();
    return charging ? QStringLiteral("Wird mit Strom versorgt")
                    : QStringLiteral("Keine Bluetooth-Audiogeräte");
}

QString DeviceTexts::microphoneLine(bool micMuted, bool microphone)
{
    if (micMuted)
        return QStringLiteral("Mikrofon stumm");
    return microphone ? QStringLiteral("Mikrofon aktiv") : QStringLiteral("Mikrofon bereit");
}

QString DeviceTexts::cameraLine(bool camera)
{
    return camera ? QStringLiteral("Kamera aktiv") : QStringLiteral("Kamera nicht aktiv");
}

QString DeviceTexts::microphoneHint(bool microphone)
{
    return microphone ? QStringLiteral("Mikrofonaktivität am Standard-Eingabegerät erkannt")
                      : QStringLiteral("Keine Mikrofonaktivität am Standard-Eingabegerät erkannt");
}

QString DeviceTexts::muteHint()
{
    return QStringLiteral("Hardware-Mikrofon umschalten");
}

QString DeviceTexts::muteUnavailableHint()
{
    return muteHint() + QStringLiteral(" – nicht verfügbar: ") + muteFailed();
}

QString DeviceTexts::muteSymbol(bool micMuted)
{
    return micMuted ? QStringLiteral("mic.slash") : QStringLiteral("mic");
}

QString DeviceTexts::muteFailed()
{
    return QStringLiteral("Dieses Mikrofon unterstützt keine Hardware-Stummschaltung.");
}

QString DeviceTexts::powerChangeTitle(bool charging)
{
    return charging ? QStringLiteral("Ladegerät verbunden") : QStringLiteral("Akkubetrieb");
}

QString DeviceTexts::batteryDetail(int battery)
{
    return QStringLiteral("MacBook bei %1 %.").arg(battery);
}

QString DeviceTexts::lowBatteryTitle()
{
    return QStringLiteral("Akku wird knapp");
}

QString DeviceTexts::lowBatteryDetail(int battery)
{
    return QStringLiteral("Noch %1 % – bald ein Ladegerät anschließen.").arg(battery);
}

QString DeviceTexts::deviceConnectedTitle()
{
    return QStringLiteral("Gerät verbunden");
}

QString DeviceTexts::miniBattery(bool hasBattery, int battery)
{
    // A desktop has no charge to report; the devices card says the same.
    if (!hasBattery)
        return QStringLiteral("Netzbetrieb");
    return QStringLiteral("Akku %1 %").arg(battery);
}

QString DeviceTexts::miniMicrophone(bool microphone)
{
    return microphone ? QStringLiteral("Mikrofon aktiv") : QStringLiteral("Mikrofon bereit");
}
