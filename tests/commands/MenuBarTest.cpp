#include "TestSupport.h"

#include "commands/MenuBarApps.h"
#include "commands/MenuNoticePolicy.h"
#include "setup/PermissionStore.h"

#include <QSignalSpy>
#include <QTest>

namespace {
TrayItem item(const QString& appId, const QString& appName, const QString& itemId, double x = 0,
              const QString& title = {})
{
    TrayItem tray;
    tray.service = QStringLiteral(":1.%1").arg(qHash(appId + itemId) % 1000);
    tray.path = QStringLiteral("/StatusNotifierItem");
    tray.appId = appId;
    tray.appName = appName;
    tray.itemId = itemId;
    tray.title = title;
    tray.x = x;
    return tray;
}

struct Rig
{
    explicit Rig(bool trusted = true)
    {
        memory.permissions.accessibility = trusted;
        makeStore();
    }
    void makeStore()
    {
        apps.reset();
        permissions = std::make_unique<PermissionStore>(memory.permissions, memory.clock);
        apps = std::make_unique<MenuBarApps>(*domain.defaults, memory.statusBar, memory.displays,
                                             memory.scheduler, *permissions);
        apps->setStarted(true);
    }
    void scan()
    {
        apps->refresh();
        QTRY_VERIFY(!apps->scanning());
    }
    QStringList ids() const
    {
        QStringList list;
        for (const MenuBarEntry& entry : apps->entries())
            list.append(entry.id);
        return list;
    }
    MemoryPlatform memory;
    ScratchDomain domain;
    std::unique_ptr<PermissionStore> permissions;
    std::unique_ptr<MenuBarApps> apps;
};
} // namespace

// The menu-bar integration: stored choices, scans, adoption, opening items, unread counters.
class MenuBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void choicesSurviveARestart()
    {
        Rig rig;
        QVERIFY(!rig.apps->enabled());
        QVERIFY(!rig.apps->notificationsEnabled());
        QVERIFY(rig.apps->selected().isEmpty());
        rig.apps->setEnabled(true);
        QVERIFY(rig.memory.statusBar.groupItemsShown());
        QVERIFY(rig.memory.statusBar.hosting);
        rig.apps->setSelected(QStringLiteral("z.app:b"), true);
        rig.apps->setSelected(QStringLiteral("a.app:a"), true);
        QCOMPARE(rig.domain.defaults->stringArrayValue(QStringLiteral("menuApps.selected")),
                 QStringList({QStringLiteral("a.app:a"), QStringLiteral("z.app:b")}));
        rig.makeStore();
        QVERIFY(rig.apps->enabled());
        QCOMPARE(rig.apps->selected().size(), 2);
        rig.apps->setEnabled(false);
        QVERIFY(!rig.memory.statusBar.groupItemsShown());
        QVERIFY(!rig.memory.statusBar.hosting);
        QCOMPARE(rig.apps->message(),
                 QStringLiteral(
                     "Menüleisten-Integration ausgeschaltet. Alle Originalsymbole sind wieder sichtbar."));
    }

    void aScanKeysSortsAndCounts()
    {
        Rig rig;
        TrayItem first = item(QStringLiteral("chat.desktop"), QStringLiteral("Zulip"), QString());
        TrayItem second = item(QStringLiteral("chat.desktop"), QStringLiteral("Zulip"), QString());
        second.service = QStringLiteral(":1.99");
        TrayItem mail =
            item(QStringLiteral("mail.desktop"), QStringLiteral("Mail 10"), QStringLiteral("inbox"));
        mail.toolTipTitle = QStringLiteral("Posteingang");
        mail.toolTipText = QLatin1String("");
        TrayItem mail2 =
            item(QStringLiteral("mail2.desktop"), QStringLiteral("Mail 9"), QStringLiteral("inbox"));
        rig.memory.statusBar.setItems({first, second, mail, mail, mail2});
        rig.apps->setEnabled(true);
        QTRY_VERIFY(!rig.apps->scanning());
        QCOMPARE(rig.ids(),
                 QStringList({QStringLiteral("mail2.desktop:inbox"), QStringLiteral("mail.desktop:inbox"),
                              QStringLiteral("chat.desktop:item-0"), QStringLiteral("chat.desktop:item-1")}));
        QCOMPARE(rig.apps->message(), QStringLiteral("5 bedienbare Symbole gefunden."));
        const MenuBarEntry& mailEntry = rig.apps->entries().at(1);
        QCOMPARE(mailEntry.detail, QStringLiteral("Posteingang"));
        QCOMPARE(mailEntry.notificationLabel, QStringLiteral("Posteingang · "));
        QCOMPARE(rig.apps->entries().at(2).detail, QStringLiteral("Zulip"));

        rig.memory.statusBar.setItems({});
        QTRY_COMPARE(rig.apps->entries().size(), 0);
        QCOMPARE(rig.apps->message(),
                 QStringLiteral(
                     "Keine bedienbaren Menüleistensymbole gefunden. Freigabe prüfen und erneut suchen."));

        Rig untrusted(false);
        untrusted.apps->setEnabled(true);
        untrusted.apps->refresh();
        QCOMPARE(untrusted.apps->message(),
                 QStringLiteral("Bedienungshilfen für Brenlow freigeben und erneut suchen."));
        QCOMPARE(untrusted.memory.statusBar.scans(), 0);
    }

    void adoptionTakesWhatIsLeftOfTheSeparator()
    {
        Rig rig;
        rig.memory.displays.list = {DisplayInfo{QStringLiteral("a"), QRectF(0, 0, 1512, 982)}};
        rig.memory.statusBar.separatorEdge = 900;
        rig.memory.statusBar.setItems(
            {item(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("x"), 0),
             item(QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("x"), 400),
             item(QStringLiteral("c"), QStringLiteral("C"), QStringLiteral("x"), 900)});
        rig.apps->setEnabled(true);
        QTRY_VERIFY(!rig.apps->scanning());
        rig.apps->toggleGroup();
        rig.memory.scheduler.advance(MenuBarApps::adoptDelay);
        QTRY_VERIFY(rig.apps->hidden());
        QCOMPARE(rig.apps->selected(), QSet<QString>{QStringLiteral("b:x")});
        QCOMPARE(rig.memory.statusBar.separatorLength(), 3024.0);
        // Selecting while hidden shows the group again.
        rig.apps->setSelected(QStringLiteral("c:x"), true);
        QVERIFY(!rig.apps->hidden());
        QCOMPARE(rig.memory.statusBar.separatorLength(), 12.0);
        QCOMPARE(MenuBarRules::hiddenSeparatorLength(800), 2048.0);
        QCOMPARE(MenuBarRules::hiddenSeparatorLength(std::nullopt), 4096.0);

        // Nothing left of the separator.
        rig.memory.statusBar.separatorEdge = 100;
        rig.apps->adoptGroup();
        rig.memory.scheduler.advance(MenuBarApps::adoptDelay);
        QTRY_COMPARE(
            rig.apps->message(),
            QStringLiteral("Zuerst gewünschte Symbole mit ⌘ links neben den Brenlow-Trennstrich ziehen."));

        // Where nothing can be pushed off screen, adoption is refused but opening works.
        rig.memory.statusBar.hidingSupported = false;
        rig.apps->adoptGroup();
        QVERIFY(rig.apps->message().startsWith(QStringLiteral("Ausblenden ist auf dieser")));
        QVERIFY(!rig.apps->hidden());
    }

    void openingShowsTheItemsOwnMenu()
    {
        Rig rig;
        TrayItem chat = item(QStringLiteral("chat"), QStringLiteral("Chat"), QStringLiteral("x"));
        chat.hasMenu = true;
        TrayItem plain = item(QStringLiteral("plain"), QStringLiteral("Plain"), QStringLiteral("x"));
        rig.memory.statusBar.setMenu(chat.service,
                                     {TrayMenuEntry{7, QStringLiteral("Öffnen"), true, false, {}}});
        rig.memory.statusBar.setItems({chat, plain});
        rig.apps->setEnabled(true);
        QTRY_COMPARE(rig.apps->entries().size(), 2);
        const MenuBarEntry chatEntry = rig.apps->entries().at(0);
        const MenuBarEntry plainEntry = rig.apps->entries().at(1);
        QSignalSpy menus(rig.apps.get(), &MenuBarApps::menuReady);
        QSignalSpy before(rig.apps.get(), &MenuBarApps::beforeOpen);
        // Not selected: nothing happens.
        rig.apps->open(chatEntry);
        QCOMPARE(before.count(), 0);
        rig.apps->setSelected(chatEntry.id, true);
        rig.apps->setSelected(plainEntry.id, true);
        rig.apps->open(chatEntry);
        QCOMPARE(before.count(), 1);
        rig.memory.scheduler.advance(MenuBarApps::openDelay);
        QTRY_COMPARE(menus.count(), 1);
        QCOMPARE(menus.at(0).at(1).value<QList<TrayMenuEntry>>().at(0).label, QStringLiteral("Öffnen"));
        rig.apps->clickMenuEntry(chatEntry, 7);
        QTRY_COMPARE(rig.memory.statusBar.clicks(), QStringList{chat.service + QStringLiteral("#7")});

        rig.apps->open(plainEntry);
        rig.memory.scheduler.advance(MenuBarApps::openDelay);
        QTRY_COMPARE(rig.memory.statusBar.activations(), QStringList{plain.service});
        QCOMPARE(rig.apps->message(),
                 QStringLiteral(
                     "Originalmenü geöffnet. Mit dem Brenlow-Pfeil oben die Gruppe wieder einklappen."));

        // The item vanishes while its menu opens.
        rig.memory.statusBar.setItems({});
        rig.apps->open(plainEntry);
        rig.memory.scheduler.advance(MenuBarApps::openDelay);
        QTRY_VERIFY(
            rig.apps->message().startsWith(QStringLiteral("Dieses Symbol lässt sich nicht fernbedienen.")));
    }

    void counterPatterns()
    {
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("Battery 90%")), std::nullopt);
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("Spotify 3:42")), std::nullopt);
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("3 neue Nachrichten")), 3);
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("Unread messages: 4")), 4);
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("1 unread message")), 1);
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("Chat · 12 UNGELESENE Mitteilungen")), 12);
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("ungelesene Benachrichtigungen = 7")), 7);
        // \b: "messagesX" is not a word end.
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("3 new messagesX")), std::nullopt);
        // A count too large for an integer does not read as one; the next pattern may still.
        QCOMPARE(MenuNoticePolicy::count(QStringLiteral("99999999999 new messages")), std::nullopt);
        // A megabyte of text is read without trouble.
        const QString huge = QString(1 << 20, QLatin1Char('9')) + QStringLiteral(" x 5 new emails");
        QCOMPARE(MenuNoticePolicy::count(huge), 5);
    }

    void risingCountersAreReportedOnce()
    {
        Rig rig;
        TrayItem chat = item(QStringLiteral("chat"), QStringLiteral("Chat"), QStringLiteral("x"));
        TrayItem other = item(QStringLiteral("other"), QStringLiteral("Other"), QStringLiteral("x"));
        auto show = [&](const QString& chatTitle,
                        const QString& otherTitle = QStringLiteral("1 new message")) {
            chat.title = chatTitle;
            other.title = otherTitle;
            rig.memory.statusBar.setItems({chat, other});
            QTRY_VERIFY(!rig.apps->scanning());
            QTRY_COMPARE(rig.apps->entries().value(0).notificationLabel, chatTitle);
        };
        QSignalSpy notices(rig.apps.get(), &MenuBarApps::notification);
        rig.apps->setEnabled(true);
        rig.apps->setSelected(QStringLiteral("chat:x"), true);
        rig.apps->setNotifications(QStringLiteral("chat:x"), true);
        // Without notifications switched on nothing is watched.
        QVERIFY(!rig.apps->monitoring());
        show(QStringLiteral("5 unread messages"));
        show(QStringLiteral("9 unread messages"));
        QCOMPARE(notices.count(), 0);
        rig.apps->setNotificationsEnabled(true);
        QVERIFY(rig.apps->monitoring());

        for (const char* title : {"2 unread messages", "2 unread messages", "3 unread messages",
                                  "0 unread messages", "1 unread message"})
            show(QString::fromUtf8(title), QStringLiteral("%1 new messages").arg(notices.count() + 5));
        QCOMPARE(notices.count(), 2);
        QCOMPARE(notices.at(0).at(1).toInt(), 3);
        QCOMPARE(notices.at(1).at(1).toInt(), 1);
        QCOMPARE(notices.at(0).at(0).value<MenuBarEntry>().name, QStringLiteral("Chat"));

        // No counter drops the baseline; a restart of the monitoring does too.
        show(QStringLiteral("Chat"));
        show(QStringLiteral("4 unread messages"));
        QCOMPARE(notices.count(), 2);
        rig.apps->setNotificationsEnabled(true);
        show(QStringLiteral("5 unread messages"));
        QCOMPARE(notices.count(), 2);

        // The poll scans every 10 seconds while something is watched.
        const int scans = rig.memory.statusBar.scans();
        rig.memory.scheduler.advance(MenuBarApps::pollInterval);
        QTRY_COMPARE(rig.memory.statusBar.scans(), scans + 1);
        rig.apps->setSelected(QStringLiteral("chat:x"), false);
        QVERIFY(!rig.apps->monitoring());
    }
};

int runMenuBarTests(int argc, char** argv)
{
    MenuBarTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "MenuBarTest.moc"
