#pragma once

#include "platform/Permissions.h"

#include <QObject>

// Accessibility trust is whether the desktop's AT-SPI bus is switched on; screen capture is
// allowed on any X11 display.
class LinuxPermissions final : public QObject, public Permissions
{
    Q_OBJECT
public:
    LinuxPermissions();
    // Answers the last known state and asks the bus again in the background.
    bool accessibilityTrusted(bool prompt) const override;
    bool screenCaptureAllowed() const override;
    bool requestScreenCapture() override { return screenCaptureAllowed(); }

    // One blocking query with a short time-out, for the permission probe.
    static bool queryAccessibilityNow();
    // Any X11 display (XWayland included) lets a client read the screen.
    static bool x11DisplayAvailable() { return !qEnvironmentVariableIsEmpty("DISPLAY"); }

private:
    void refreshAsync(bool enable) const;
    mutable bool m_trusted = false;
};
