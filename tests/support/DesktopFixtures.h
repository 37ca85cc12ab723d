#pragma once

// Real desktop services for the menu tests and the commands bench, started privately: a session
// bus of our own with the accessibility bus on it, and a fixture application with a menu bar and
// a tray icon that reports on stdout what was triggered.

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QSocketNotifier>
#include <QStyle>
#include <QSystemTrayIcon>
#include <QTextEdit>
#include <QThread>

#include <cstdio>
#include <cstring>
#include <memory>
#include <unistd.h>

// A session bus and an accessibility bus that live as long as this object. Construct before the
// QApplication: the environment it sets is read when the first connection is made.
class PrivateDesktopSession
{
public:
    PrivateDesktopSession()
    {
        m_bus.setProgram(QStringLiteral("dbus-daemon"));
        m_bus.setArguments(
            {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        m_bus.start();
        if (!m_bus.waitForStarted(5000) || !m_bus.waitForReadyRead(5000))
            return;
        const QByteArray address = m_bus.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        m_launcher.setProgram(QStringLiteral("/usr/libexec/at-spi-bus-launcher"));
        m_launcher.setArguments({QStringLiteral("--launch-immediately")});
        m_launcher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_launcher.start();
        m_ready = m_launcher.waitForStarted(5000);
        // Gives the launcher time to take its name; the tests wait for the applications anyway.
        QThread::msleep(300);
    }
    ~PrivateDesktopSession()
    {
        for (QProcess* process : {&m_launcher, &m_bus}) {
            process->terminate();
            if (!process->waitForFinished(3000))
                process->kill();
            process->waitForFinished();
        }
    }
    bool ready() const { return m_ready; }

private:
    QProcess m_bus;
    QProcess m_launcher;
    bool m_ready = false;
};

// The fixture application: `--menu-app <extra items>`. Its menus: File (New Ctrl+N, Save As…
// Ctrl+Shift+S, a submenu, a disabled Print Ctrl+P), Edit (Copy Ctrl+C) and Tools with the extra
// items (Alt+Shift+digit). With `--tray` it shows a tray icon whose tooltip follows the lines
// "tip <text>" read on stdin; "drop <text>" deletes the menu items of that text; "quit" ends it.
// Every triggered action prints "TRIGGERED <text>".
inline int runMenuFixture(int argc, char** argv)
{
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    QApplication app(argc, argv);
    const int extra = argc > 2 ? std::atoi(argv[2]) : 0;
    const bool tray = argc > 3 && std::strcmp(argv[3], "--tray") == 0;
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("MenuFixture"));
    auto add = [](QMenu* menu, const QString& text, const QKeySequence& keys = {}) {
        QAction* action = menu->addAction(text);
        action->setShortcut(keys);
        QObject::connect(action, &QAction::triggered, menu, [text] {
            std::printf("TRIGGERED %s\n", qPrintable(text));
            std::fflush(stdout);
        });
        return action;
    };
    QMenu* file = window.menuBar()->addMenu(QStringLiteral("&File"));
    add(file, QStringLiteral("&New"), QKeySequence(QStringLiteral("Ctrl+N")));
    add(file, QStringLiteral("Save &As..."), QKeySequence(QStringLiteral("Ctrl+Shift+S")));
    QMenu* recent = file->addMenu(QStringLiteral("Open &Recent"));
    add(recent, QStringLiteral("Clear List"), QKeySequence(QStringLiteral("Ctrl+Alt+K")));
    add(file, QStringLiteral("&Print"), QKeySequence(QStringLiteral("Ctrl+P")))->setEnabled(false);
    QMenu* edit = window.menuBar()->addMenu(QStringLiteral("&Edit"));
    add(edit, QStringLiteral("&Copy"), QKeySequence(QStringLiteral("Ctrl+C")));
    add(edit, QStringLiteral("No Shortcut"));
    if (extra > 0) {
        QMenu* tools = window.menuBar()->addMenu(QStringLiteral("&Tools"));
        for (int i = 1; i <= extra; ++i)
            add(tools, QStringLiteral("Tool %1").arg(i),
                QKeySequence(QStringLiteral("Alt+Shift+%1").arg(i % 10)));
    }
    window.setCentralWidget(new QTextEdit);
    window.resize(640, 400);
    window.show();

    std::unique_ptr<QSystemTrayIcon> icon;
    QMenu trayMenu;
    if (tray) {
        icon = std::make_unique<QSystemTrayIcon>(app.style()->standardIcon(QStyle::SP_MessageBoxInformation));
        add(&trayMenu, QStringLiteral("Hello"));
        icon->setContextMenu(&trayMenu);
        icon->setToolTip(QStringLiteral("Fixture"));
        QObject::connect(icon.get(), &QSystemTrayIcon::activated, &app,
                         [](QSystemTrayIcon::ActivationReason reason) {
                             std::printf("ACTIVATED %d\n", int(reason));
                             std::fflush(stdout);
                         });
        icon->show();
    }
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QFile in;
    in.open(stdin, QIODevice::ReadOnly);
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&] {
        const QByteArray line = in.readLine().trimmed();
        if (line.isEmpty() || line == "quit") {
            app.quit();
        } else if (line.startsWith("tip ") && icon) {
            icon->setToolTip(QString::fromUtf8(line.mid(4)));
            std::printf("TIP %s\n", line.mid(4).constData());
            std::fflush(stdout);
        } else if (line.startsWith("drop ")) {
            const QString text = QString::fromUtf8(line.mid(5));
            for (QAction* action : window.findChildren<QAction*>()) {
                if (action->text() == text)
                    delete action;
            }
            std::printf("DROPPED %s\n", line.mid(5).constData());
            std::fflush(stdout);
        }
    });
    std::printf("READY\n");
    std::fflush(stdout);
    return app.exec();
}

// Starts the fixture application from the running program's own binary.
class MenuFixtureProcess
{
public:
    explicit MenuFixtureProcess(int extraItems = 0, bool tray = false)
    {
        QStringList arguments{QStringLiteral("--menu-app"), QString::number(extraItems)};
        if (tray)
            arguments.append(QStringLiteral("--tray"));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::SeparateChannels);
        m_process.start(QCoreApplication::applicationFilePath(), arguments);
        m_process.waitForStarted(5000);
        waitFor("READY", 10000);
    }
    ~MenuFixtureProcess()
    {
        m_process.write("quit\n");
        if (!m_process.waitForFinished(3000))
            m_process.kill();
        m_process.waitForFinished();
    }
    qint64 pid() const { return m_process.processId(); }
    void send(const QByteArray& line) { m_process.write(line + '\n'); }
    // Waits for a line of output that starts with `prefix`, while the event loop runs.
    bool waitFor(const QByteArray& prefix, int ms)
    {
        QDeadlineTimer deadline(ms);
        while (!deadline.hasExpired()) {
            while (m_process.canReadLine()) {
                const QByteArray line = m_process.readLine().trimmed();
                m_output.append(line);
                if (line.startsWith(prefix))
                    return true;
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            m_process.waitForReadyRead(20);
        }
        return false;
    }
    const QByteArrayList& output() const { return m_output; }

private:
    QProcess m_process;
    QByteArrayList m_output;
};
