#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

// One power source as the system describes it: a capacity pair and what feeds the machine.
struct PowerSourceReading
{
    std::optional<qint64> currentCapacity;
    std::optional<qint64> maxCapacity;
    // "AC Power" while external power is connected; anything else means running on the battery.
    QString powerState;

    static QString acPower() { return QStringLiteral("AC Power"); }
    static QString batteryPower() { return QStringLiteral("Battery Power"); }
};

// The machine's power sources. Readings may be asked from a worker thread.
class PowerSources : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    // The sources in the system's order; empty without a battery, nothing when the power
    // information cannot be read at all.
    virtual std::optional<QList<PowerSourceReading>> sources() const = 0;

Q_SIGNALS:
    // Something changed; a fresh reading is worth taking now rather than at the next period.
    void changed();
};
