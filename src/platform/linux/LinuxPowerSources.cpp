#include "platform/linux/LinuxPowerSources.h"

#include "common/Log.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QFile>

#include <cmath>

namespace {
const QString service = QStringLiteral("org.freedesktop.UPower");
const QString daemonPath = QStringLiteral("/org/freedesktop/UPower");
const QString displayPath = QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice");
const QString deviceInterface = QStringLiteral("org.freedesktop.UPower.Device");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

// UPower's device type and states.
constexpr uint batteryType = 2;
constexpr uint charging = 1;
constexpr uint fullyCharged = 4;
constexpr uint pendingCharge = 5;

QDBusMessage getAll(const QString& path, const QString& interface)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, propertiesInterface, QStringLiteral("GetAll"));
    message << interface;
    return message;
}

QString readLine(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readLine(256)).trimmed();
}
} // namespace

LinuxPowerSources::LinuxPowerSources(QString sysfsRoot, QObject* parent)
    : PowerSources(parent), m_sysfsRoot(std::move(sysfsRoot)), m_bus(QDBusConnection::systemBus())
{
    if (!m_bus.isConnected()) {
        qCInfo(lcPlatform) << "no system bus: the battery is read from" << m_sysfsRoot;
        return;
    }
    m_watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &LinuxPowerSources::readUPower);
    connect(m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &LinuxPowerSources::upowerGone);
    for (const QString& path : {displayPath, daemonPath})
        m_bus.connect(service, path, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                      SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    readUPower();
}

LinuxPowerSources::~LinuxPowerSources() = default;

void LinuxPowerSources::onPropertiesChanged(const QString&, const QVariantMap&, const QStringList&)
{
    readUPower();
}

void LinuxPowerSources::readUPower()
{
    // Two answers make one reading; a newer read supersedes an older one still under way.
    const quint64 generation = ++m_generation;
    auto* device = new QDBusPendingCallWatcher(m_bus.asyncCall(getAll(displayPath, deviceInterface)), this);
    auto* daemon = new QDBusPendingCallWatcher(
        m_bus.asyncCall(getAll(daemonPath, QStringLiteral("org.freedesktop.UPower"))), this);
    auto finished = [this, generation, device, daemon](QDBusPendingCallWatcher*) {
        if (!device->isFinished() || !daemon->isFinished())
            return;
        const QDBusPendingReply<QVariantMap> deviceReply = *device;
        const QDBusPendingReply<QVariantMap> daemonReply = *daemon;
        device->deleteLater();
        daemon->deleteLater();
        if (generation != m_generation)
            return;
        if (deviceReply.isError()) {
            qCDebug(lcPlatform) << "UPower not read:" << deviceReply.error().message();
            upowerGone();
            return;
        }
        std::optional<bool> onBattery;
        if (!daemonReply.isError() && daemonReply.value().contains(QStringLiteral("OnBattery")))
            onBattery = daemonReply.value().value(QStringLiteral("OnBattery")).toBool();
        QList<PowerSourceReading> sources;
        if (const auto battery = fromUPower(deviceReply.value(), onBattery))
            sources.append(*battery);
        store(sources);
    };
    connect(device, &QDBusPendingCallWatcher::finished, this, finished);
    connect(daemon, &QDBusPendingCallWatcher::finished, this, finished);
}

void LinuxPowerSources::upowerGone()
{
    ++m_generation;
    store(std::nullopt);
}

void LinuxPowerSources::store(std::optional<QList<PowerSourceReading>> sources)
{
    {
        QMutexLocker lock(&m_mutex);
        m_fromUPower = sources.has_value();
        m_sources = sources.value_or(QList<PowerSourceReading>{});
    }
    Q_EMIT changed();
}

std::optional<PowerSourceReading> LinuxPowerSources::fromUPower(const QVariantMap& device,
                                                                std::optional<bool> onBattery)
{
    if (device.value(QStringLiteral("Type")).toUInt() != batteryType ||
        !device.value(QStringLiteral("IsPresent")).toBool())
        return std::nullopt;
    bool ok = false;
    const double percentage = device.value(QStringLiteral("Percentage")).toDouble(&ok);
    if (!ok || !std::isfinite(percentage))
        return std::nullopt;
    const uint state = device.value(QStringLiteral("State")).toUInt();
    const bool external =
        onBattery ? !*onBattery : (state == charging || state == fullyCharged || state == pendingCharge);
    // UPower computes the percentage from energies: 22 % may arrive as 21.9999.
    return PowerSourceReading{qint64(std::floor(percentage + 0.001)), 100,
                              external ? PowerSourceReading::acPower() : PowerSourceReading::batteryPower()};
}

bool LinuxPowerSources::upowerAnswered() const
{
    QMutexLocker lock(&m_mutex);
    return m_fromUPower;
}

std::optional<QList<PowerSourceReading>> LinuxPowerSources::sources() const
{
    {
        QMutexLocker lock(&m_mutex);
        if (m_fromUPower)
            return m_sources;
    }
    return readSysfs(m_sysfsRoot);
}

std::optional<QList<PowerSourceReading>> LinuxPowerSources::readSysfs(const QString& root)
{
    const QDir folder(root);
    if (!folder.exists())
        return std::nullopt;
    const QStringList names = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System, QDir::Name);
    bool lineOnline = false;
    QList<QString> batteries;
    for (const QString& name : names) {
        const QString base = folder.filePath(name) + QLatin1Char('/');
        const QString type = readLine(base + QStringLiteral("type"));
        if (type == u"Mains" || type == u"USB") {
            lineOnline = lineOnline || readLine(base + QStringLiteral("online")) == u"1";
        } else if (type == u"Battery" && readLine(base + QStringLiteral("scope")) != u"Device" &&
                   readLine(base + QStringLiteral("present")) != u"0") {
            // A mouse or headset battery has scope "Device": it does not power this machine.
            batteries.append(base);
        }
    }
    QList<PowerSourceReading> sources;
    for (const QString& base : batteries) {
        bool ok = false;
        const qint64 capacity = readLine(base + QStringLiteral("capacity")).toLongLong(&ok);
        const QString status = readLine(base + QStringLiteral("status"));
        const bool external = lineOnline || status == u"Charging" || status == u"Full";
        PowerSourceReading reading{ok ? std::optional<qint64>(capacity) : std::nullopt, 100,
                                   external ? PowerSourceReading::acPower()
                                            : PowerSourceReading::batteryPower()};
        sources.append(reading);
    }
    return sources;
}
