#pragma once

#include "TestSupport.h"

#include "model/PanelState.h"
#include "settings/Preferences.h"
#include "shell/MemoryPanelWindow.h"
#include "shell/PanelController.h"

#include <QTest>

#include <functional>

inline const QPointF away(5, 500);
inline const QPointF onNotch(960, 10);
inline const QRectF closedFrame(880, 0, 160, 24);

// A launched panel on the memory platform: one 1920 × 1080 display without a notch.
struct PanelRig
{
    PanelRig()
    {
        controller.reposition();
        window.orderFront();
        controller.startPointerTimer();
        // The first poll finds the pointer at rest and puts the poll to sleep.
        advance(0.1);
    }
    Model& model() { return *fixture.model; }
    MemoryPlatform& memory() { return fixture.memory; }
    void advance(double seconds) { fixture.memory.scheduler.advance(seconds); }
    void moveTo(QPointF point) { fixture.memory.pointer.moveTo(point); }
    void prefer(const std::function<void(PreferenceValues&)>& edit) { model().preferences().update(edit); }
    // Opens by hovering and waits out the resize's quiet time.
    void hoverOpen()
    {
        moveTo(onNotch);
        QVERIFY(model().expanded());
        advance(0.3);
    }

    ModelFixture fixture;
    MemoryPanelWindow window;
    PanelController controller{*fixture.model, window};
};

inline RunningApp editor()
{
    return RunningApp{QStringLiteral("org.kde.kate"), 77, QStringLiteral("Kate"), false};
}
