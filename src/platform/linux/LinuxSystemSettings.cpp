#include "platform/linux/LinuxSystemSettings.h"

#include "common/Log.h"

#include <QProcess>
#include <QStandardPaths>

#include <functional>

namespace {
struct Panels
{
    QString program;
    // The page per anchor: accessibility, screen capture, automation, login items.
    QString accessibility;
    QString screenCapture;
    QString automation;
    QString loginItems;
};

QString page(const Panels& panels, const QString& anchor)
{
    if (anchor == u"Privacy_Accessibility")
        return panels.accessibility;
    if (anchor == u"Privacy_ScreenCapture")
        return panels.screenCapture;
    if (anchor == u"Privacy_Automation")
        return panels.automation;
    if (anchor == SystemSettings::loginItemsAnchor())
        return panels.loginItems;
    return {};
}
} // namespace

QStringList LinuxSystemSettings::command(const QString& anchor, const QString& currentDesktop,
                                         const std::function<bool(const QString&)>& installed)
{
    // GNOME has no page for screen capture, players or autostart; KDE none for the first two.
    const Panels gnome{
        QStringLiteral("gnome-control-center"), QStringLiteral("universal-access"), {}, {}, {}};
    const Panels kde6{QStringLiteral("systemsettings"),
                      QStringLiteral("kcm_access"),
                      {},
                      {},
                      QStringLiteral("kcm_autostart")};
    const Panels kde5{QStringLiteral("systemsettings5"),
                      QStringLiteral("kcm_access"),
                      {},
                      {},
                      QStringLiteral("kcm_autostart")};
    QList<Panels> order{gnome, kde6, kde5};
    if (currentDesktop.contains(QLatin1String("KDE")))
        order = {kde6, kde5, gnome};
    for (const Panels& panels : order) {
        const QString name = page(panels, anchor);
        if (!name.isEmpty() && installed(panels.program))
            return {panels.program, name};
    }
    return {};
}

bool LinuxSystemSettings::open(const QString& anchor)
{
    const QStringList found =
        command(anchor, qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
                [](const QString& program) { return !QStandardPaths::findExecutable(program).isEmpty(); });
    if (found.isEmpty()) {
        qCInfo(lcPlatform) << "no settings page on this desktop for" << anchor;
        return false;
    }
    return QProcess::startDetached(found.first(), found.mid(1));
}
