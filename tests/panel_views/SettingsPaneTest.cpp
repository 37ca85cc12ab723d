#include "PanelViewsTests.h"
#include "ViewRig.h"

#include "clipboard/widgets/HistorySettings.h"
#include "focus/widgets/FocusSettings.h"
#include "focus/widgets/FocusStepper.h"
#include "productivity/Productivity.h"
#include "settings/Preferences.h"
#include "shell/widgets/ControlSettings.h"
#include "shell/widgets/DelayRow.h"
#include "shell/widgets/FullLayout.h"
#include "shell/widgets/LayoutButton.h"
#include "shell/widgets/SettingsPane.h"
#include "shell/widgets/ViewSettings.h"
#include "ui/SegmentedControl.h"
#include "ui/ToggleRow.h"
#include "ui/ToggleSwitch.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

namespace {

struct SettingsRig : ViewRig
{
    explicit SettingsRig(const QString& section = QStringLiteral("Ansicht"))
    {
        model().setSettingsSection(section);
        model().setPage(Page::settings);
        open({620, 466});
        pane = qobject_cast<SettingsPane*>(root->fullLayout()->currentPage());
    }
    const PreferenceValues& values() { return model().preferences().values(); }
    // One of the pieces the areas put into the settings.
    template <typename Piece> Piece* piece() const { return pane->findChild<Piece*>(); }
    template <typename Piece> bool shows() const
    {
        return pane->visibleSection()->isAncestorOf(piece<Piece>());
    }

    SettingsPane* pane = nullptr;
};

} // namespace

// The settings page through its controls: each writes the record at once and shows what is stored.
class SettingsPaneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void switcherChoosesTheSection()
    {
        SettingsRig rig;
        QVERIFY(rig.pane);
        QCOMPARE(rig.pane->switcher()->accessibleName(), QStringLiteral("Bereich"));
        QCOMPARE(rig.pane->switcher()->current(), QStringLiteral("Ansicht"));
        QVERIFY(rig.shows<ViewSettings>());

        QTest::mouseClick(rig.pane->switcher()->button(QStringLiteral("Fokus & Daten")), Qt::LeftButton);
        QCOMPARE(rig.model().settingsSection(), QStringLiteral("Fokus & Daten"));
        QVERIFY(rig.shows<FocusSettings>() && rig.shows<HistorySettings>());
        // Another part of the program may open the page on a section.
        rig.model().setSettingsSection(QStringLiteral("Bedienung"));
        QCOMPARE(rig.pane->switcher()->current(), QStringLiteral("Bedienung"));
        QVERIFY(rig.shows<ControlSettings>());
    }

    void layoutButtonsWriteThroughAndResize()
    {
        SettingsRig rig;
        int resizes = 0;
        QObject::connect(&rig.model(), &Model::resize, &rig.model(), [&resizes] { ++resizes; });
        ViewSettings* view = rig.piece<ViewSettings>();
        QVERIFY(view->layoutButton(PanelLayout::balanced)->isChecked());
        QCOMPARE(view->caption(),
                 QStringLiteral("Mehr Breite, weniger Tiefe · Änderungen werden sofort übernommen."));

        QTest::mouseClick(view->layoutButton(PanelLayout::tall), Qt::LeftButton);
        QCOMPARE(rig.values().layout, PanelLayout::tall);
        QCOMPARE(resizes, 1);
        QCOMPARE(view->caption(),
                 QStringLiteral("Karten untereinander · Änderungen werden sofort übernommen."));
        QVERIFY(view->layoutButton(PanelLayout::tall)->isChecked());
        QVERIFY(!view->layoutButton(PanelLayout::balanced)->isChecked());
        // Stored at once: a restart reads the new layout.
        QCOMPARE(Preferences(rig.fixture.domain.reopen()).values().layout, PanelLayout::tall);
    }

    void viewTogglesWriteTheirFields()
    {
        SettingsRig rig;
        ViewSettings* view = rig.piece<ViewSettings>();
        QVERIFY(!view->miniRow()->isChecked());
        QTest::mouseClick(view->miniRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(rig.model().productivity().mini());
        QTest::mouseClick(view->rememberPageRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(!rig.values().rememberPage);
        QTest::mouseClick(view->screenMainRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(rig.values().screenMain);
        QTest::mouseClick(view->animateRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(!rig.values().animate);
        // And the switches follow changes made elsewhere.
        rig.model().productivity().setMini(false);
        QVERIFY(!view->miniRow()->isChecked());

        int welcomes = 0;
        QObject::connect(&rig.model(), &Model::startWelcome, &rig.model(), [&welcomes] { ++welcomes; });
        QTest::mouseClick(view->replayButton(), Qt::LeftButton);
        QCOMPARE(welcomes, 1);
    }

    void delayRowsKeepToTheirRanges()
    {
        SettingsRig rig(QStringLiteral("Bedienung"));
        ControlSettings* control = rig.piece<ControlSettings>();
        struct Row
        {
            DelayRow* row;
            int lowest;
            int highest;
        };
        for (const Row& r : {Row{control->openDelayRow(), 0, 80}, Row{control->closeDelayRow(), 20, 150},
                             Row{control->commandDelayRow(), 50, 200}}) {
            QCOMPARE(r.row->slider()->minimum(), r.lowest);
            QCOMPARE(r.row->slider()->maximum(), r.highest);
        }
        QCOMPARE(control->openDelayRow()->valueText(), QStringLiteral("0.00 s"));
        QCOMPARE(control->closeDelayRow()->valueText(), QStringLiteral("0.50 s"));

        QSlider* close = control->closeDelayRow()->slider();
        close->setValue(close->maximum() + 40);
        QCOMPARE(rig.values().closeDelay, 1.5);
        QCOMPARE(control->closeDelayRow()->valueText(), QStringLiteral("1.50 s"));
        QTest::keyClick(close, Qt::Key_Home);
        QCOMPARE(rig.values().closeDelay, 0.2);

        QSlider* open = control->openDelayRow()->slider();
        open->setValue(37);
        QCOMPARE(rig.values().openDelay, 0.37);
        open->setValue(open->minimum());
        QCOMPARE(rig.values().openDelay, 0.0);
        QCOMPARE(control->openDelayRow()->valueText(), QStringLiteral("0.00 s"));
    }

    void hoverAndCommandTogglesWriteThrough()
    {
        SettingsRig rig(QStringLiteral("Bedienung"));
        ControlSettings* control = rig.piece<ControlSettings>();
        QTest::mouseClick(control->hoverRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(!rig.values().hover);
        QTest::mouseClick(control->commandsRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(!rig.values().commands);
        QVERIFY(rig.values().closeDelay == 0.5);
    }

    void shortcutPickerAndItsStatus()
    {
        SettingsRig rig(QStringLiteral("Bedienung"));
        ControlSettings* control = rig.piece<ControlSettings>();
        QComboBox* picker = control->shortcutPicker();
        QCOMPARE(picker->count(), 4);
        QCOMPARE(picker->currentText(), QStringLiteral("⌃ V"));
        picker->setCurrentIndex(picker->findText(QStringLiteral("Aus")));
        QCOMPARE(rig.values().shortcut, HistoryShortcut::off);

        // The hot-key code reports the result; the page only shows it.
        rig.model().setHotkeyStatus(QStringLiteral("Globaler Kurzbefehl ausgeschaltet."));
        QCOMPARE(control->shortcutStatus(), QStringLiteral("Globaler Kurzbefehl ausgeschaltet."));

        rig.model().preferences().update([](PreferenceValues& v) { v.shortcut = HistoryShortcut::optionV; });
        QCOMPARE(picker->currentText(), QStringLiteral("⌥ V"));
    }

    void controlsFollowingAnOutsideChangeDoNotWriteBack()
    {
        SettingsRig rig(QStringLiteral("Bedienung"));
        int changes = 0;
        QObject::connect(&rig.model(), &Model::resize, &rig.model(), [&changes] { ++changes; });
        rig.model().preferences().update([](PreferenceValues& v) {
            v.hover = false;
            v.openDelay = 0.3;
            v.closeDelay = 1.2;
            v.commandDelay = 1.0;
            v.shortcut = HistoryShortcut::controlShiftV;
            v.focusMinutes = 40;
            v.layout = PanelLayout::wide;
        });
        // One change from outside, shown by every section, and not echoed back by any control.
        QCOMPARE(changes, 1);
        ControlSettings* control = rig.piece<ControlSettings>();
        QVERIFY(!control->hoverRow()->isChecked());
        QCOMPARE(control->openDelayRow()->valueText(), QStringLiteral("0.30 s"));
        QCOMPARE(control->closeDelayRow()->valueText(), QStringLiteral("1.20 s"));
        QCOMPARE(control->commandDelayRow()->valueText(), QStringLiteral("1.00 s"));
        QCOMPARE(control->shortcutPicker()->currentText(), QStringLiteral("⌃ ⇧ V"));
        QCOMPARE(rig.piece<FocusSettings>()->stepper()->minutes(), 40);
        QVERIFY(rig.piece<ViewSettings>()->layoutButton(PanelLayout::wide)->isChecked());
    }

    void storedDelayOutsideTheRangeIsShownAsItIs()
    {
        SettingsRig rig(QStringLiteral("Bedienung"));
        rig.model().preferences().update([](PreferenceValues& v) { v.closeDelay = 3.0; });
        DelayRow* row = rig.piece<ControlSettings>()->closeDelayRow();
        QCOMPARE(row->valueText(), QStringLiteral("3.00 s"));
        QCOMPARE(row->slider()->value(), row->slider()->maximum());
        // Showing it at the slider's end must not clamp the stored value.
        QCOMPARE(rig.values().closeDelay, 3.0);
    }

    void unknownSectionShowsTheFirstOneWithoutMarkingAny()
    {
        SettingsRig rig(QStringLiteral("Gibt es nicht"));
        QCOMPARE(rig.pane->switcher()->current(), QString());
        QVERIFY(rig.shows<ViewSettings>());
    }

    void focusStepperStopsAtOneAndOneHundredTwenty()
    {
        SettingsRig rig(QStringLiteral("Fokus & Daten"));
        FocusStepper* stepper = rig.piece<FocusSettings>()->stepper();
        QCOMPARE(stepper->text(), QStringLiteral("Standard-Fokus: 25 Minuten"));

        rig.model().preferences().update([](PreferenceValues& v) { v.focusMinutes = 2; });
        QTest::mouseClick(stepper->decreaseButton(), Qt::LeftButton);
        QCOMPARE(rig.values().focusMinutes, 1);
        QVERIFY(!stepper->decreaseButton()->isEnabled());
        QTest::mouseClick(stepper->decreaseButton(), Qt::LeftButton);
        QCOMPARE(rig.values().focusMinutes, 1);
        QCOMPARE(stepper->text(), QStringLiteral("Standard-Fokus: 1 Minuten"));

        rig.model().preferences().update([](PreferenceValues& v) { v.focusMinutes = 119; });
        QTest::mouseClick(stepper->increaseButton(), Qt::LeftButton);
        QCOMPARE(rig.values().focusMinutes, 120);
        QVERIFY(!stepper->increaseButton()->isEnabled());
        QVERIFY(stepper->decreaseButton()->isEnabled());
    }

    void focusAndHistoryControls()
    {
        SettingsRig rig(QStringLiteral("Fokus & Daten"));
        FocusSettings* focus = rig.piece<FocusSettings>();
        HistorySettings* history = rig.piece<HistorySettings>();
        rig.model().preferences().update([](PreferenceValues& v) { v.focusMinutes = 50; });
        rig.model().toggleTimer();
        QTest::mouseClick(focus->resetButton(), Qt::LeftButton);
        QCOMPARE(rig.model().duration(), qint64(3000));
        QVERIFY(!rig.model().timerRunning());

        QTest::mouseClick(focus->soundRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(!rig.values().focusSound);
        QTest::mouseClick(history->recordingRow()->toggleSwitch(), Qt::LeftButton);
        QVERIFY(!rig.model().recording());

        rig.memory().pasteboard.copyFromOutside(QStringLiteral("kopiert"));
        rig.model().setRecording(true);
        QVERIFY(history->recordingRow()->isChecked());
        rig.model().pollClipboard();
        QCOMPARE(rig.model().clips().size(), 1);
        QTest::mouseClick(history->clearButton(), Qt::LeftButton);
        QVERIFY(rig.model().clips().isEmpty());
    }
};

int runSettingsPaneTests(int argc, char** argv)
{
    SettingsPaneTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SettingsPaneTest.moc"
