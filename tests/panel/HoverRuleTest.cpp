#include "PanelTests.h"

#include "shell/HoverPolicy.h"

#include <QTest>

namespace {
using Action = HoverPolicy::Action;
constexpr double openDelay = 0.3;
constexpr double closeDelay = 0.5;
} // namespace

// The hover rules as a pure step function, driven the way the 30 Hz poll drives them.
class HoverRuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensOnTheFirstPollWithoutDelay()
    {
        HoverPolicy hover;
        QCOMPARE(hover.step(100, true, false, false, 0, closeDelay), Action::open);
    }

    void openDelayRestartsWhenThePointerLeavesEarly()
    {
        HoverPolicy hover;
        QCOMPARE(hover.step(100.0, true, false, false, openDelay, closeDelay), Action::none);
        QCOMPARE(hover.step(100.2, true, false, false, openDelay, closeDelay), Action::none);
        QCOMPARE(hover.step(100.25, false, false, false, openDelay, closeDelay), Action::none);
        QCOMPARE(hover.step(100.3, true, false, false, openDelay, closeDelay), Action::none);
        QCOMPARE(hover.step(100.59, true, false, false, openDelay, closeDelay), Action::none);
        QCOMPARE(hover.step(100.61, true, false, false, openDelay, closeDelay), Action::open);
    }

    void closesAfterTheDelayAndReenteringCancels()
    {
        HoverPolicy hover;
        hover.opened(true);
        QCOMPARE(hover.step(200.0, false, true, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(200.4, false, true, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(200.45, true, true, false, 0, closeDelay), Action::none);
        QVERIFY(!hover.outsideSince);
        QCOMPARE(hover.step(200.6, false, true, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(201.09, false, true, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(201.11, false, true, false, 0, closeDelay), Action::close);
    }

    void aPanelThePointerNeverEnteredStaysOpen()
    {
        HoverPolicy hover;
        hover.opened(false);
        for (double t = 0; t < 5; t += 1.0 / 30)
            QCOMPARE(hover.step(300 + t, false, true, false, 0, closeDelay), Action::none);
        // Once the pointer has been inside, leaving closes it.
        QCOMPARE(hover.step(306, true, true, false, 0, closeDelay), Action::none);
        QVERIFY(hover.entered);
        QCOMPARE(hover.step(306.1, false, true, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(306.61, false, true, false, 0, closeDelay), Action::close);
    }

    void anExplicitCloseWaitsForThePointerToLeave()
    {
        HoverPolicy hover;
        hover.closed(true);
        QVERIFY(hover.suppressed);
        for (double t = 0; t < 2; t += 1.0 / 30)
            QCOMPARE(hover.step(400 + t, true, false, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(402.1, false, false, false, 0, closeDelay), Action::none);
        QVERIFY(!hover.suppressed);
        QCOMPARE(hover.step(402.2, true, false, false, 0, closeDelay), Action::open);
    }

    void aLockHoldsAndTheCloseDelayStartsWhenItEnds()
    {
        HoverPolicy hover;
        hover.opened(true);
        QCOMPARE(hover.step(500.0, false, true, false, 0, closeDelay), Action::none);
        // A menu opens while the close delay runs: no closing however long it stays.
        for (double t = 0.1; t < 3; t += 1.0 / 30)
            QCOMPARE(hover.step(500 + t, false, true, true, 0, closeDelay), Action::none);
        QVERIFY(!hover.outsideSince);
        // Fresh timer from the end of the lock.
        QCOMPARE(hover.step(503.0, false, true, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(503.45, false, true, false, 0, closeDelay), Action::none);
        QCOMPARE(hover.step(503.5, false, true, false, 0, closeDelay), Action::close);
    }

    void aLockKeepsAClosedPanelClosedAndForgetsSuppression()
    {
        HoverPolicy hover;
        hover.closed(true);
        QCOMPARE(hover.step(600, true, false, true, 0, closeDelay), Action::none);
        QVERIFY(hover.suppressed);
        QCOMPARE(hover.step(600.1, false, false, true, 0, closeDelay), Action::none);
        QVERIFY(!hover.suppressed);
        QVERIFY(!hover.insideSince);
    }

    void whatLocksThePanel()
    {
        HoverLocks none;
        none.now = 10;
        QVERIFY(!HoverPolicy::locked(none));
        auto with = [&](auto edit) {
            HoverLocks locks = none;
            edit(locks);
            return HoverPolicy::locked(locks);
        };
        QVERIFY(with([](HoverLocks& l) { l.introActive = true; }));
        QVERIFY(with([](HoverLocks& l) { l.pinned = true; }));
        QVERIFY(with([](HoverLocks& l) { l.commandVisible = true; }));
        QVERIFY(with([](HoverLocks& l) { l.interactionLocks = 1; }));
        QVERIFY(with([](HoverLocks& l) { l.menuDepth = 1; }));
        QVERIFY(with([](HoverLocks& l) { l.buttonsPressed = true; }));
        // The tour holds only an open panel.
        QVERIFY(!with([](HoverLocks& l) { l.onboardingActive = true; }));
        QVERIFY(with([](HoverLocks& l) { l.onboardingActive = l.expanded = true; }));
        // A resize holds an open panel for its quiet time, not after.
        QVERIFY(with([](HoverLocks& l) {
            l.expanded = true;
            l.repositioningUntil = 10.1;
        }));
        QVERIFY(!with([](HoverLocks& l) {
            l.expanded = true;
            l.repositioningUntil = 10.0;
        }));
        QVERIFY(!with([](HoverLocks& l) { l.repositioningUntil = 10.1; }));
    }

    void pollingIsNeededOnlyWhileSomethingCanChange()
    {
        HoverPolicy rest;
        QVERIFY(!HoverPolicy::needsPolling(false, false, rest));
        QVERIFY(HoverPolicy::needsPolling(true, false, rest));
        QVERIFY(HoverPolicy::needsPolling(false, true, rest));
        HoverPolicy waiting;
        waiting.insideSince = 1.0;
        QVERIFY(HoverPolicy::needsPolling(false, false, waiting));
        HoverPolicy leaving;
        leaving.outsideSince = 1.0;
        QVERIFY(HoverPolicy::needsPolling(false, false, leaving));

        // The claim behind sleeping: with the panel closed and the pointer outside, a step ends the
        // same whether a lock holds or not.
        for (bool suppressed : {false, true}) {
            HoverPolicy locked;
            locked.suppressed = suppressed;
            locked.insideSince = 3.0;
            HoverPolicy free = locked;
            QCOMPARE(locked.step(9, false, false, true, 0, closeDelay), Action::none);
            QCOMPARE(free.step(9, false, false, false, 0, closeDelay), Action::none);
            QVERIFY(locked == free);
            QVERIFY(!HoverPolicy::needsPolling(false, false, free));
        }
    }
};

int runHoverRuleTests(int argc, char** argv)
{
    HoverRuleTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HoverRuleTest.moc"
