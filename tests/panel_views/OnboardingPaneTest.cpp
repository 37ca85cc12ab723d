#include "PanelViewsTests.h"
#include "ViewRig.h"

#include "setup/OnboardingState.h"
#include "setup/PermissionStore.h"
#include "setup/widgets/OnboardingPane.h"
#include "setup/widgets/StepCapsules.h"

#include <QPushButton>
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
