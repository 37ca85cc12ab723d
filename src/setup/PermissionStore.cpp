#include "setup/PermissionStore.h"

#include "common/Clock.h"
#include "platform/Permissions.h"

PermissionStore::PermissionStore(Permissions& permissions, Clock& clock, QObject* parent)
    : QObject(parent), m_permissions(permissions), m_clock(clock),
      m_accessibility(permissions.accessibilityTrusted(false)),
      m_screenCapture(permissions.screenCaptureAllowed())
{}

void PermissionStore::refresh()
{
    const bool trusted = m_permissions.accessibilityTrusted(false);
    if (trusted != m_accessibility) {
        m_accessibility = trusted;
        Q_EMIT accessibilityChanged();
    }
    const bool capture = m_permissions.screenCaptureAllowed();
    if (capture != m_screenCapture) {
        m_screenCapture = capture;
        Q_EMIT screenCaptureChanged();
    }
    m_checkedAt = m_clock.now();
}
