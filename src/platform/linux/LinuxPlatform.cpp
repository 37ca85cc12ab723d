#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/LinuxDialogs.h"
#include "platform/linux/LinuxDisplays.h"
#include "platform/linux/LinuxHotKeys.h"
#include "platform/linux/LinuxKeyMonitor.h"
#include "platform/linux/LinuxLocation.h"
#include "platform/linux/LinuxPasteboard.h"
#include "platform/linux/LinuxPermissions.h"
#include "platform/linux/LinuxPointer.h"
#include "platform/linux/LinuxSound.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/LinuxWorkspace.h"

#include <QGuiApplication>

LinuxPlatform::LinuxPlatform()
    : m_pasteboard(std::make_unique<LinuxPasteboard>(QGuiApplication::clipboard())),
      m_permissions(std::make_unique<LinuxPermissions>()), m_sound(std::make_unique<LinuxSound>()),
      m_workspace(std::make_unique<LinuxWorkspace>()), m_displays(std::make_unique<LinuxDisplays>()),
      m_pointer(std::make_unique<LinuxPointer>()), m_hotKeys(std::make_unique<LinuxHotKeys>()),
      m_keyMonitor(std::make_unique<LinuxKeyMonitor>()), m_statusBar(std::make_unique<LinuxStatusBar>()),
      m_dialogs(std::make_unique<LinuxDialogs>()),
      m_location(std::make_unique<LinuxLocation>())
{}

LinuxPlatform::~LinuxPlatform() = default;

Platform LinuxPlatform::platform()
{
    return Platform{m_clock,     m_scheduler, *m_pasteboard, *m_permissions, *m_sound,     *m_workspace,
                    *m_displays, *m_pointer,  *m_hotKeys,    *m_keyMonitor,  *m_statusBar, *m_dialogs,
                    *m_location};
}
