#include "TestSupport.h"

#include "common/StatusMessage.h"
#include "devices/DeviceRules.h"
#include "devices/DeviceStatus.h"
#include "focus/ActivityLog.h"
#include "platform/linux/LinuxCameraActivity.h"
#include "platform/linux/LinuxPowerSources.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {
PowerSourceReading battery(qint64 current, qint64 max, bool external)
{
    return {current, max, external ? PowerSourceReading::acPower() : PowerSourceReading::batteryPower()};
}

HardwareReading power(qint64 percent, bool external)
{
    HardwareReading reading;
    reading.power = QList<PowerSourceReading>{battery(percent, 100, external)};
    return reading;
}

HardwareReading audio(const QList<AudioDeviceInfo>& devices)
{
    HardwareReading reading;
    reading.audioDevices = devices;
    return reading;
}

AudioDeviceInfo bluetooth(const QString& name)
{
    return {AudioDeviceInfo::bluetooth(), name};
}

void writeFile(const QString& path, const QByteArray& text)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}
} // namespace

// The device rules, the store that reads the services off the main thread, and the Linux readers
// that work on plain files (the kernel's power supplies, the processes' open files).
class DevicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void chargeIsAWholePercentOfAPlausiblePair()
    {
        QCOMPARE(DeviceRules::percent(battery(45, 50, false)), 90);
        QCOMPARE(DeviceRules::percent(battery(1, 3, false)), 33);
        QCOMPARE(DeviceRules::percent(battery(0, 100, false)), 0);
        QCOMPARE(DeviceRules::percent(battery(300, 100, false)), std::nullopt);
        QCOMPARE(DeviceRules::percent(battery(-5, 100, false)), std::nullopt);
        QCOMPARE(DeviceRules::percent(battery(5, 0, false)), std::nullopt);
        QCOMPARE(DeviceRules::percent(PowerSourceReading{std::nullopt, 100, {}}), std::nullopt);

        // A broken reading keeps the last good one and raises nothing.
        HardwareState state;
        DeviceRules::apply(state, power(64, true));
        QCOMPARE(DeviceRules::apply(state, power(300, false)), QList<DeviceNotice>{});
        QCOMPARE(state.battery, 64);
        QVERIFY(state.charging);
        HardwareReading unreadable;
        DeviceRules::apply(state, unreadable);
        QCOMPARE(state.battery, 64);
        QVERIFY(state.hasBattery);
    }

    void powerChangesAndTheLowBatteryWarning()
    {
        HardwareState state;
        // The first reading after start tells nothing.
        QCOMPARE(DeviceRules::apply(state, power(80, true)), QList<DeviceNotice>{});
        QVERIFY(state.hasBattery && state.charging);
        QCOMPARE(DeviceRules::apply(state, power(80, false)),
                 (QList<DeviceNotice>{{QStringLiteral("Akkubetrieb"), QStringLiteral("MacBook bei 80 %.")}}));
        QCOMPARE(DeviceRules::apply(state, power(80, true)),
                 (QList<DeviceNotice>{
                     {QStringLiteral("Ladegerät verbunden"), QStringLiteral("MacBook bei 80 %.")}}));

        DeviceRules::apply(state, power(22, false));
        QVERIFY(DeviceRules::apply(state, power(21, false)).isEmpty());
        QCOMPARE(DeviceRules::apply(state, power(20, false)),
                 (QList<DeviceNotice>{{QStringLiteral("Akku wird knapp"),
                                       QStringLiteral("Noch 20 % – bald ein Ladegerät anschließen.")}}));
        QVERIFY(DeviceRules::apply(state, power(19, false)).isEmpty());
        // 25 % does not re-arm the warning, 26 % does.
        DeviceRules::apply(state, power(25, false));
        QVERIFY(DeviceRules::apply(state, power(19, false)).isEmpty());
        DeviceRules::apply(state, power(26, false));
        QCOMPARE(DeviceRules::apply(state, power(19, false)).size(), 1);
        // Charging re-arms it as well.
        QCOMPARE(DeviceRules::apply(state, power(19, true)).size(), 1);
        QCOMPARE(DeviceRules::apply(state, power(18, false)).size(), 2);

        // A desktop: no battery, never a battery notice.
        HardwareState desktop;
        HardwareReading none;
        none.power = QList<PowerSourceReading>{};
        QVERIFY(DeviceRules::apply(desktop, none).isEmpty());
        QVERIFY(!desktop.hasBattery);
        QCOMPARE(desktop.battery, 0);
    }

    void bluetoothDevicesAreAnnouncedOnceWhenTheyArrive()
    {
        HardwareState state;
        const AudioDeviceInfo speakers{QStringLiteral("pci"), QStringLiteral("Lautsprecher")};
        // Present when the audio system first answered: no notice.
        QVERIFY(DeviceRules::apply(state, audio({speakers, bluetooth(QStringLiteral("Alter Kopfhörer"))}))
                    .isEmpty());
        QCOMPARE(state.devices, QStringList{QStringLiteral("Alter Kopfhörer")});

        // A headset listed as output and input is one notice, and listed twice.
        const QString headset(QStringLiteral("Headset ") + QString(10000, QLatin1Char('x')));
        const auto notices =
            DeviceRules::apply(state, audio({speakers, bluetooth(headset), bluetooth(headset),
                                             bluetooth(QStringLiteral("Alter Kopfhörer"))}));
        QCOMPARE(notices, (QList<DeviceNotice>{{QStringLiteral("Gerät verbunden"), headset}}));
        QCOMPARE(state.devices.size(), 3);
        QCOMPARE(state.devices.first(), headset);
        QVERIFY(DeviceRules::apply(state, audio({speakers, bluetooth(headset)})).isEmpty());

        // An audio system that does not answer, or lists nothing, changes nothing.
        DeviceRules::apply(state, HardwareReading{});
        DeviceRules::apply(state, audio({}));
        QCOMPARE(state.devices, QStringList{headset});
        // Disconnecting records nothing; reconnecting is news again.
        QVERIFY(DeviceRules::apply(state, audio({speakers})).isEmpty());
        QVERIFY(state.devices.isEmpty());
        QCOMPARE(DeviceRules::apply(state, audio({speakers, bluetooth(headset)})).size(), 1);
    }

    void theStoreReadsOffTheMainThreadAndMutesForReal()
    {
        MemoryPlatform memory;
        ScratchDomain domain;
        ActivityLog activity(*domain.defaults, memory.clock);
        StatusMessage message(memory.scheduler);
        DeviceStatus devices(memory.powerSources, memory.audioDevices, memory.cameras, activity, message);
        devices.watchServices();
        memory.powerSources.setBattery(80, true);
        memory.audioDevices.setInput(AudioInputState{true, false, false});
        memory.audioDevices.setDevices(QList<AudioDeviceInfo>{bluetooth(QStringLiteral("Kopfhörer"))});
        memory.cameras.inUse = true;
        // The change signals alone bring the first reading.
        QTRY_COMPARE(devices.battery(), 80);
        QTRY_VERIFY(devices.microphone());
        QVERIFY(devices.charging() && devices.camera() && !devices.micAvailable());
        QCOMPARE(devices.devices(), QStringList{QStringLiteral("Kopfhörer")});
        const qsizetype noticesAtStart = activity.notices().size();

        // Without a settable mute the switch says so and nothing changes.
        devices.toggleMute();
        QTRY_COMPARE(message.text(),
                     QStringLiteral("Dieses Mikrofon unterstützt keine Hardware-Stummschaltung."));
        QVERIFY(!devices.micMuted());

        memory.audioDevices.setInput(AudioInputState{true, false, true});
        QTRY_VERIFY(devices.micAvailable());
        QSignalSpy muted(&devices, &DeviceStatus::micMutedChanged);
        devices.toggleMute();
        QTRY_VERIFY(devices.micMuted());
        QCOMPARE(memory.audioDevices.defaultInput()->muted, true);
        devices.toggleMute();
        QTRY_VERIFY(!devices.micMuted());
        QCOMPARE(muted.count(), 2);

        // The unplugged charger lands in the activity list.
        memory.powerSources.setBattery(80, false);
        QTRY_COMPARE(activity.notices().size(), noticesAtStart + 1);
        QCOMPARE(activity.notices().first().title, QStringLiteral("Akkubetrieb"));

        // The audio server goes away: the microphone reads as idle, the devices stay listed.
        memory.audioDevices.setInput(std::nullopt);
        memory.audioDevices.setDevices(std::nullopt);
        QTRY_VERIFY(!devices.microphone());
        QVERIFY(!devices.micAvailable());
        QCOMPARE(devices.devices(), QStringList{QStringLiteral("Kopfhörer")});
    }

    void theKernelsPowerSuppliesStandInForUPower()
    {
        QTemporaryDir root;
        QCOMPARE(LinuxPowerSources::readSysfs(root.filePath(QStringLiteral("missing"))), std::nullopt);
        QCOMPARE(LinuxPowerSources::readSysfs(root.path())->size(), 0);

        writeFile(root.filePath(QStringLiteral("AC/type")), "Mains\n");
        writeFile(root.filePath(QStringLiteral("AC/online")), "0\n");
        writeFile(root.filePath(QStringLiteral("BAT0/type")), "Battery\n");
        writeFile(root.filePath(QStringLiteral("BAT0/capacity")), "57\n");
        writeFile(root.filePath(QStringLiteral("BAT0/status")), "Discharging\n");
        // A wireless mouse's battery does not power the machine.
        writeFile(root.filePath(QStringLiteral("hidpp_battery_0/type")), "Battery\n");
        writeFile(root.filePath(QStringLiteral("hidpp_battery_0/scope")), "Device\n");
        writeFile(root.filePath(QStringLiteral("hidpp_battery_0/capacity")), "5\n");
        auto sources = LinuxPowerSources::readSysfs(root.path());
        QCOMPARE(sources->size(), 1);
        QCOMPARE(DeviceRules::percent(sources->first()), 57);
        QCOMPARE(sources->first().powerState, PowerSourceReading::batteryPower());

        writeFile(root.filePath(QStringLiteral("AC/online")), "1\n");
        writeFile(root.filePath(QStringLiteral("BAT0/capacity")), "-3\n");
        sources = LinuxPowerSources::readSysfs(root.path());
        QCOMPARE(sources->first().powerState, PowerSourceReading::acPower());
        QCOMPARE(DeviceRules::percent(sources->first()), std::nullopt);

        // UPower's display device: a present battery only, on line power as the daemon says.
        const QVariantMap device{{QStringLiteral("Type"), 2u},
                                 {QStringLiteral("IsPresent"), true},
                                 {QStringLiteral("Percentage"), 21.999999},
                                 {QStringLiteral("State"), 2u}};
        QCOMPARE(LinuxPowerSources::fromUPower(device, false)->powerState, PowerSourceReading::acPower());
        QCOMPARE(LinuxPowerSources::fromUPower(device, std::nullopt)->powerState,
                 PowerSourceReading::batteryPower());
        QCOMPARE(DeviceRules::percent(*LinuxPowerSources::fromUPower(device, true)), 22);
        QVariantMap missing = device;
        missing[QStringLiteral("IsPresent")] = false;
        QCOMPARE(LinuxPowerSources::fromUPower(missing, true), std::nullopt);
    }

    void aCameraCountsWhenAnotherProcessHoldsIt()
    {
        QTemporaryDir root;
        const QString proc = root.filePath(QStringLiteral("proc"));
        const QString dev = root.filePath(QStringLiteral("dev"));
        QDir().mkpath(dev);
        auto process = [&](qint64 pid, const QByteArray& name, const QString& file) {
            const QString folder = proc + QStringLiteral("/%1").arg(pid);
            writeFile(folder + QStringLiteral("/comm"), name + '\n');
            QDir().mkpath(folder + QStringLiteral("/fd"));
            QFile::link(file, folder + QStringLiteral("/fd/7"));
        };
        process(100, "bash", QStringLiteral("/dev/pts/1"));
        process(200, "pipewire", QStringLiteral("/dev/video0"));
        process(201, "wireplumber", QStringLiteral("/dev/video0"));
        process(300, "brenlow", QStringLiteral("/dev/video0"));
        writeFile(dev + QStringLiteral("/video0"), {});

        // The media servers and this program's own mirror are no other application.
        QCOMPARE(LinuxCameraActivity::userOfCamera(proc, 300), 0);
        QVERIFY(!LinuxCameraActivity(proc, dev, 300).cameraInUse());
        process(400, "zoom", QStringLiteral("/dev/video0"));
        QCOMPARE(LinuxCameraActivity::userOfCamera(proc, 300), 400);
        QVERIFY(LinuxCameraActivity(proc, dev, 300).cameraInUse());
        // Without a video node nobody can hold one: the processes are not even looked at.
        QFile::remove(dev + QStringLiteral("/video0"));
        QVERIFY(!LinuxCameraActivity(proc, dev, 300).cameraInUse());
    }

    void theCameraAnswerIsKeptUntilANodeIsOpenedClosedAddedOrRemoved()
    {
        // Plain files stand in for the video nodes: inotify reports their opens the same way.
        QTemporaryDir root;
        const QString proc = root.filePath(QStringLiteral("proc"));
        const QString dev = root.filePath(QStringLiteral("dev"));
        QDir().mkpath(dev);
        const QString zoom = proc + QStringLiteral("/400");
        auto zoomHolds = [&](bool holds) {
            if (!holds) {
                QDir(zoom).removeRecursively();
                return;
            }
            writeFile(zoom + QStringLiteral("/comm"), "zoom\n");
            QDir().mkpath(zoom + QStringLiteral("/fd"));
            QFile::link(QStringLiteral("/dev/video0"), zoom + QStringLiteral("/fd/7"));
        };
        auto touch = [&](const QString& name) {
            QFile node(dev + QLatin1Char('/') + name);
            QVERIFY(node.open(QIODevice::ReadOnly));
        };
        writeFile(dev + QStringLiteral("/video0"), {});
        zoomHolds(true);
        LinuxCameraActivity cameras(proc, dev, 300);
        QVERIFY(cameras.cameraInUse());

        // Nothing touched the node: the processes are not looked at again.
        zoomHolds(false);
        QVERIFY(cameras.cameraInUse());
        touch(QStringLiteral("video0"));
        QVERIFY(!cameras.cameraInUse());

        // A node that appears is looked for, and watched from then on.
        zoomHolds(true);
        writeFile(dev + QStringLiteral("/video1"), {});
        QVERIFY(cameras.cameraInUse());
        zoomHolds(false);
        touch(QStringLiteral("video1"));
        QVERIFY(!cameras.cameraInUse());

        // With the last node gone nobody can hold a camera, whatever the processes say.
        zoomHolds(true);
        touch(QStringLiteral("video1"));
        QVERIFY(cameras.cameraInUse());
        QFile::remove(dev + QStringLiteral("/video0"));
        QFile::remove(dev + QStringLiteral("/video1"));
        QVERIFY(!cameras.cameraInUse());
    }
};

QTEST_GUILESS_MAIN(DevicesTest)
#include "tst_devices.moc"
