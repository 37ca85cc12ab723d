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

#include <cstdlib>

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

namespace {

// The process of a window or of its nearest ancestor that names one.
std::optional<quint32> windowPid(quint32 window)
{
    xcb_connection_t* connection = X11Support::connection();
    const quint32 pidAtom = X11Support::atom("_NET_WM_PID");
    for (int level = 0; connection && window != 0 && level < 8; ++level) {
        if (const auto pid = X11Support::cardinalProperty(window, pidAtom, XCB_ATOM_CARDINAL))
            return pid;
        xcb_query_tree_reply_t* tree =
            xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr);
        if (!tree)
            return std::nullopt;
        window = tree->parent == tree->root ? 0 : tree->parent;
        free(tree);
    }
    return std::nullopt;
}

// The top-level windows: the window manager's client list, or the root's children without one.
QList<quint32> topLevelWindows()
{
    QList<quint32> windows;
    xcb_connection_t* connection = X11Support::connection();
    if (!connection)
        return windows;
    const quint32 root = X11Support::rootWindow();
    xcb_get_property_reply_t* list = xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, root, X11Support::atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 0, 4096),
        nullptr);
    if (list && list->format == 32 && xcb_get_property_value_length(list) > 0) {
        const auto* ids = static_cast<const quint32*>(xcb_get_property_value(list));
        windows = QList<quint32>(ids, ids + xcb_get_property_value_length(list) / 4);
    }
    free(list);
    if (!windows.isEmpty())
        return windows;
    xcb_query_tree_reply_t* tree =
        xcb_query_tree_reply(connection, xcb_query_tree(connection, root), nullptr);
    if (tree) {
        const xcb_window_t* children = xcb_query_tree_children(tree);
        windows = QList<quint32>(children, children + xcb_query_tree_children_length(tree));
        free(tree);
    }
    return windows;
}

bool viewable(xcb_connection_t* connection, quint32 window)
{
    xcb_get_window_attributes_reply_t* attributes =
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window), nullptr);
    const bool shown = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    free(attributes);
    return shown;
}

} // namespace

std::optional<RunningApp> LinuxWorkspace::frontmostApp() const
{
    const auto active = X11Support::cardinalProperty(X11Support::rootWindow(),
                                                     X11Support::atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    std::optional<quint32> pid;
    if (active && *active != 0) {
        pid = X11Support::cardinalProperty(*active, X11Support::atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    } else if (xcb_connection_t* connection = X11Support::connection(); connection && !active) {
        // Without a window manager nobody keeps the active window: the keyboard focus tells, for
        // another application's window. Our own windows count as unknown there, as before: the
        // panel takes the focus for typing, and it is not an application whose menus are read.
        xcb_get_input_focus_reply_t* focus =
            xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr);
        if (focus && focus->focus > 1)
            pid = windowPid(focus->focus);
        free(focus);
        if (pid && qint64(*pid) == QCoreApplication::applicationPid())
            pid.reset();
    }
    if (!pid)
        return std::nullopt;
    return describeProcess(*pid);
}

std::optional<RunningApp> LinuxWorkspace::runningApp(qint64 pid) const
{
    if (pid <= 0)
        return std::nullopt;
    RunningApp app = describeProcess(pid);
    // A process that has exited but was not reaped yet is gone as well.
    QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
    if (status.open(QIODevice::ReadOnly)) {
        const QByteArray stat = status.readAll();
        const qsizetype close = stat.lastIndexOf(')');
        if (close > 0 && close + 2 < stat.size() && (stat.at(close + 2) == 'Z' || stat.at(close + 2) == 'X'))
            app.terminated = true;
    }
    return app;
}

bool LinuxWorkspace::activate(qint64 pid)
{
    xcb_connection_t* connection = X11Support::connection();
    if (!connection)
        return false;
    const quint32 pidAtom = X11Support::atom("_NET_WM_PID");
    quint32 target = 0;
    for (quint32 window : topLevelWindows()) {
        const auto owner = X11Support::cardinalProperty(window, pidAtom, XCB_ATOM_CARDINAL);
        if (owner && qint64(*owner) == pid && viewable(connection, window)) {
            target = window;
            break;
        }
    }
    if (target == 0)
        return false;
    const quint32 root = X11Support::rootWindow();
    const quint32 activeAtom = X11Support::atom("_NET_ACTIVE_WINDOW");
    // The window manager's way (source 2: a pager acting for the user) ...
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = target;
    message.type = activeAtom;
    message.data.data32[0] = 2;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(connection, 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    // ... and, where no window manager answers it, raising and focusing the window directly.
    if (!X11Support::cardinalProperty(root, activeAtom, XCB_ATOM_WINDOW)) {
        const quint32 above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection, target, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, target, XCB_CURRENT_TIME);
    }
    xcb_flush(connection);
    return true;
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
