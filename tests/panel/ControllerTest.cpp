#include "PanelRig.h"
#include "PanelTests.h"

#include "setup/OnboardingState.h"
#include "shell/HistoryHotKey.h"

// The hover rules on the manual clock: opening, closing, locks, page choice and sleeping polls.
class ControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void launchLeavesTheClosedPanelOverTheNotch()
    {
        PanelRig rig;
        QCOMPARE(rig.window.frame(), closedFrame);
        QVERIFY(!rig.window.lastChangeAnimated());
        QCOMPARE(rig.controller.activationRect(), QRectF(876, 0, 168, 30));
        QCOMPARE(rig.model().notchWidth(), 160.0);
        QCOMPARE(rig.model().notchHeight(), 24.0);
        QVERIFY(!rig.model().expanded());
    }

    void hoverOpensAnywhereInTheActivationArea_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<bool>("opens");
        QTest::newRow("top edge above the notch") << QPointF(960, 0) << true;
        QTest::newRow("4 left") << QPointF(876, 12) << true;
        QTest::newRow("4 right") << QPointF(1044, 12) << true;
        QTest::newRow("6 below") << QPointF(960, 30) << true;
        QTest::newRow("5 left") << QPointF(875, 12) << false;
        QTest::newRow("7 below") << QPointF(960, 31) << false;
    }

    void hoverOpensAnywhereInTheActivationArea()
    {
        QFETCH(QPointF, point);
        QFETCH(bool, opens);
        PanelRig rig;
        rig.moveTo(point);
        rig.advance(1);
        QCOMPARE(rig.model().expanded(), opens);
        if (!opens)
            return;
        QCOMPARE(rig.model().page(), Page::home);
        QCOMPARE(rig.window.frame(), QRectF(650, 0, 620, 378));
        QVERIFY(rig.window.lastChangeAnimated());
        // Hovering leaves the keyboard where it was.
        QVERIFY(!rig.window.isKey());
    }

    void openDelayMustBeWaitedOutInOneStay()
    {
        PanelRig rig;
        rig.prefer([](PreferenceValues& v) { v.openDelay = 0.3; });
        rig.moveTo(onNotch);
        rig.advance(0.25);
        rig.moveTo(QPointF(960, 200));
        rig.advance(0.1);
        rig.moveTo(onNotch);
        rig.advance(0.26);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.08);
        QVERIFY(rig.model().expanded());
    }

    void leavingClosesAfterTheDelayAndComingBackCancels()
    {
        PanelRig rig;
        rig.hoverOpen();
        rig.moveTo(away);
        rig.advance(0.45);
        QVERIFY(rig.model().expanded());
        // Polled at 30 Hz: due at 0.5 s, seen within two polls.
        rig.advance(0.15);
        QVERIFY(!rig.model().expanded());
        QCOMPARE(rig.window.frame(), closedFrame);

        rig.hoverOpen();
        rig.moveTo(away);
        rig.advance(0.3);
        rig.moveTo(QPointF(700, 300)); // inside the open panel, off the notch
        rig.advance(2);
        QVERIFY(rig.model().expanded());
    }

    void theResizeQuietTimeDelaysTheCloseTimer()
    {
        PanelRig rig;
        rig.moveTo(onNotch);
        QVERIFY(rig.model().expanded());
        rig.moveTo(away);
        rig.advance(0.65);
        QVERIFY(rig.model().expanded());
        rig.advance(0.15);
        QVERIFY(!rig.model().expanded());
    }

    void escapeKeepsThePanelClosedUntilThePointerLeaves()
    {
        PanelRig rig;
        rig.hoverOpen();
        QVERIFY(rig.controller.handleLocalKey(KeyCode::Escape, {}));
        QVERIFY(!rig.model().expanded());
        QVERIFY(rig.controller.hover().suppressed);
        rig.advance(2);
        QVERIFY(!rig.model().expanded());
        rig.moveTo(QPointF(960, 100));
        rig.advance(0.1);
        rig.moveTo(onNotch);
        rig.advance(0.1);
        QVERIFY(rig.model().expanded());
    }

    void whatHoldsThePanelOpen_data()
    {
        QTest::addColumn<QString>("lock");
        QTest::newRow("pin") << "pin";
        QTest::newRow("menu") << "menu";
        QTest::newRow("file dialog") << "dialog";
        QTest::newRow("mouse button") << "button";
    }

    void whatHoldsThePanelOpen()
    {
        QFETCH(QString, lock);
        PanelRig rig;
        rig.hoverOpen();
        if (lock == "pin")
            rig.model().setPanelPinned(true);
        else if (lock == "menu")
            rig.controller.menuBegan();
        else if (lock == "dialog")
            rig.model().chooseWorkspaceItems();
        else
            rig.memory().pointer.pressed = true;
        rig.moveTo(away);
        rig.advance(3);
        QVERIFY(rig.model().expanded());

        if (lock == "pin") {
            // Closing by any means takes the pin out.
            rig.controller.collapse();
            QVERIFY(!rig.model().panelPinned());
            return;
        }
        if (lock == "menu")
            rig.controller.menuEnded();
        else if (lock == "dialog")
            QVERIFY(rig.memory().dialogs.cancel());
        else
            rig.memory().pointer.pressed = false;
        // The close delay starts when the lock ends.
        rig.advance(0.45);
        QVERIFY(rig.model().expanded());
        rig.advance(0.15);
        QVERIFY(!rig.model().expanded());
    }

    void withoutHoverOnlyExplicitRequestsOpenAndClose()
    {
        PanelRig rig;
        rig.prefer([](PreferenceValues& v) { v.hover = false; });
        rig.moveTo(onNotch);
        rig.advance(1);
        QVERIFY(!rig.model().expanded());
        rig.controller.toggle();
        QVERIFY(rig.model().expanded());
        QVERIFY(rig.window.isKey());
        rig.moveTo(away);
        rig.advance(2);
        QVERIFY(rig.model().expanded());
        rig.controller.toggle();
        QVERIFY(!rig.model().expanded());
        QVERIFY(!rig.window.isKey());
        QVERIFY(!rig.controller.polling());
    }

    void aCaptureKeepsThePanelClosed()
    {
        PanelRig rig;
        rig.model().setCaptureBusy(true);
        rig.moveTo(onNotch);
        rig.advance(1);
        rig.controller.expand(Page::settings, false);
        rig.controller.welcome(true);
        QVERIFY(!rig.model().expanded());
        QVERIFY(!rig.model().introActive());
    }

    void aPanelOpenedByTheIconStaysUntilThePointerHasBeenInIt()
    {
        PanelRig rig;
        rig.controller.toggle();
        rig.advance(3);
        QVERIFY(rig.model().expanded());
        rig.moveTo(QPointF(700, 300));
        rig.advance(0.1);
        rig.moveTo(away);
        rig.advance(0.6);
        QVERIFY(!rig.model().expanded());
    }

    void openingChoosesThePageAndNotesTheTarget()
    {
        PanelRig rig;
        rig.memory().workspace.frontmost = editor();
        rig.model().setPage(Page::notes);
        rig.controller.expand(std::nullopt, false);
        QCOMPARE(rig.model().page(), Page::notes);
        QCOMPARE(rig.model().commandTarget()->pid, qint64(77));
        QCOMPARE(rig.controller.previousApp()->pid, qint64(77));
        QCOMPARE(rig.window.frame().size(), QSizeF(620, 466));
        rig.controller.collapse();

        rig.prefer([](PreferenceValues& v) { v.rememberPage = false; });
        rig.memory().workspace.frontmost =
            RunningApp{QStringLiteral("brenlow"), 4242, QStringLiteral("Brenlow")};
        rig.controller.expand(std::nullopt, false);
        QCOMPARE(rig.model().page(), Page::home);
        // Our own process is never the target of the commands page.
        QCOMPARE(rig.model().commandTarget()->pid, qint64(77));
        rig.controller.expand(Page::weather, false);
        QCOMPARE(rig.model().page(), Page::weather);
        rig.controller.collapse();

        rig.model().onboarding().begin(false);
        rig.controller.expand(Page::clipboard, false);
        QCOMPARE(rig.model().page(), Page::onboarding);
        QCOMPARE(rig.window.frame(), QRectF(640, 0, 640, 528));
    }

    void aRestingPointerCostsNoPolls()
    {
        PanelRig rig;
        QVERIFY(!rig.controller.polling());
        QVERIFY(rig.memory().pointer.watching);
        const qint64 polls = rig.controller.polls();
        rig.advance(60);
        QCOMPARE(rig.controller.polls(), polls);

        // A movement outside polls until the pointer rests again.
        rig.moveTo(QPointF(300, 600));
        QCOMPARE(rig.controller.polls(), polls + 1);
        QVERIFY(rig.controller.polling());
        QVERIFY(!rig.memory().pointer.watching);
        rig.memory().pointer.moveTo(QPointF(320, 590));
        rig.advance(1.0 / 30);
        rig.advance(1.0 / 30);
        QVERIFY(!rig.controller.polling());
        QVERIFY(rig.memory().pointer.watching);
        const qint64 settled = rig.controller.polls();
        rig.advance(10);
        QCOMPARE(rig.controller.polls(), settled);
    }

    void everyDelayFiresOnTimeAroundSleeping()
    {
        PanelRig rig;
        rig.prefer([](PreferenceValues& v) {
            v.openDelay = 0.3;
            v.closeDelay = 0.8;
        });
        rig.advance(1);
        QVERIFY(!rig.controller.polling());
        // The pointer arrives and rests: the open delay still runs out.
        rig.moveTo(onNotch);
        rig.advance(0.29);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.05);
        QVERIFY(rig.model().expanded());
        rig.advance(0.3);
        // It leaves and rests far away: the close delay still runs out, then the poll sleeps.
        rig.moveTo(away);
        rig.advance(0.79);
        QVERIFY(rig.model().expanded());
        rig.advance(0.1);
        QVERIFY(!rig.model().expanded());
        rig.advance(0.2);
        QVERIFY(!rig.controller.polling());
        QVERIFY(rig.memory().pointer.watching);

        // Turning hover off stops watching altogether.
        rig.prefer([](PreferenceValues& v) { v.hover = false; });
        rig.advance(0.1);
        QVERIFY(!rig.memory().pointer.watching);
        QVERIFY(!rig.controller.polling());
    }
};

int runControllerTests(int argc, char** argv)
{
    ControllerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ControllerTest.moc"
