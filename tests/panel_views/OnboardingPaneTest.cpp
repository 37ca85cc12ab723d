#include "PanelViewsTests.h"
#include "ViewRig.h"

#include "setup/OnboardingState.h"
#include "setup/PermissionStore.h"
#include "setup/widgets/OnboardingPane.h"
#include "setup/widgets/OnboardingStepView.h"
#include "setup/widgets/StepCapsules.h"
#include "weather/WeatherStore.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

struct TourRig : ViewRig
{
    explicit TourRig(int step = 0)
    {
        model().onboarding().begin(true);
        model().onboarding().setStep(step);
        model().setIntroActive(false);
        model().setPage(Page::onboarding);
        open({640, 528});
        pane = qobject_cast<OnboardingPane*>(root->onboardingPane());
    }
    OnboardingState& state() { return model().onboarding(); }
    // A button of the current step by its text; fails the test when it is missing.
    QPushButton* button(const QString& text)
    {
        QPushButton* found = pane->stepView()->button(text);
        if (!found)
            qWarning() << "no button" << text << "on step" << state().step();
        return found;
    }
    void click(const QString& text)
    {
        QPushButton* target = button(text);
        QVERIFY(target);
        QVERIFY(target->isEnabled());
        QTest::mouseClick(target, Qt::LeftButton);
    }

    OnboardingPane* pane = nullptr;
};

} // namespace

// The tour through its buttons: forward, back, finishing and skipping, and the step texts.
class OnboardingPaneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void walksForwardAndBack()
    {
        TourRig rig;
        QVERIFY(rig.pane->isVisible());
        QCOMPARE(rig.pane->titleText(), QStringLiteral("Willkommen in deiner Notch."));
        QCOMPARE(rig.pane->primaryButton()->text(), QStringLiteral("Los geht’s"));
        QVERIFY(rig.pane->backButton()->isHidden());
        QVERIFY(!rig.pane->showsBadge());

        QTest::mouseClick(rig.pane->primaryButton(), Qt::LeftButton);
        QCOMPARE(rig.state().step(), 1);
        QCOMPARE(rig.pane->titleText(), QStringLiteral("Befehle deiner Apps."));
        QCOMPARE(rig.pane->subtitleText(),
                 QStringLiteral("Command halten zeigt die Menü-Kurzbefehle der aktiven App."));
        QCOMPARE(rig.pane->primaryButton()->text(), QStringLiteral("Weiter"));
        QVERIFY(!rig.pane->backButton()->isHidden());
        QCOMPARE(rig.pane->badgeText(), QStringLiteral("Optional · später änderbar"));
        QCOMPARE(rig.pane->capsules()->current(), 1);

        QTest::mouseClick(rig.pane->backButton(), Qt::LeftButton);
        QCOMPARE(rig.state().step(), 0);
        QCOMPARE(rig.pane->titleText(), QStringLiteral("Willkommen in deiner Notch."));
    }

    void lastStepStartsBrenlow()
    {
        TourRig rig(4);
        std::optional<Page> shown;
        QObject::connect(&rig.model(), &Model::show, &rig.model(),
                         [&shown](std::optional<Page> page) { shown = page; });
        rig.model().setPanelPinned(true);
        QTest::mouseClick(rig.pane->primaryButton(), Qt::LeftButton);
        QCOMPARE(rig.state().step(), 5);
        QVERIFY(!rig.pane->showsBadge());
        QCOMPARE(rig.pane->primaryButton()->text(), QStringLiteral("Brenlow starten"));

        QTest::mouseClick(rig.pane->primaryButton(), Qt::LeftButton);
        QVERIFY(rig.state().completed());
        QVERIFY(!rig.state().active());
        QVERIFY(!rig.model().panelPinned());
        QCOMPARE(rig.model().page(), Page::home);
        QCOMPARE(shown, std::optional<Page>(Page::home));
        QCOMPARE(rig.root->content(), PanelContent::full);
    }

    void laterFinishesFromAnyStep()
    {
        TourRig rig(2);
        QTest::mouseClick(rig.pane->laterButton(), Qt::LeftButton);
        QVERIFY(rig.state().completed());
        QCOMPARE(rig.model().page(), Page::home);
        // The next start shows no tour.
        Model& restarted = rig.fixture.restart();
        QVERIFY(restarted.onboarding().completed());
        QCOMPARE(restarted.onboarding().step(), 0);
    }

    void stepsShowTheirPermissionStates()
    {
        TourRig rig(1);
        QVERIFY(labelTexts(rig.pane->stepView())
                    .contains(QStringLiteral("Bedienungshilfen noch nicht freigegeben")));
        rig.memory().permissions.accessibility = true;
        rig.model().refreshPermissions();
        QVERIFY(labelTexts(rig.pane->stepView()).contains(QStringLiteral("Bedienungshilfen freigegeben")));

        rig.state().setStep(4);
        QVERIFY(labelTexts(rig.pane->stepView())
                    .contains(QStringLiteral("Bildschirmaufnahme in macOS einrichten")));
        rig.memory().permissions.screenCapture = true;
        rig.model().refreshPermissions();
        QVERIFY(labelTexts(rig.pane->stepView()).contains(QStringLiteral("Bildschirmaufnahme freigegeben")));
    }

    void commandsStepAsksForTrustAndShowsTheApp()
    {
        TourRig rig(1);
        MemoryPermissions& permissions = rig.memory().permissions;
        rig.click(QStringLiteral("Berechtigung öffnen"));
        QCOMPARE(permissions.promptCount, 1);
        // This desktop has no settings page to open yet: the tour says where to go instead.
        QTRY_COMPARE(
            rig.pane->messageText(),
            QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Bedienungshilfen öffnen."));
        QVERIFY(labelTexts(rig.pane->stepView())
                    .contains(QStringLiteral("Bedienungshilfen noch nicht freigegeben")));

        permissions.grantAccessibilityOnPrompt = true;
        rig.click(QStringLiteral("Berechtigung öffnen"));
        QTRY_COMPARE(rig.pane->messageText(), QStringLiteral("Bedienungshilfen freigegeben"));
        QVERIFY(labelTexts(rig.pane->stepView()).contains(QStringLiteral("Bedienungshilfen freigegeben")));

        rig.click(QStringLiteral("Aktuelle App im Finder zeigen"));
        QCOMPARE(rig.memory().workspace.revealed, QStringList{QCoreApplication::applicationFilePath()});
        rig.memory().workspace.revealWorks = false;
        rig.click(QStringLiteral("Aktuelle App im Finder zeigen"));
        QCOMPARE(rig.pane->messageText(),
                 QStringLiteral("App-Pfad: ") + QCoreApplication::applicationFilePath());
        // The message goes after its six seconds.
        rig.memory().scheduler.advance(6.1);
        QVERIFY(rig.pane->messageText().isEmpty());
    }

    void refreshRowChecksAgainAndOffersTheRestartHonestly()
    {
        TourRig rig(1);
        MemoryPermissions& permissions = rig.memory().permissions;
        QTRY_VERIFY(!rig.model().permissions().checking());
        QPushButton* recheck = rig.button(QStringLiteral("Status erneut prüfen"));
        QVERIFY(recheck);
        permissions.hold();
        QTest::mouseClick(recheck, Qt::LeftButton);
        QCOMPARE(recheck->text(), QStringLiteral("Wird geprüft …"));
        QVERIFY(!recheck->isEnabled());
        permissions.release();
        QTRY_COMPARE(recheck->text(), QStringLiteral("Status erneut prüfen"));
        QVERIFY(recheck->isEnabled());

        // Accessibility is missing: the restart note and its button, which asks for the restart.
        QVERIFY(labelTexts(rig.pane->stepView())
                    .contains(QStringLiteral("Wenn der Schalter bereits eingeschaltet ist: Brenlow neu "
                                             "starten. Bleibt der Zugriff gesperrt, muss "
                                             "die aktuelle App in macOS erneut zugeordnet werden.")));
        QPushButton* restart = rig.button(QStringLiteral("Brenlow neu starten"));
        QVERIFY(restart && restart->isEnabled());
        QCOMPARE(restart->toolTip(),
                 QStringLiteral("Verlauf, Favoriten, Notizen und Einstellungen bleiben lokal erhalten."));
        QTest::mouseClick(restart, Qt::LeftButton);
        QCOMPARE(rig.memory().workspace.relaunches, 1);
        QCOMPARE(rig.memory().workspace.terminations, 1);
        // Without a way to start the new copy this one stays and says so.
        rig.memory().workspace.relaunchWorks = false;
        QTest::mouseClick(restart, Qt::LeftButton);
        QCOMPARE(rig.pane->messageText(),
                 QStringLiteral("Neustart nicht möglich. Bitte Brenlow beenden und erneut öffnen."));
        QCOMPARE(rig.memory().workspace.terminations, 1);
        rig.memory().workspace.relaunchWorks = true;

        // Granted outside, seen by the next check: the note goes.
        permissions.accessibility = true;
        QTest::mouseClick(rig.button(QStringLiteral("Status erneut prüfen")), Qt::LeftButton);
        QTRY_VERIFY(!rig.pane->stepView()->button(QStringLiteral("Brenlow neu starten")));
        QVERIFY(labelTexts(rig.pane->stepView()).contains(QStringLiteral("Bedienungshilfen freigegeben")));
    }

    void musicStepShowsThePlayersAndPointsToAutomation()
    {
        TourRig rig(2);
        rig.memory().permissions.setAutomation(QStringLiteral("com.spotify.client"),
                                               AutomationAccess::allowed);
        QTRY_VERIFY(!rig.model().permissions().checking());
        QVERIFY(labelTexts(rig.pane->stepView()).contains(QStringLiteral("Zum Prüfen den Player öffnen")));
        rig.click(QStringLiteral("Status erneut prüfen"));
        QTRY_VERIFY(labelTexts(rig.pane->stepView()).contains(QStringLiteral("Freigegeben")));
        const QStringList texts = labelTexts(rig.pane->stepView());
        QVERIFY(texts.contains(QStringLiteral("Spotify")));
        QVERIFY(texts.contains(QStringLiteral("Apple Music")));
        QCOMPARE(texts.count(QStringLiteral("Zum Prüfen den Player öffnen")), 1);

        rig.click(QStringLiteral("Automation öffnen"));
        QCOMPARE(rig.pane->messageText(),
                 QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Automation öffnen."));
    }

    void captureStepAsksForScreenRecording()
    {
        TourRig rig(4);
        MemoryPermissions& permissions = rig.memory().permissions;
        rig.click(QStringLiteral("Freigabe anfragen"));
        // Still missing after asking: the way to the settings.
        QCOMPARE(
            rig.pane->messageText(),
            QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Bildschirmaufnahme öffnen."));
        rig.model().setMessage(QString());
        rig.click(QStringLiteral("Systemeinstellungen öffnen"));
        QCOMPARE(
            rig.pane->messageText(),
            QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Bildschirmaufnahme öffnen."));

        permissions.grantScreenCaptureOnRequest = true;
        rig.click(QStringLiteral("Freigabe anfragen"));
        QCOMPARE(rig.pane->messageText(), QStringLiteral("Bildschirmaufnahme freigegeben"));
        QVERIFY(labelTexts(rig.pane->stepView()).contains(QStringLiteral("Bildschirmaufnahme freigegeben")));
    }

    // Every button of every step either does something the user can see or is greyed out with
    // a visible reason.
    void noStepHasADeadButton()
    {
        TourRig rig;
        for (int step = 0; step <= OnboardingState::lastStep; ++step) {
            rig.state().setStep(step);
            QTRY_VERIFY(!rig.model().permissions().checking());
            const QList<QPushButton*> buttons = rig.pane->stepView()->findChildren<QPushButton*>();
            for (int i = 0; i < buttons.size(); ++i) {
                // The step may have been rebuilt by the previous click.
                QPushButton* button = rig.pane->stepView()->findChildren<QPushButton*>().value(i);
                QVERIFY(button);
                const QString what = QStringLiteral("step %1, %2").arg(step).arg(button->text());
                if (!button->isEnabled()) {
                    QVERIFY2(!button->toolTip().isEmpty(), qPrintable(what));
                    continue;
                }
                rig.model().setMessage(QString());
                const int prompts = rig.memory().permissions.promptCount;
                const qsizetype reveals = rig.memory().workspace.revealed.size();
                const int relaunches = rig.memory().workspace.relaunches;
                QSignalSpy checks(&rig.model().permissions(), &PermissionStore::checkingChanged);
                QSignalSpy weather(&rig.model().weather(), &WeatherStore::statusChanged);
                QTest::mouseClick(button, Qt::LeftButton);
                QTest::qWait(20);
                const bool seen = !rig.model().message().isEmpty() || !checks.isEmpty() ||
                                  rig.memory().permissions.promptCount != prompts ||
                                  rig.memory().workspace.revealed.size() != reveals ||
                                  rig.memory().workspace.relaunches != relaunches || !weather.isEmpty();
                QVERIFY2(seen, qPrintable(what));
                QTRY_VERIFY(!rig.model().permissions().checking());
            }
        }
    }

    void showingThePaneRefreshesPermissions()
    {
        TourRig rig;
        rig.model().setPage(Page::home);
        rig.memory().permissions.screenCapture = true;
        QVERIFY(!rig.model().permissions().screenCapture());
        rig.model().setPage(Page::onboarding);
        QVERIFY(rig.model().permissions().screenCapture());
    }
};

int runOnboardingPaneTests(int argc, char** argv)
{
    OnboardingPaneTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "OnboardingPaneTest.moc"
