#include "TestSupport.h"

#include "platform/linux/LinuxLoginItems.h"
#include "platform/linux/LinuxSystemSettings.h"
#include "setup/LoginItemStore.h"
#include "setup/LoginItemTexts.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {
QString readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// A program file that may be started.
QString makeProgram(const QString& path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("#!/bin/sh\n");
    file.close();
    file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
    return path;
}
} // namespace

// Start at login: the store's rules on the memory service, and the XDG autostart entry written,
// read and removed on real files.
class LoginItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        // The icon comes from the program's resources, which a test links only when asked.
        Q_INIT_RESOURCE(brenlow);
    }

    void theFirstLaunchSwitchesItOnOnce()
    {
        MemoryLoginItems items;
        ScratchDomain domain;
        {
            LoginItemStore store(items, *domain.defaults);
            store.configureInitialLaunch();
            QCOMPARE(store.status(), LoginItemStatus::enabled);
            QVERIFY(store.enabled());
            QCOMPARE(domain.defaults->boolValue(QString::fromLatin1(LoginItemStore::configuredKey)), true);
            // The user switches it off; the next launch leaves it off.
            store.setEnabled(false);
            QCOMPARE(items.current, LoginItemStatus::notRegistered);
        }
        LoginItemStore relaunched(items, domain.reopen());
        relaunched.configureInitialLaunch();
        QCOMPARE(relaunched.status(), LoginItemStatus::notRegistered);
        QCOMPARE(items.registers, 1);

        // Pending approval counts as on: switching on asks nothing and still remembers it.
        ScratchDomain other;
        items.current = LoginItemStatus::requiresApproval;
        LoginItemStore pending(items, *other.defaults);
        QVERIFY(pending.enabled());
        pending.setEnabled(true);
        QCOMPARE(items.registers, 1);
        QCOMPARE(other.defaults->boolValue(QString::fromLatin1(LoginItemStore::configuredKey)), true);
        QCOMPARE(LoginItemTexts::statusLine(pending.status()),
                 QStringLiteral("In macOS unter Anmeldeobjekte noch bestätigen."));
    }

    void aFailedChangeKeepsTheKeyUnsetAndSaysWhy()
    {
        MemoryLoginItems items;
        items.failure = QStringLiteral("Permission denied");
        ScratchDomain domain;
        LoginItemStore store(items, *domain.defaults);
        store.configureInitialLaunch();
        QCOMPARE(store.errorMessage(),
                 QStringLiteral("Autostart konnte nicht geändert werden: Permission denied"));
        QCOMPARE(domain.defaults->boolValue(QString::fromLatin1(LoginItemStore::configuredKey)),
                 std::nullopt);
        QVERIFY(LoginItemTexts::offersSettings(store.status(), true));
        // The next change starts without the old failure.
        items.failure.reset();
        store.setEnabled(true);
        QVERIFY(store.errorMessage().isEmpty());
        QCOMPARE(store.status(), LoginItemStatus::enabled);
    }

    void theAutostartEntryStartsThisVeryProgram()
    {
        QTemporaryDir home;
        const QString program =
            makeProgram(home.filePath(QStringLiteral("Mein Programm/50% $fertig/brenlow")));
        QVERIFY(!program.isEmpty());
        LinuxLoginItems items(home.filePath(QStringLiteral("config/autostart")), {}, program);
        QCOMPARE(items.status(), LoginItemStatus::notRegistered);
        QCOMPARE(items.registerItem(), std::nullopt);
        QCOMPARE(items.status(), LoginItemStatus::enabled);

        // The desktop's own validator accepts it, and its Exec line names the path exactly.
        const QString validator = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
        if (validator.isEmpty())
            QFAIL("desktop-file-validate is missing (scripts/bootstrap installs desktop-file-utils)");
        QProcess validate;
        validate.start(validator, {items.entryPath()});
        QVERIFY(validate.waitForFinished(10000));
        QCOMPARE(validate.readAll(), QByteArray());
        QCOMPARE(validate.exitCode(), 0);
        const QString text = readAll(items.entryPath());
        const QString exec = text.section(QStringLiteral("Exec="), 1).section(QLatin1Char('\n'), 0, 0);
        QCOMPARE(LinuxLoginItems::execProgram(exec), program);
        QVERIFY(exec.contains(QStringLiteral("50%% \\\\$fertig")));

        // The program moved away: the entry points nowhere.
        QFile::rename(program, program + QStringLiteral(".old"));
        QCOMPARE(items.status(), LoginItemStatus::notFound);
        QFile::rename(program + QStringLiteral(".old"), program);

        // The desktop's own switch turned it off: registered, but held back.
        QFile entry(items.entryPath());
        QVERIFY(entry.open(QIODevice::WriteOnly | QIODevice::Truncate));
        entry.write(
            text.toUtf8().replace("X-GNOME-Autostart-enabled=true", "X-GNOME-Autostart-enabled=false"));
        entry.close();
        QCOMPARE(items.status(), LoginItemStatus::requiresApproval);

        QCOMPARE(items.unregisterItem(), std::nullopt);
        QVERIFY(!QFile::exists(items.entryPath()));
        QCOMPARE(items.status(), LoginItemStatus::notRegistered);
    }

    void aSystemEntryIsHiddenAndALinkIsNeverWrittenThrough()
    {
        QTemporaryDir home;
        const QString program = makeProgram(home.filePath(QStringLiteral("bin/brenlow")));
        const QString system = home.filePath(QStringLiteral("etc/autostart"));
        QDir().mkpath(system);
        QFile systemEntry(system + QStringLiteral("/brenlow.desktop"));
        QVERIFY(systemEntry.open(QIODevice::WriteOnly));
        systemEntry.write(LinuxLoginItems::entry(program));
        systemEntry.close();
        const QString user = home.filePath(QStringLiteral("config/autostart"));
        LinuxLoginItems items(user, {system}, program);
        QCOMPARE(items.status(), LoginItemStatus::enabled);
        // Off must hide the system's copy from the user's folder.
        QCOMPARE(items.unregisterItem(), std::nullopt);
        QVERIFY(readAll(items.entryPath()).contains(QStringLiteral("Hidden=true")));
        QCOMPARE(items.status(), LoginItemStatus::notRegistered);
        QCOMPARE(items.registerItem(), std::nullopt);
        QCOMPARE(items.status(), LoginItemStatus::enabled);

        // A link in the user's folder: writing refuses, the file it points to stays untouched.
        const QString elsewhere = home.filePath(QStringLiteral("important.txt"));
        QFile target(elsewhere);
        QVERIFY(target.open(QIODevice::WriteOnly));
        target.write("keep me");
        target.close();
        QFile::remove(items.entryPath());
        QVERIFY(QFile::link(elsewhere, items.entryPath()));
        const auto failure = items.registerItem();
        QVERIFY(failure.has_value());
        QVERIFY(failure->contains(QStringLiteral("Verweis")));
        QCOMPARE(readAll(elsewhere), QStringLiteral("keep me"));
        // Switching off removes the link only.
        QCOMPARE(items.unregisterItem(), std::nullopt);
        QCOMPARE(readAll(elsewhere), QStringLiteral("keep me"));

        // A folder that cannot be written gives the system's reason.
        LinuxLoginItems blocked(elsewhere + QStringLiteral("/autostart"), {}, program);
        QVERIFY(blocked.registerItem().has_value());
    }

    void theLauncherEntryFollowsTheProgram()
    {
        QTemporaryDir home;
        const QString data = home.filePath(QStringLiteral("data"));
        const QString first = makeProgram(home.filePath(QStringLiteral("a b/brenlow")));
        LinuxLoginItems items(home.filePath(QStringLiteral("config/autostart")), {}, first, data);
        QCOMPARE(items.installLauncher(), std::nullopt);
        const QString entry = data + QStringLiteral("/applications/brenlow.desktop");
        QProcess validate;
        validate.start(QStringLiteral("desktop-file-validate"), {entry});
        QVERIFY(validate.waitForFinished(10000));
        QCOMPARE(validate.readAll(), QByteArray());
        QCOMPARE(validate.exitCode(), 0);
        QVERIFY(QFile::exists(data + QStringLiteral("/icons/hicolor/scalable/apps/brenlow.svg")));

        // The program moved: the next start points the launcher at the new place.
        const QString moved = makeProgram(home.filePath(QStringLiteral("neu/brenlow")));
        LinuxLoginItems again(home.filePath(QStringLiteral("config/autostart")), {}, moved, data);
        QCOMPARE(again.installLauncher(), std::nullopt);
        const QString text = readAll(entry);
        QCOMPARE(LinuxLoginItems::execProgram(
                     text.section(QStringLiteral("Exec="), 1).section(QLatin1Char('\n'), 0, 0)),
                 moved);
    }

    void theDesktopsSettingsPagePerAnchor()
    {
        auto only = [](const QStringList& installed) {
            return [installed](const QString& program) { return installed.contains(program); };
        };
        QCOMPARE(LinuxSystemSettings::command(QStringLiteral("Privacy_Accessibility"),
                                              QStringLiteral("GNOME"),
                                              only({QStringLiteral("gnome-control-center")})),
                 (QStringList{QStringLiteral("gnome-control-center"), QStringLiteral("universal-access")}));
        QCOMPARE(LinuxSystemSettings::command(
                     QStringLiteral("LoginItems"), QStringLiteral("KDE"),
                     only({QStringLiteral("systemsettings"), QStringLiteral("gnome-control-center")})),
                 (QStringList{QStringLiteral("systemsettings"), QStringLiteral("kcm_autostart")}));
        // No page for it, or no settings application at all: nothing to open.
        QVERIFY(LinuxSystemSettings::command(QStringLiteral("Privacy_Automation"), QStringLiteral("GNOME"),
                                             only({QStringLiteral("gnome-control-center")}))
                    .isEmpty());
        QVERIFY(LinuxSystemSettings::command(QStringLiteral("Privacy_Accessibility"), QString(), only({}))
                    .isEmpty());
    }
};

QTEST_GUILESS_MAIN(LoginItemTest)
#include "tst_loginitem.moc"
