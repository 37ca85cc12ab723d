// Self-test groups for the menu commands and the menu-bar counters.
#include "app/SelfTest.h"

#include "commands/CommandAccess.h"
#include "commands/CommandPolicy.h"
#include "commands/MenuBarRules.h"
#include "commands/MenuNoticePolicy.h"
#include "commands/MenuWalk.h"
#include "platform/memory/MemoryPlatform.h"

namespace SelfTestGroups {

QString menuCommands()
{
    selfCheck(CommandPolicy::isAppleMenu(QStringLiteral(" Apple ")) &&
                  !CommandPolicy::isAppleMenu(QStringLiteral("Finder")),
              "the Apple menu is recognised by its title");
    selfCheck(CommandPolicy::keys(QStringLiteral("n"), 7) == QStringLiteral("⌃⌥⇧⌘N") &&
                  CommandPolicy::keys(QStringLiteral("n"), 12) == QStringLiteral("⌃N"),
              "modifier bits render in the fixed order");
    MemoryPlatform memory;
    MemoryAccessibility& a11y = memory.accessibility;
    const QString bar = a11y.menuBar(77);
    a11y.addMenuItem(a11y.addMenuItem(bar, QStringLiteral("Apple")), QStringLiteral("Beenden"),
                     QStringLiteral("q"));
    const QString file = a11y.addMenuItem(bar, QStringLiteral("Ablage"));
    const QString sub = a11y.addMenuItem(file, QStringLiteral("Exportieren"));
    a11y.addMenuItem(sub, QStringLiteral("Als PDF"), QStringLiteral("e"), 1);
    for (int i = 0; i < 450; ++i)
        a11y.addMenuItem(file, QStringLiteral("Eintrag %1").arg(i), QStringLiteral("x"));
    const MenuRead read = MenuWalk(a11y, memory.clock).read(77);
    selfCheck(read.error == 0 && read.items.size() == MenuWalk::maxItems, "a read stops at 400 items");
    selfCheck(read.items.first().name == QStringLiteral("Ablage › Als PDF") &&
                  read.items.first().keys == QStringLiteral("⇧⌘E"),
              "a submenu's command is named after its top-level menu");
    selfCheck(CommandAccess::message(0, 400) == QStringLiteral("400 Menübefehle geladen."),
              "the count is reported");
    a11y.setUnresponsive(77, true);
    selfCheck(MenuWalk(a11y, memory.clock).read(77).error == -25204, "a silent application is reported");
    return QStringLiteral("menu commands read within their limits, named and keyed");
}

QString menuBarCounters()
{
    selfCheck(MenuNoticePolicy::count(QStringLiteral("3 neue Nachrichten")) == 3 &&
                  MenuNoticePolicy::count(QStringLiteral("Unread messages: 4")) == 4 &&
                  !MenuNoticePolicy::count(QStringLiteral("Battery 90%")),
              "the three counter patterns");
    MenuNoticePolicy policy;
    int rises = 0;
    for (const char* label : {"2 unread messages", "2 unread messages", "3 unread messages",
                              "0 unread messages", "1 unread message", "Chat", "4 unread messages"})
        rises += policy.update(QStringLiteral("chat:x"), QString::fromUtf8(label)).has_value() ? 1 : 0;
    selfCheck(rises == 2, "only rises from a baseline are reported");
    TrayItem first;
    first.appId = QStringLiteral("chat");
    const QList<MenuBarEntry> entries = MenuBarRules::entries({first, first});
    selfCheck(entries.size() == 2 && entries.at(1).id == QStringLiteral("chat:item-1"),
              "items without ids are keyed");
    return QStringLiteral("menu-bar entries keyed; unread counters report rises only");
}

} // namespace SelfTestGroups
