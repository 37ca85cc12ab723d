#pragma once

#include <QString>

// Whether this process may control a player application.
enum class AutomationAccess {
    allowed,
    needsConsent, // the system would have to ask the user first
    denied,
    notRunning, // nothing to ask while the player is not running
    unavailable,
};

// Permission checks; none of them prompts unless asked to.
class Permissions
{
public:
    virtual ~Permissions() = default;
    // Whether the accessibility interface trusts this process; `prompt` may show the system's dialog.
    // Quick: it may answer what was last known.
    virtual bool accessibilityTrusted(bool prompt) const = 0;
    // The same, asked of the system itself. Blocking: for a worker thread.
    virtual bool accessibilityTrustedNow() const = 0;
    // Whether screen capture is already allowed.
    virtual bool screenCaptureAllowed() const = 0;
    // Asks for screen-capture access (may show a dialog); answers the new state.
    virtual bool requestScreenCapture() = 0;
    // Whether the player with this application id ("com.spotify.client", "com.apple.Music") may be
    // controlled, without asking the user. Blocking: for a worker thread.
    virtual AutomationAccess automationAccess(const QString& appId) const = 0;
};
