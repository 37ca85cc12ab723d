#include "TestSupport.h"

#include "setup/PermissionActions.h"
#include "setup/PermissionStore.h"
#include "setup/PermissionTexts.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

// Permission states, the check on the permissions queue and the repair actions with their messages.
class SetupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void aCheckReadsThePlayersOffTheMainThread()
    {
        MemoryPlatform memory;
        memory.permissions.setAutomation(QStringLiteral("com.spotify.client"), AutomationAccess::allowed);
        memory.permissions.setAutomation(QStringLiteral("com.apple.Music"), AutomationAccess::unavailable);
        PermissionStore store(memory.permissions, memory.clock);
        QCOMPARE(store.spotify(), AutomationAccess::notRunning);
        QSignalSpy automation(&store, &PermissionStore::automationChanged);

        memory.permissions.hold();
        store.refresh();
        QVERIFY(store.checking());
        QVERIFY(store.checkedAt().has_value());
        // A second refresh during the check runs no second check.
        store.refresh();
        memory.permissions.release();
        QTRY_VERIFY(!store.checking());
        QCOMPARE(store.spotify(), AutomationAccess::allowed);
        QCOMPARE(store.music(), AutomationAccess::unavailable);
        QCOMPARE(automation.count(), 1);
        QTest::qWait(20);
        QCOMPARE(memory.permissions.automationChecks(), 2);

        // The same answers again change nothing.
        store.refresh();
        QTRY_VERIFY(!store.checking());
        QCOMPARE(automation.count(), 1);
    }

    void aPromptIsAnsweredWithTheStateItLeft()
    {
        MemoryPlatform memory;
        PermissionStore store(memory.permissions, memory.clock);
        std::optional<bool> answered;
        QObject context;
        store.requestAccessibility(&context, [&answered](bool trusted) { answered = trusted; });
        QCOMPARE(memory.permissions.promptCount, 1);
        QTRY_VERIFY(answered.has_value());
        QVERIFY(!*answered);
        QVERIFY(!store.accessibility());

        memory.permissions.grantAccessibilityOnPrompt = true;
        answered.reset();
        store.requestAccessibility(&context, [&answered](bool trusted) { answered = trusted; });
        QTRY_VERIFY(answered.has_value());
        QVERIFY(*answered);
        QVERIFY(store.accessibility());
        QTRY_VERIFY(!store.checking());
        QVERIFY(store.accessibility());
    }

    void aTrustAnswerReadBeforeAPromptIsDropped()
    {
        MemoryPlatform memory;
        memory.permissions.accessibility = true;
        PermissionStore store(memory.permissions, memory.clock);
        QSignalSpy changes(&store, &PermissionStore::accessibilityChanged);
        memory.permissions.hold();
        store.refresh();
        // The check has read "trusted" and waits for the players.
        QTRY_COMPARE(memory.permissions.trustReads(), 1);
        // Trust is withdrawn, and asked for again before the check answers.
        memory.permissions.accessibility = false;
        int answers = 0;
        QObject context;
        store.requestAccessibility(&context, [&answers](bool) { ++answers; });
        QVERIFY(!store.accessibility());
        memory.permissions.release();
        QTRY_COMPARE(answers, 1);
        QTRY_VERIFY(!store.checking());
        // The check's outdated "trusted" never showed.
        QVERIFY(!store.accessibility());
        QCOMPARE(changes.count(), 1);
    }

    void anAnswerForAGoneContextOnlyUpdatesTheStore()
    {
        MemoryPlatform memory;
        memory.permissions.grantAccessibilityOnPrompt = true;
        PermissionStore store(memory.permissions, memory.clock);
        bool called = false;
        {
            QObject context;
            store.requestAccessibility(&context, [&called](bool) { called = true; });
        }
        QTRY_VERIFY(store.accessibility());
        QTRY_VERIFY(!store.checking());
        QVERIFY(!called);
    }

    void repairActionsEndInTheStatusLine()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        MemoryPermissions& permissions = fixture.memory.permissions;

        model.accessibility();
        QCOMPARE(permissions.promptCount, 1);
        QTRY_COMPARE(
            model.message(),
            QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Bedienungshilfen öffnen."));
        permissions.grantAccessibilityOnPrompt = true;
        model.accessibility();
        QTRY_COMPARE(model.message(), QStringLiteral("Bedienungshilfen freigegeben"));
        QVERIFY(model.trusted());

        model.revealCurrentApp();
        QCOMPARE(fixture.memory.workspace.revealed, QStringList{QCoreApplication::applicationFilePath()});
        fixture.memory.workspace.revealWorks = false;
        model.revealCurrentApp();
        QCOMPARE(model.message(), QStringLiteral("App-Pfad: ") + QCoreApplication::applicationFilePath());

        model.openPermissionSettings(QStringLiteral("Privacy_Automation"));
        QCOMPARE(model.message(),
                 QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Automation öffnen."));
        model.setMessage(QString());
        // A text that forms no settings location opens nothing and says nothing.
        model.openPermissionSettings(QStringLiteral("Privacy Automation?x=1"));
        QVERIFY(model.message().isEmpty());

        model.requestScreenCapture();
        QCOMPARE(
            model.message(),
            QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Bildschirmaufnahme öffnen."));
        QVERIFY(!model.permissions().screenCapture());
        permissions.grantScreenCaptureOnRequest = true;
        model.requestScreenCapture();
        QCOMPARE(model.message(), QStringLiteral("Bildschirmaufnahme freigegeben"));
        QVERIFY(model.permissions().screenCapture());
    }

    void automationTextsFollowTheStates()
    {
        QCOMPARE(PermissionTexts::automationText(AutomationAccess::notRunning),
                 QStringLiteral("Zum Prüfen den Player öffnen"));
        QCOMPARE(PermissionTexts::automationText(AutomationAccess::needsConsent),
                 QStringLiteral("Noch nicht angefragt"));
        QCOMPARE(PermissionTexts::automationText(AutomationAccess::denied),
                 QStringLiteral("Nicht freigegeben"));
        QCOMPARE(PermissionTexts::automationText(AutomationAccess::unavailable),
                 QStringLiteral("Momentan nicht prüfbar"));
        QCOMPARE(PermissionTexts::automationSymbol(AutomationAccess::allowed),
                 QStringLiteral("checkmark.circle.fill"));
        QCOMPARE(PermissionTexts::automationSymbol(AutomationAccess::denied),
                 QStringLiteral("circle.dashed"));
        QCOMPARE(PermissionTexts::settingsFallback(QStringLiteral("Privacy_Camera")),
                 QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit öffnen."));
        QVERIFY(PermissionTexts::settingsFallback(QString()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(SetupTest)
#include "tst_setup.moc"
