#pragma once

// Permission checks; none of them prompts unless asked to.
class Permissions
{
public:
    virtual ~Permissions() = default;
    // Whether the accessibility interface trusts this process; `prompt` may show the system's dialog.
    virtual bool accessibilityTrusted(bool prompt) const = 0;
    // Whether screen capture is already allowed.
    virtual bool screenCaptureAllowed() const = 0;
    // Asks for screen-capture access (may show a dialog); answers the new state.
    virtual bool requestScreenCapture() = 0;
};
