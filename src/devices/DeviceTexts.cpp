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
    return muteHint() + QStringLiteral(" – noch nicht verfügbar: Brenlow kann das Mikrofon noch nicht "
                                       "stummschalten.");
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
