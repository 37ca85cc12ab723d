#include "platform/linux/LinuxWorkspace.h"

#include "common/Log.h"

#include "platform/linux/X11Support.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <xcb/xcb.h>

RunningApp LinuxWorkspace::describeProcess(qint64 pid)
{
    RunningApp app;
    app.pid = pid;
    QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
    if (comm.open(QIODevice::ReadOnly))
        app.name = QString::fromUtf8(comm.readAll()).trimmed();
    else
        app.terminated = true;
    const QString executable = QFileInfo(QStringLiteral("/proc/%1/exe").arg(pid)).symLinkTarget();
    // The desktop-file id is the executable's name where the application follows convention.
    app.id = QFileInfo(executable).fileName() + QStringLiteral(".desktop");
    return app;
}

std::optional<RunningApp> LinuxWorkspace::frontmostApp() const
{
    const auto active = X11Support::cardinalProperty(X11Support::rootWindow(),
                                                     X11Support::atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    if (!active || *active == 0)
        return std::nullopt;
    const auto pid =
        X11Support::cardinalProperty(*active, X11Support::atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    if (!pid)
        return std::nullopt;
    return describeProcess(*pid);
}

qint64 LinuxWorkspace::currentPid() const
{
    return QCoreApplication::applicationPid();
}

bool LinuxWorkspace::open(const QString& path)
{
    if (!QFileInfo::exists(path))
        return false;
    // Desktop entries are applications: start them rather than opening them as text.
    if (path.endsWith(u".desktop")) {
        const QString gio = QStandardPaths::findExecutable(QStringLiteral("gio"));
        if (!gio.isEmpty())
            return QProcess::startDetached(gio, {QStringLiteral("launch"), path});
    }
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool LinuxWorkspace::reveal(const QString& path)
{
    const QUrl folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath());
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return QDesktopServices::openUrl(folder);
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    // Without a file manager on the bus the containing folder opens instead.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher, [folder](QDBusPendingCallWatcher* done) {
            if (done->isError()) {
                qCInfo(lcPlatform) << "no file manager answered ShowItems:" << done->error().name()
                                   << "- opening the folder";
                QDesktopServices::openUrl(folder);
            }
            done->deleteLater();
        });
    return true;
}

QString LinuxWorkspace::relaunchScript()
{
    // The single-instance lock is only free once this copy has gone, so the new one waits for it.
    return QStringLiteral("pid=$1; shift; i=0; "
                          "while kill -0 \"$pid\" 2>/dev/null && [ $i -lt 100 ]; do sleep 0.1; i=$((i+1)); done; "
                          "exec \"$@\"");
}

bool LinuxWorkspace::relaunch()
{
    QStringList arguments{QStringLiteral("-c"), relaunchScript(), QStringLiteral("Brenlow-restart"),
                          QString::number(QCoreApplication::applicationPid()),
                          QCoreApplication::applicationFilePath()};
    arguments += QCoreApplication::arguments().mid(1);
    const bool started = QProcess::startDetached(QStringLiteral("/bin/sh"), arguments);
    if (!started)
        qCWarning(lcPlatform) << "the restart shell did not start";
    return started;
}

void LinuxWorkspace::terminate()
{
    QCoreApplication::quit();
}
