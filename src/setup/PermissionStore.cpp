#include "setup/PermissionStore.h"

#include "common/Clock.h"

PermissionStore::PermissionStore(Permissions& permissions, Clock& clock, QObject* parent)
    : QObject(parent), m_permissions(permissions), m_clock(clock),
      m_accessibility(permissions.accessibilityTrusted(false)),
      m_screenCapture(permissions.screenCaptureAllowed())
{}

void PermissionStore::refresh()
{
    setAccessibility(m_permissions.accessibilityTrusted(false));
    setScreenCapture(m_permissions.screenCaptureAllowed());
    m_checkedAt = m_clock.now();
    if (m_checking)
        return;
    m_checking = true;
    Q_EMIT checkingChanged();
    Permissions* permissions = &m_permissions;
    const quint64 request = m_trustRequests;
    m_queue.run<Check>(
        this,
        [permissions, request] {
            return Check{request, permissions->accessibilityTrustedNow(),
                         permissions->automationAccess(QString::fromLatin1(spotifyId)),
                         permissions->automationAccess(QString::fromLatin1(musicId))};
        },
        [this](Check check) { finishCheck(check); });
}

void PermissionStore::finishCheck(const Check& check)
{
    if (check.trustRequest == m_trustRequests)
        setAccessibility(check.accessibility);
    if (check.spotify != m_spotify || check.music != m_music) {
        m_spotify = check.spotify;
        m_music = check.music;
        Q_EMIT automationChanged();
    }
    m_checking = false;
    Q_EMIT checkingChanged();
}

void PermissionStore::requestAccessibility(QObject* context, std::function<void(bool)> answered)
{
    m_permissions.accessibilityTrusted(true);
    const quint64 request = ++m_trustRequests;
    Permissions* permissions = &m_permissions;
    // Behind any check already on the queue, so it reads the state the prompt left.
    m_queue.run<bool>(
        this, [permissions] { return permissions->accessibilityTrustedNow(); },
        [this, request, context = QPointer<QObject>(context), answered](bool trusted) {
            // A newer prompt has its own answer coming.
            if (request != m_trustRequests)
                return;
            setAccessibility(trusted);
            if (context)
                answered(trusted);
        });
    refresh();
}

bool PermissionStore::requestScreenCapture()
{
    m_permissions.requestScreenCapture();
    refresh();
    return m_screenCapture;
}

void PermissionStore::setAccessibility(bool trusted)
{
    if (trusted == m_accessibility)
        return;
    m_accessibility = trusted;
    Q_EMIT accessibilityChanged();
}

void PermissionStore::setScreenCapture(bool allowed)
{
    if (allowed == m_screenCapture)
        return;
    m_screenCapture = allowed;
    Q_EMIT screenCaptureChanged();
}
