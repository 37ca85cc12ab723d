#pragma once

#include "common/SerialQueue.h"
#include "platform/Permissions.h"

#include <QDateTime>
#include <QObject>

#include <functional>
#include <optional>

class Clock;

// Current permission states, read without ever prompting. Trust and screen capture are read at
// once; the players' automation states and a fresh trust answer come from a check on the
// "Brenlow.permissions" queue, one check at a time.
class PermissionStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool accessibility READ accessibility NOTIFY accessibilityChanged)
    Q_PROPERTY(bool screenCapture READ screenCapture NOTIFY screenCaptureChanged)
    Q_PROPERTY(AutomationAccess spotify READ spotify NOTIFY automationChanged)
    Q_PROPERTY(AutomationAccess music READ music NOTIFY automationChanged)
    Q_PROPERTY(bool checking READ checking NOTIFY checkingChanged)
public:
    static constexpr const char* spotifyId = "com.spotify.client";
    static constexpr const char* musicId = "com.apple.Music";

    PermissionStore(Permissions& permissions, Clock& clock, QObject* parent = nullptr);

    bool accessibility() const { return m_accessibility; }
    bool screenCapture() const { return m_screenCapture; }
    AutomationAccess spotify() const { return m_spotify; }
    AutomationAccess music() const { return m_music; }
    bool checking() const { return m_checking; }
    std::optional<QDateTime> checkedAt() const { return m_checkedAt; }

    // Re-reads every state; accessibilityChanged() fires only when trust really changed. A refresh
    // during a check does not start a second one.
    void refresh();
    // Asks for trust with the system's own prompt, then for the answer; `answered` gets it while
    // `context` lives. Refreshes as well.
    void requestAccessibility(QObject* context, std::function<void(bool)> answered);
    // Asks for screen-capture access (may show the system's dialog); answers the new state.
    bool requestScreenCapture();

Q_SIGNALS:
    void accessibilityChanged();
    void screenCaptureChanged();
    void automationChanged();
    void checkingChanged();

private:
    struct Check
    {
        quint64 trustRequest;
        bool accessibility;
        AutomationAccess spotify;
        AutomationAccess music;
    };
    void setAccessibility(bool trusted);
    void setScreenCapture(bool allowed);
    void finishCheck(const Check& check);

    Permissions& m_permissions;
    Clock& m_clock;
    bool m_accessibility;
    bool m_screenCapture;
    AutomationAccess m_spotify = AutomationAccess::notRunning;
    AutomationAccess m_music = AutomationAccess::notRunning;
    bool m_checking = false;
    std::optional<QDateTime> m_checkedAt;
    // Counts prompts: a trust answer read before the latest prompt is out of date.
    quint64 m_trustRequests = 0;
    SerialQueue m_queue{QStringLiteral("Brenlow.permissions")};
};
