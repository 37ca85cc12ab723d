#pragma once

#include <QString>

// The desktop's own settings application.
class SystemSettings
{
public:
    virtual ~SystemSettings() = default;
    // Opens the page that belongs to the anchor ("Privacy_Accessibility", "Privacy_Automation",
    // "Privacy_ScreenCapture", "LoginItems"); false when this desktop has no such page or it could
    // not be started.
    virtual bool open(const QString& anchor) = 0;

    static QString loginItemsAnchor() { return QStringLiteral("LoginItems"); }
};
