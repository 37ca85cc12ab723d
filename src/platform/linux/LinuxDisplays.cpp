#include "platform/linux/LinuxDisplays.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace {

QList<QScreen*> orderedScreens()
{
    QList<QScreen*> screens = QGuiApplication::screens();
    QScreen* primary = QGuiApplication::primaryScreen();
    if (primary && screens.removeOne(primary))
        screens.prepend(primary);
    return screens;
}

// The portal wraps the value in one or two variants depending on its version.
QVariant unwrap(QVariant value)
{
    while (value.canConvert<QDBusVariant>() && value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

LinuxDisplays::LinuxDisplays(QObject* parent) : Displays(parent)
{
    for (QScreen* screen : QGuiApplication::screens())
        watchScreen(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watchScreen(screen);
        Q_EMIT configurationChanged();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &Displays::configurationChanged);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &Displays::configurationChanged);

    readMotionSetting(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"));
    readMotionSetting(QStringLiteral("org.kde.kdeglobals.KDE"), QStringLiteral("AnimationDurationFactor"));
}

void LinuxDisplays::watchScreen(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &Displays::configurationChanged);
}

QList<DisplayInfo> LinuxDisplays::displays() const
{
    QList<DisplayInfo> list;
    for (QScreen* screen : orderedScreens())
        list.append(DisplayInfo{screen->name(), QRectF(screen->geometry()), 0, std::nullopt, std::nullopt});
    return list;
}

std::optional<int> LinuxDisplays::focusedDisplay() const
{
    // The screen of our focused window if we have one; else the main screen.
    const QList<QScreen*> screens = orderedScreens();
    if (QWindow* focus = QGuiApplication::focusWindow()) {
        const int index = int(screens.indexOf(focus->screen()));
        if (index >= 0)
            return index;
    }
    if (screens.isEmpty())
        return std::nullopt;
    return 0;
}

void LinuxDisplays::readMotionSetting(const QString& group, const QString& key)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    call << group << key;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, 2000), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, key](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const QDBusPendingReply<QVariant> reply = *finished;
                if (reply.isError())
                    return;
                const QVariant value = unwrap(reply.value());
                if (!value.isValid())
                    return;
                bool number = false;
                const bool reduced = key == QLatin1String("enable-animations")
                                         ? !value.toBool()
                                         : (value.toDouble(&number) == 0.0 && number);
                if (reduced)
                    m_reduceMotion = true;
            });
}
