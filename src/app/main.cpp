#include "app/AppDelegate.h"
#include "app/SelfTest.h"
#include "app/SingleInstance.h"
#include "app/TerminationSignals.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxPlatform.h"
#include "settings/Defaults.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace {

bool hasSwitch(int argc, char** argv, const char* name)
{
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], name) == 0)
            return true;
    }
    return false;
}

// One JSON line, keys sorted, nothing else created: no window, no model, no settings.
int runPermissionProbe(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QJsonObject report;
    report[u"accessibility"] = LinuxPermissions::queryAccessibilityNow();
    report[u"screenCapture"] = LinuxPermissions::x11DisplayAvailable();
    const QByteArray line = QJsonDocument(report).toJson(QJsonDocument::Compact);
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    return 0;
}

int runApplication(int argc, char** argv)
{
    // Only X11 lets a client place a window at the exact top edge and grab a global key.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("Brenlow"));
    app.setApplicationVersion(QStringLiteral(BRENLOW_VERSION));
    app.setDesktopFileName(QStringLiteral("brenlow"));
    app.setQuitOnLastWindowClosed(false);

    TerminationSignals signals;
    SingleInstance instance;
    const SingleInstance::Claim claim = instance.claim();
    if (!instance.report().isEmpty()) {
        const QByteArray line = instance.report().toUtf8() + '\n';
        std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    }
    switch (claim) {
    case SingleInstance::Claim::first:
        break;
    case SingleInstance::Claim::handedOver:
        return 0;
    case SingleInstance::Claim::noAnswer:
    case SingleInstance::Claim::refused:
        return 1;
    }

    LinuxPlatform linuxPlatform;
    Defaults defaults;
    AppDelegate delegate(defaults, linuxPlatform.platform());
    instance.onReopen = [&delegate] { delegate.reopen(); };
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &delegate, [&delegate] { delegate.terminate(); });
    delegate.launch();
    return app.exec();
}

} // namespace

int main(int argc, char** argv)
{
    if (hasSwitch(argc, argv, "--permission-probe"))
        return runPermissionProbe(argc, argv);
    if (hasSwitch(argc, argv, "--self-test")) {
        // The validations show nothing; they must run without a display too.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication app(argc, argv);
        return runSelfTest();
    }
    return runApplication(argc, argv);
}
