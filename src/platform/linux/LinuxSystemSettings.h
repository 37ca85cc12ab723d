#pragma once

#include "platform/SystemSettings.h"

#include <QStringList>

#include <functional>

// The desktop's settings application with the page for an anchor: GNOME's Control Center or
// KDE's System Settings, whichever this session runs (else whichever is installed).
class LinuxSystemSettings final : public SystemSettings
{
public:
    bool open(const QString& anchor) override;

    // The program and arguments that open the anchor's page on a desktop named by
    // XDG_CURRENT_DESKTOP, among the programs `installed` answers for; empty when there is none.
    static QStringList command(const QString& anchor, const QString& currentDesktop,
                               const std::function<bool(const QString&)>& installed);
};
