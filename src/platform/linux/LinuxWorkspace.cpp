#include "platform/linux/LinuxWorkspace.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <xcb/xcb.h>

#include <memory>

namespace {

xcb_atom_t internAtom(xcb_connection_t* connection, const char* name)
{
    const auto cookie = xcb_intern_atom(connection, 0, uint16_t(strlen(name)), name);
    std::unique_ptr<xcb_intern_atom_reply_t, decltype(&free)> reply(xcb_intern_atom_reply(connection, cookie, nullptr), &free);
    return reply ? reply->atom : XCB_ATOM_NONE;
}

std::optional<uint32_t> cardinalProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                                         xcb_atom_t type)
{
    const auto cookie = xcb_get_property(connection, 0, window, property, type, 0, 1);
    std::unique_ptr<xcb_get_property_reply_t, decltype(&free)> reply(xcb_get_property_reply(connection, cookie, nullptr),
                                                                     &free);
    if (!reply || xcb_get_property_value_length(reply.get()) < 4)
        return std::nullopt;
    return *static_cast<uint32_t*>(xcb_get_property_value(reply.get()));
}

} // namespace

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
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return std::nullopt;
    xcb_connection_t* connection = x11->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto active = cardinalProperty(connection, root, internAtom(connection, "_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    if (!active || *active == 0)
        return std::nullopt;
    const auto pid = cardinalProperty(connection, *active, internAtom(connection, "_NET_WM_PID"), XCB_ATOM_CARDINAL);
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
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                       QStringLiteral("/org/freedesktop/FileManager1"),
                                                       QStringLiteral("org.freedesktop.FileManager1"),
                                                       QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    if (QDBusConnection::sessionBus().isConnected() && QDBusConnection::sessionBus().send(call))
        return true;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}
