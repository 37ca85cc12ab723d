#pragma once

#include "platform/Permissions.h"

#include <QObject>
#include <QStringList>

#include <atomic>

// Accessibility trust is whether the desktop's AT-SPI bus is switched on; screen capture is
// allowed on any X11 display; a player may be controlled over MPRIS whenever it is on the
// session bus, so automation is `allowed` or `notRunning`.
class LinuxPermissions final : public QObject, public Permissions
{
    Q_OBJECT
public:
    LinuxPermissions();
    // Answers the last known state and asks the bus again in the background.
    bool accessibilityTrusted(bool prompt) const override;
    bool accessibilityTrustedNow() const override;
    bool screenCaptureAllowed() const override;
    bool requestScreenCapture() override { return screenCaptureAllowed(); }
    AutomationAccess automationAccess(const QString& appId) const override;

    // One blocking query with a short time-out, for the permission probe.
    static bool queryAccessibilityNow();
    // Any X11 display (XWayland included) lets a client read the screen.
    static bool x11DisplayAvailable() { return !qEnvironmentVariableIsEmpty("DISPLAY"); }
    // Which of the session bus's names stands for the player: Spotify under its own name, Music
    // as the first other player that is not a web browser. Empty when none does.
    static QString playerBusName(const QString& appId, const QStringList& busNames);

private:
    void refreshAsync(bool enable) const;
    // Written by the main thread's replies and by the worker's blocking checks.
    mutable std::atomic<bool> m_trusted = false;
};
