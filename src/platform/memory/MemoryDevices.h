#pragma once

#include "platform/AudioDevices.h"
#include "platform/CameraActivity.h"
#include "platform/LoginItems.h"
#include "platform/PowerSources.h"
#include "platform/SystemSettings.h"

#include <QMutex>
#include <QStringList>

#include <atomic>

// In-memory device, login-item and settings services. Device readings are taken on a worker
// thread while tests change them, so they sit behind a lock.

class MemoryPowerSources final : public PowerSources
{
    Q_OBJECT
public:
    std::optional<QList<PowerSourceReading>> sources() const override;
    // Replaces the sources (nothing: the power information cannot be read) and says so.
    void set(std::optional<QList<PowerSourceReading>> sources);
    // One battery at this charge, on external power or not.
    void setBattery(qint64 percent, bool onExternalPower);

private:
    mutable QMutex m_mutex;
    std::optional<QList<PowerSourceReading>> m_sources = QList<PowerSourceReading>{};
};

class MemoryAudioDevices final : public AudioDevices
{
    Q_OBJECT
public:
    std::optional<AudioInputState> defaultInput() const override;
    std::optional<QList<AudioDeviceInfo>> devices() const override;
    // Takes the switch only when the input's mute can be set.
    void setInputMute(bool muted, QObject* context, std::function<void(bool)> done) override;

    void setInput(std::optional<AudioInputState> input);
    void setDevices(std::optional<QList<AudioDeviceInfo>> devices);
    int muteWrites() const { return m_muteWrites; }

private:
    mutable QMutex m_mutex;
    std::optional<AudioInputState> m_input;
    std::optional<QList<AudioDeviceInfo>> m_devices;
    int m_muteWrites = 0;
};

class MemoryCameraActivity final : public CameraActivity
{
public:
    bool cameraInUse() const override { return inUse; }
    std::atomic<bool> inUse = false;
};

class MemoryLoginItems final : public LoginItems
{
public:
    LoginItemStatus status() const override { return current; }
    std::optional<QString> registerItem() override;
    std::optional<QString> unregisterItem() override;
    std::optional<QString> installLauncher() override
    {
        ++launcherInstalls;
        return std::nullopt;
    }

    LoginItemStatus current = LoginItemStatus::notRegistered;
    // The system's answer to the next changes; nothing means they work.
    std::optional<QString> failure;
    int registers = 0;
    int unregisters = 0;
    int launcherInstalls = 0;
};

class MemorySystemSettings final : public SystemSettings
{
public:
    bool open(const QString& anchor) override;
    // Anchors this desktop has a page for.
    QStringList pages;
    QStringList opened;
};
