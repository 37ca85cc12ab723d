#pragma once

#include "platform/PowerSources.h"

#include <QDBusConnection>
#include <QMutex>
#include <QVariantMap>

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

// The battery from UPower on the system bus: its display device (all batteries as one), with
// "AC Power" while the machine runs on line power. The daemon's PropertiesChanged signals
// re-read it at once. Without UPower the kernel's /sys/class/power_supply is read instead.
class LinuxPowerSources final : public PowerSources
{
    Q_OBJECT
public:
    explicit LinuxPowerSources(QString sysfsRoot = QStringLiteral("/sys/class/power_supply"),
                               QObject* parent = nullptr);
    ~LinuxPowerSources() override;

    std::optional<QList<PowerSourceReading>> sources() const override;
    // Whether the readings come from UPower (rather than the kernel's files).
    bool upowerAnswered() const;

    // The kernel's batteries under `root`: nothing when the folder cannot be read.
    static std::optional<QList<PowerSourceReading>> readSysfs(const QString& root);
    // One UPower display device with the daemon's OnBattery, as a power source; nothing for a
    // device that is no present battery.
    static std::optional<PowerSourceReading> fromUPower(const QVariantMap& device,
                                                        std::optional<bool> onBattery);

private Q_SLOTS:
    void onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalidated);

private:
    void readUPower();
    void upowerGone();
    void store(std::optional<QList<PowerSourceReading>> sources);

    QString m_sysfsRoot;
    QDBusConnection m_bus;
    QDBusServiceWatcher* m_watcher = nullptr;
    quint64 m_generation = 0;

    mutable QMutex m_mutex;
    bool m_fromUPower = false;
    QList<PowerSourceReading> m_sources;
};
