#include "PanelViewsTests.h"
#include "ViewRig.h"

#include "clipboard/widgets/HistoryPage.h"
#include "devices/widgets/MicrophoneCard.h"
#include "focus/widgets/FocusCard.h"
#include "overview/widgets/MiniOverview.h"
#include "overview/widgets/OverviewPage.h"
#include "productivity/Productivity.h"
#include "productivity/widgets/SearchPage.h"
#include "productivity/widgets/ShelfFileView.h"
#include "productivity/widgets/ShelfPage.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"
#include "setup/widgets/OnboardingPane.h"
#include "shell/widgets/ButtonRow.h"
#include "shell/widgets/FullLayout.h"
#include "shell/widgets/HeaderRow.h"
#include "shell/widgets/PlaceholderPage.h"
#include "shell/widgets/SettingsPane.h"
#include "shell/widgets/StatusLineView.h"
#include "shell/widgets/TabBar.h"
#include "shell/widgets/WelcomeGlow.h"
#include "ui/InfoCard.h"
#include "ui/SymbolButton.h"

#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

void setLayout(Model& model, PanelLayout layout)
{
    model.preferences().update([layout](PreferenceValues& values) { values.layout = layout; });
}

void fits(RootView& root, QSize size, const char* what)
{
    root.resize(size);
    QApplication::processEvents();
    const QSize needed = root.contentMinimum();
    QVERIFY2(needed.width() <= size.width() && needed.height() <= size.height(),
             qPrintable(QStringLiteral("%1 needs %2×%3 in %4×%5")
                            .arg(QLatin1String(what))
                            .arg(needed.width())
                            .arg(needed.height())
                            .arg(size.width())
                            .arg(size.height())));
}

} // namespace

// The root view through its real widgets: what it shows for which state, the header buttons,
// tabs, status line, focus card, mini overview and the drop target.
class RootViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void showsOnlyTheShapeWhileClosedAndTheGlowDuringTheIntro()
    {
        ViewRig rig;
        rig.model().setExpanded(false);
        RootView& root = rig.makeRoot();
        root.resize(160, 24);
        root.show();
        QCOMPARE(root.content(), PanelContent::nothing);
        QVERIFY(!root.fullLayout()->isVisible());
        QVERIFY(!root.header()->isVisible());

        rig.model().setIntroActive(true);
        QCOMPARE(root.content(), PanelContent::glow);
        QVERIFY(root.welcomeGlow()->isVisible());
        QVERIFY(root.welcomeGlow()->isAnimating());

        rig.model().setIntroActive(false);
        rig.model().setExpanded(true);
        QCOMPARE(root.content(), PanelContent::full);
        QVERIFY(!root.welcomeGlow()->isAnimating());
        QVERIFY(root.fullLayout()->isVisible());
        QVERIFY(root.header()->isVisible());
    }

    void tourShowsEvenWhenMiniIsOn()
    {
        ViewRig rig;
        rig.model().productivity().setMini(true);
        RootView& root = rig.open({640, 528});
        QCOMPARE(root.content(), PanelContent::mini);
        rig.model().setPage(Page::onboarding);
        QCOMPARE(root.content(), PanelContent::onboarding);
        QVERIFY(root.onboardingPane()->isVisible());
        QVERIFY(!root.miniOverview()->isVisible());
        QVERIFY(!root.fullLayout()->isVisible());
    }

    void statusLineShowsAMessageForExactlySixSeconds()
    {
        ViewRig rig;
        rig.model().preferences().update([](PreferenceValues& v) { v.shortcut = HistoryShortcut::optionV; });
        RootView& root = rig.open();
        StatusLineView* status = root.fullLayout()->statusLine();
        const QString hint = QStringLiteral("⌥ V  Verlauf · ⌘ halten  Befehle");
        QCOMPARE(status->text(), hint);
        QCOMPARE(status->trailingText(), QStringLiteral("BRENLOW"));

        rig.model().setMessage(QStringLiteral("Erste"));
        rig.memory().scheduler.advance(4.0);
        rig.model().setMessage(QStringLiteral("Zweite"));
        QCOMPARE(status->text(), QStringLiteral("Zweite"));
        // The newer message restarts the six seconds.
        rig.memory().scheduler.advance(5.99);
        QCOMPARE(status->text(), QStringLiteral("Zweite"));
        rig.memory().scheduler.advance(0.02);
        QCOMPARE(status->text(), hint);

        rig.model().preferences().update([](PreferenceValues& v) { v.shortcut = HistoryShortcut::off; });
        QCOMPARE(status->text(), QStringLiteral("Verlauf über den Tab öffnen · ⌘ halten  Befehle"));
    }

    void headerButtonsActOnTheModel()
    {
        ViewRig rig;
        std::optional<int> closed;
        QObject::connect(&rig.model(), &Model::close, &rig.model(),
                         [&closed] { closed = closed.value_or(0) + 1; });
        RootView& root = rig.open();
        ButtonRow* row = root.fullLayout()->buttonRow();

        // The menu-bar integration is off, so its button is not offered.
        QStringList hints;
        for (SymbolButton* button : row->visibleButtons())
            hints.append(button->toolTip());
        QStringList expected;
        for (const HeaderButtons::Entry& entry : HeaderButtons::entries(false))
            expected.append(entry.hint);
        QCOMPARE(hints, expected);

        QTest::mouseClick(row->button(HeaderButtons::pin), Qt::LeftButton);
        QVERIFY(rig.model().panelPinned());
        QVERIFY(row->button(HeaderButtons::pin)->isChecked());
        QTest::mouseClick(row->button(HeaderButtons::pin), Qt::LeftButton);
        QVERIFY(!rig.model().panelPinned());

        QTest::mouseClick(row->button(HeaderButtons::capture), Qt::LeftButton);
        QCOMPARE(rig.model().page(), Page::capture);
        QCOMPARE(row->headline(), QStringLiteral("Festhalten und teilen."));
        QTest::mouseClick(row->button(HeaderButtons::settings), Qt::LeftButton);
        QCOMPARE(rig.model().page(), Page::settings);
        QVERIFY(qobject_cast<SettingsPane*>(root.fullLayout()->currentPage()));

        QTest::mouseClick(row->button(HeaderButtons::close), Qt::LeftButton);
        QCOMPARE(closed, std::optional<int>(1));

        QTest::mouseClick(row->button(HeaderButtons::mini), Qt::LeftButton);
        QVERIFY(rig.model().productivity().mini());
        QCOMPARE(rig.model().page(), Page::home);
        QCOMPARE(root.content(), PanelContent::mini);
    }

    void ellipsisMenuOpensSettings()
    {
        ViewRig rig;
        RootView& root = rig.open();
        QMenu* menu = root.fullLayout()->buttonRow()->menu();
        QStringList items;
        for (QAction* action : menu->actions())
            items.append(action->text());
        QCOMPARE(items, (QStringList{QStringLiteral("Einstellungen"), QStringLiteral("Beenden")}));
        menu->actions().first()->trigger();
        QCOMPARE(rig.model().page(), Page::settings);
    }

    void focusCardFollowsTheEndOfAPeriod()
    {
        ViewRig rig;
        RootView& root = rig.open();
        FocusCard* card = qobject_cast<OverviewPage*>(root.fullLayout()->currentPage())->focusCard();
        QTest::mouseClick(card->presetButtons().first(), Qt::LeftButton);
        QTest::mouseClick(card->toggleButton(), Qt::LeftButton);
        rig.memory().clock.advance(5 * 60 + 1);
        rig.model().tick();
        QVERIFY(!rig.model().timerRunning());
        QCOMPARE(card->timeText(), QStringLiteral("00:00"));
        QCOMPARE(card->caption(), QStringLiteral("Bereit, wenn du es bist."));
        QCOMPARE(card->toggleButton()->symbol(), QStringLiteral("play.fill"));
        // The length did not change, so its chip stays marked.
        QVERIFY(card->presetButtons().first()->isChecked());
    }

    void tabsSelectTheirPages()
    {
        ViewRig rig;
        RootView& root = rig.open({620, 466});
        TabBar* tabs = root.fullLayout()->tabBar();
        QCOMPARE(tabs->current(), std::optional<Page>(Page::home));
        QTest::mouseClick(tabs->tab(Page::search), Qt::LeftButton);
        QCOMPARE(rig.model().page(), Page::search);
        QCOMPARE(tabs->current(), std::optional<Page>(Page::search));
        QVERIFY(qobject_cast<SearchPage*>(root.fullLayout()->currentPage()));

        QTest::mouseClick(tabs->tab(Page::clipboard), Qt::LeftButton);
        QVERIFY(qobject_cast<HistoryPage*>(root.fullLayout()->currentPage()));

        // A page reached without a tab marks none.
        rig.model().setPage(Page::events);
        QCOMPARE(tabs->current(), std::nullopt);
        QCOMPARE(root.fullLayout()->buttonRow()->title(), QStringLiteral("AKTIVITÄT"));
    }

    void focusCardPresetsAndButtons()
    {
        ViewRig rig;
        RootView& root = rig.open();
        auto* overview = qobject_cast<OverviewPage*>(root.fullLayout()->currentPage());
        QVERIFY(overview);
        FocusCard* card = overview->focusCard();
        QCOMPARE(card->timeText(), QStringLiteral("25:00"));
        QCOMPARE(card->caption(), QStringLiteral("Bereit, wenn du es bist."));
        for (QPushButton* chip : card->presetButtons())
            QVERIFY(!chip->isChecked());

        QPushButton* fifteen = card->presetButtons().at(1);
        QCOMPARE(fifteen->text(), QStringLiteral("15 Min"));
        QTest::mouseClick(fifteen, Qt::LeftButton);
        QCOMPARE(rig.model().duration(), qint64(900));
        QCOMPARE(card->timeText(), QStringLiteral("15:00"));
        for (QPushButton* chip : card->presetButtons())
            QCOMPARE(chip->isChecked(), chip == fifteen);
        // Clicking the highlighted chip again keeps it highlighted.
        QTest::mouseClick(fifteen, Qt::LeftButton);
        QVERIFY(fifteen->isChecked());

        QTest::mouseClick(card->toggleButton(), Qt::LeftButton);
        QVERIFY(rig.model().timerRunning());
        QCOMPARE(card->toggleButton()->symbol(), QStringLiteral("pause.fill"));
        QCOMPARE(card->caption(), QStringLiteral("Zeit für deinen Flow."));
        rig.memory().clock.advance(61);
        rig.model().tick();
        QCOMPARE(card->timeText(), QStringLiteral("13:59"));

        QTest::mouseClick(card->resetButton(), Qt::LeftButton);
        QVERIFY(!rig.model().timerRunning());
        QCOMPARE(card->timeText(), QStringLiteral("15:00"));
        QCOMPARE(card->toggleButton()->symbol(), QStringLiteral("play.fill"));
    }

    void overviewStacksCardsOnlyInTheTallLayout()
    {
        ViewRig rig;
        RootView& root = rig.open();
        auto* overview = qobject_cast<OverviewPage*>(root.fullLayout()->currentPage());
        QVERIFY(!overview->stacked());
        setLayout(rig.model(), PanelLayout::tall);
        QVERIFY(overview->stacked());
        setLayout(rig.model(), PanelLayout::wide);
        QVERIFY(!overview->stacked());
        QCOMPARE(overview->devicesCard()->firstLine(), QStringLiteral("Netzbetrieb"));
        QCOMPARE(overview->microphoneCard()->firstLine(), QStringLiteral("Mikrofon bereit"));
        QCOMPARE(overview->microphoneCard()->secondLine(), QStringLiteral("Kamera nicht aktiv"));
    }

    void theMuteButtonSwitchesTheMicrophoneOrSaysWhyNot()
    {
        ViewRig rig;
        RootView& root = rig.open();
        auto* overview = qobject_cast<OverviewPage*>(root.fullLayout()->currentPage());
        auto* card = qobject_cast<MicrophoneCard*>(overview->microphoneCard());
        QVERIFY(card);
        SymbolButton* mute = card->muteButton();
        QVERIFY(mute->isVisible());
        // No microphone whose mute can be set: greyed, and the hint says why.
        QVERIFY(!mute->isEnabled());
        QCOMPARE(mute->toolTip(), QStringLiteral("Hardware-Mikrofon umschalten – nicht verfügbar: Dieses Mikrofon "
                                                 "unterstützt keine Hardware-Stummschaltung."));
        QCOMPARE(mute->accessibleName(), mute->toolTip());

        rig.memory().audioDevices.setInput(AudioInputState{false, false, true});
        rig.model().refreshHardware();
        QTRY_VERIFY(mute->isEnabled());
        QCOMPARE(mute->toolTip(), QStringLiteral("Hardware-Mikrofon umschalten"));
        QCOMPARE(mute->symbol(), QStringLiteral("mic"));
        QTest::mouseClick(mute, Qt::LeftButton);
        QTRY_COMPARE(card->firstLine(), QStringLiteral("Mikrofon stumm"));
        QCOMPARE(mute->symbol(), QStringLiteral("mic.slash"));
        QVERIFY(rig.memory().audioDevices.defaultInput()->muted);
    }

    void miniOverviewButtons()
    {
        ViewRig rig;
        rig.model().productivity().setMini(true);
        RootView& root = rig.open({440, 112});
        auto* mini = qobject_cast<MiniOverview*>(root.miniOverview());
        QVERIFY(mini);
        QVERIFY(mini->isVisible());
        QCOMPARE(mini->timerButton()->text(), QStringLiteral("25:00"));
        QCOMPARE(mini->timerButton()->toolTip(), QStringLiteral("Fokus starten / pausieren"));
        QCOMPARE(mini->statusText(), QStringLiteral("Netzbetrieb · Mikrofon bereit"));
        // The headline reads as written.
        QVERIFY(labelTexts(mini).contains(QStringLiteral("Alles griffbereit")));
        QVERIFY(!labelTexts(mini).contains(QStringLiteral("ALLES GRIFFBEREIT")));
        for (const QLabel* label : mini->findChildren<QLabel*>())
            QCOMPARE(label->font().capitalization(), QFont::MixedCase);
        QTest::mouseClick(mini->timerButton(), Qt::LeftButton);
        QVERIFY(rig.model().timerRunning());

        QTest::mouseClick(mini->searchButton(), Qt::LeftButton);
        QCOMPARE(rig.model().page(), Page::search);
        QCOMPARE(root.content(), PanelContent::full);

        rig.model().setPage(Page::home);
        QCOMPARE(root.content(), PanelContent::mini);
        int resizes = 0;
        QObject::connect(&rig.model(), &Model::resize, &rig.model(), [&resizes] { ++resizes; });
        QTest::mouseClick(mini->expandButton(), Qt::LeftButton);
        QVERIFY(!rig.model().productivity().mini());
        QCOMPARE(root.content(), PanelContent::full);
        // The panel must grow back to the full overview.
        QVERIFY(resizes >= 1);
    }

    void headerClockTurnsOverAtTheMinute()
    {
        ViewRig rig;
        rig.memory().clock.setNow(QDateTime(QDate(2026, 3, 7), QTime(9, 41, 50)).toUTC());
        RootView& root = rig.open();
        QCOMPARE(root.header()->timeText(), QStringLiteral("09:41"));
        QCOMPARE(root.header()->dateText(), QStringLiteral("07.03."));
        rig.memory().scheduler.advance(9.9);
        QCOMPARE(root.header()->timeText(), QStringLiteral("09:41"));
        rig.memory().scheduler.advance(0.2);
        QCOMPARE(root.header()->timeText(), QStringLiteral("09:42"));
        rig.memory().scheduler.advance(60);
        QCOMPARE(root.header()->timeText(), QStringLiteral("09:43"));
    }

    void droppedFilesGoToTheShelf()
    {
        ViewRig rig;
        std::optional<Page> shown;
        QObject::connect(&rig.model(), &Model::show, &rig.model(),
                         [&shown](std::optional<Page> page) { shown = page; });
        RootView& root = rig.open();

        QMimeData web;
        web.setUrls({QUrl(QStringLiteral("https://example.org/a"))});
        QDragEnterEvent refused(QPoint(10, 10), Qt::CopyAction, &web, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&root, &refused);
        QVERIFY(!refused.isAccepted());
        QVERIFY(!root.targeted());

        const QUrl file = QUrl::fromLocalFile(QStringLiteral("/tmp/Bericht.pdf"));
        const QUrl app = QUrl::fromLocalFile(QStringLiteral("/opt/Editor.APP"));
        QMimeData files;
        files.setUrls({file, QUrl(QStringLiteral("https://example.org/b")), app});
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&root, &enter);
        QVERIFY(enter.isAccepted());
        QVERIFY(root.targeted());

        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&root, &drop);
        QVERIFY(drop.isAccepted());
        QVERIFY(!root.targeted());
        QCOMPARE(shown, std::optional<Page>(Page::shelf));
        QCOMPARE(rig.model().files(), QList<QUrl>{file});
        QVERIFY(rig.model().apps().contains(app));
    }

    void shelfListsFilesAndAppsAndRemovesFiles()
    {
        ViewRig rig;
        rig.model().setPage(Page::shelf);
        RootView& root = rig.open({620, 466});
        auto* shelf = qobject_cast<ShelfPage*>(root.fullLayout()->currentPage());
        QVERIFY(shelf);
        QVERIFY(shelf->showsEmptyState());
        QVERIFY(labelTexts(shelf).contains(QStringLiteral("Hier ist Platz für deine Dateien.")));
        QVERIFY(shelf->appNames().isEmpty());

        rig.model().addFiles({QUrl::fromLocalFile(QStringLiteral("/tmp/a.txt")),
                              QUrl::fromLocalFile(QStringLiteral("/tmp/b.png"))});
        QVERIFY(!shelf->showsEmptyState());
        QCOMPARE(shelf->fileNames(), (QStringList{QStringLiteral("a.txt"), QStringLiteral("b.png")}));
        ShelfFileView* view = shelf->fileView();
        const QModelIndex first = view->model()->index(0, 0);
        QTRY_VERIFY(view->visualRect(first).height() > 0);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->removeMark(first).center());
        QCOMPARE(rig.model().files().size(), 1);
        QCOMPARE(shelf->fileNames(), QStringList{QStringLiteral("b.png")});
    }

    void everyStateFitsTheSizeTheWindowGivesIt()
    {
        ViewRig rig;
        RootView& root = rig.open();
        // As first shown, before any page change or resize could have refreshed its layouts.
        QVERIFY(root.contentMinimum().width() <= 620 && root.contentMinimum().height() <= 378);
        struct Case
        {
            PanelLayout layout;
            QSize home;
            QSize other;
        };
        const Case cases[] = {{PanelLayout::wide, {800, 378}, {800, 426}},
                              {PanelLayout::balanced, {620, 378}, {620, 466}},
                              {PanelLayout::tall, {520, 556}, {520, 556}}};
        for (const Case& c : cases) {
            setLayout(rig.model(), c.layout);
            rig.model().setPage(Page::home);
            fits(root, c.home, "overview");
            for (Page page :
                 {Page::settings, Page::events, Page::shelf, Page::clipboard, Page::search, Page::commands,
                  Page::weather, Page::capture, Page::menuApps, Page::notes, Page::workspaces}) {
                rig.model().setPage(page);
                fits(root, c.other, qPrintable(Pages::title(page)));
            }
            rig.model().setPage(Page::settings);
            for (const QString& section :
                 {QStringLiteral("Ansicht"), QStringLiteral("Bedienung"), QStringLiteral("Fokus & Daten")}) {
                rig.model().setSettingsSection(section);
                fits(root, c.other, qPrintable(section));
            }
        }
        rig.model().productivity().setMini(true);
        rig.model().setPage(Page::home);
        fits(root, {440, 112}, "mini");
        rig.model().setPage(Page::onboarding);
        for (int step = 0; step <= OnboardingState::lastStep; ++step) {
            rig.model().onboarding().setStep(step);
            fits(root, {640, 528}, "onboarding");
        }
    }
};

int runRootViewTests(int argc, char** argv)
{
    RootViewTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RootViewTest.moc"
