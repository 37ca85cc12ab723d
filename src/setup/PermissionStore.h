#pragma once

#include <QDateTime>
#include <QObject>

#include <optional>

class Clock;
class Permissions;

// Current permission states, read without ever prompting.
class PermissionStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool accessibility READ accessibility NOTIFY accessibilityChanged)
    Q_PROPERTY(bool screenCapture READ screenCapture NOTIFY screenCaptureChanged)
public:
    PermissionStore(Permissions& permissions, Clock& clock, QObject* parent = nullptr);

    bool accessibility() const { return m_accessibility; }
    bool screenCapture() const { return m_screenCapture; }
    std::optional<QDateTime> checkedAt() const { return m_checkedAt; }

    // Re-reads every state; accessibilityChanged() fires only when trust really changed.
    void refresh();

Q_SIGNALS:
    void accessibilityChanged();
    void screenCaptureChanged();

private:
    Permissions& m_permissions;
    Clock& m_clock;
    bool m_accessibility;
    bool m_screenCapture;
    std::optional<QDateTime> m_checkedAt;
};
