// Cost of one device refresh on the real services of this session.
//
// Builds the Linux power, audio and camera services and the device store, lets the audio service
// connect, then runs refreshes back to back and reports per refresh the main thread's CPU time
// (asking, then applying the answer) and the whole process's CPU time (with the reading on the
// "Brenlow.devices" queue). Run it where the services are, for example inside a session with
// PulseAudio and UPower:
//   build/bench/device_bench [refreshes]

#include "common/StatusMessage.h"
#include "devices/DeviceStatus.h"
#include "focus/ActivityLog.h"
#include "platform/linux/LinuxAudioDevices.h"
#include "platform/linux/LinuxCameraActivity.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QUuid>

#include <cstdio>
#include <ctime>

namespace {
double cpuMs(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) * 1000.0 + double(now.tv_nsec) / 1.0e6;
}

void waitFor(DeviceStatus& devices, quint64 refreshes)
{
    QEventLoop loop;
    QObject::connect(&devices, &DeviceStatus::refreshed, &loop, [&] {
        if (devices.refreshes() >= refreshes)
            loop.quit();
    });
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    if (devices.refreshes() < refreshes)
        loop.exec();
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;

    const QString domain =
        QStringLiteral("Brenlow.Bench.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    int status = 0;
    {
        Defaults defaults(domain);
        MemoryPlatform memory;
        ActivityLog activity(defaults, memory.clock);
        StatusMessage message(memory.scheduler);
        LinuxPowerSources power;
        LinuxAudioDevices audio;
        LinuxCameraActivity cameras;
        DeviceStatus devices(power, audio, cameras, activity, message);

        // Let the services answer once before measuring.
        QEventLoop settle;
        QTimer::singleShot(1000, &settle, &QEventLoop::quit);
        settle.exec();
        devices.refreshHardware();
        waitFor(devices, 1);
        std::printf(
            "services: audio server %s, UPower %s; battery %s, microphone %s\n",
            audio.connected() ? "connected" : "absent", power.upowerAnswered() ? "answered" : "absent",
            devices.hasBattery() ? qPrintable(QString::number(devices.battery()) + QStringLiteral(" %"))
                                 : "none",
            devices.micAvailable() ? "present" : "none");

        const double mainStart = cpuMs(CLOCK_THREAD_CPUTIME_ID);
        const double processStart = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
        const quint64 first = devices.refreshes();
        for (int i = 1; i <= rounds; ++i) {
            devices.refreshHardware();
            waitFor(devices, first + quint64(i));
        }
        const double mainMs = (cpuMs(CLOCK_THREAD_CPUTIME_ID) - mainStart) / rounds;
        const double processMs = (cpuMs(CLOCK_PROCESS_CPUTIME_ID) - processStart) / rounds;
        if (devices.refreshes() != first + quint64(rounds)) {
            std::fprintf(stderr, "only %llu of %d refreshes answered\n",
                         (unsigned long long)(devices.refreshes() - first), rounds);
            status = 1;
        }
        std::printf("device refresh x%d: main thread %.3f ms CPU each, whole process %.3f ms CPU each\n",
                    rounds, mainMs, processMs);

        // Where a camera exists the refresh looks through every process's open files.
        const double scanStart = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
        const int scans = 20;
        for (int i = 0; i < scans; ++i)
            LinuxCameraActivity::userOfCamera(QStringLiteral("/proc"), LinuxCameraActivity::currentPid());
        std::printf("camera scan of /proc (only with a /dev/video* node): %.3f ms CPU each\n",
                    (cpuMs(CLOCK_PROCESS_CPUTIME_ID) - scanStart) / scans);

        // The camera question as a refresh asks it, with a video node present: a plain file in a
        // folder of our own stands in for /dev (no camera needed), once left alone and once
        // opened and closed before each question.
        QTemporaryDir dev;
        QFile node(dev.filePath(QStringLiteral("video0")));
        if (dev.isValid() && node.open(QIODevice::WriteOnly)) {
            node.close();
            LinuxCameraActivity watched(QStringLiteral("/proc"), dev.path(),
                                        LinuxCameraActivity::currentPid());
            for (const bool touch : {false, true}) {
                watched.cameraInUse();
                const double askStart = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
                double touchMs = 0;
                for (int i = 0; i < scans; ++i) {
                    if (touch) {
                        const double touchStart = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
                        node.open(QIODevice::ReadOnly);
                        node.close();
                        touchMs += cpuMs(CLOCK_PROCESS_CPUTIME_ID) - touchStart;
                    }
                    watched.cameraInUse();
                }
                std::printf("camera question with a video node, %s: %.3f ms CPU each\n",
                            touch ? "node opened and closed before each" : "node left alone",
                            (cpuMs(CLOCK_PROCESS_CPUTIME_ID) - askStart - touchMs) / scans);
            }
        }
    }
    Defaults(domain).removeDomain();
    return status;
}
