#include "platform/memory/MemoryDevices.h"

#include <QMetaObject>
#include <QPointer>

std::optional<QList<PowerSourceReading>> MemoryPowerSources::sources() const
{
    QMutexLocker lock(&m_mutex);
    return m_sources;
}

void MemoryPowerSources::set(std::optional<QList<PowerSourceReading>> sources)
{
    {
        QMutexLocker lock(&m_mutex);
        m_sources = std::move(sources);
    }
    Q_EMIT changed();
}

void MemoryPowerSources::setBattery(qint64 percent, bool onExternalPower)
{
    set(QList<PowerSourceReading>{
        {percent, 100,
         onExternalPower ? PowerSourceReading::acPower() : PowerSourceReading::batteryPower()}});
}

std::optional<AudioInputState> MemoryAudioDevices::defaultInput() const
{
    QMutexLocker lock(&m_mutex);
    return m_input;
}

std::optional<QList<AudioDeviceInfo>> MemoryAudioDevices::devices() const
{
    QMutexLocker lock(&m_mutex);
    return m_devices;
}

void MemoryAudioDevices::setInputMute(bool muted, QObject* context, std::function<void(bool)> done)
{
    bool written = false;
    {
        QMutexLocker lock(&m_mutex);
        ++m_muteWrites;
        if (m_input && m_input->muteSettable) {
            m_input->muted = muted;
            written = true;
        }
    }
    // Answers later, as the audio server does.
    QMetaObject::invokeMethod(
        this,
        [context = QPointer<QObject>(context), done, written] {
            if (context)
                done(written);
        },
        Qt::QueuedConnection);
    if (written)
        Q_EMIT changed();
}

void MemoryAudioDevices::setInput(std::optional<AudioInputState> input)
{
    {
        QMutexLocker lock(&m_mutex);
        m_input = input;
    }
    Q_EMIT changed();
}

void MemoryAudioDevices::setDevices(std::optional<QList<AudioDeviceInfo>> devices)
{
    {
        QMutexLocker lock(&m_mutex);
        m_devices = std::move(devices);
    }
    Q_EMIT changed();
}

std::optional<QString> MemoryLoginItems::registerItem()
{
    ++registers;
    if (failure)
        return failure;
    current = LoginItemStatus::enabled;
    return std::nullopt;
}

std::optional<QString> MemoryLoginItems::unregisterItem()
{
    ++unregisters;
    if (failure)
        return failure;
    current = LoginItemStatus::notRegistered;
    return std::nullopt;
}

bool MemorySystemSettings::open(const QString& anchor)
{
    if (!pages.contains(anchor))
        return false;
    opened.append(anchor);
    return true;
}
