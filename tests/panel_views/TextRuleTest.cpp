#include "PanelViewsTests.h"
#include "TestSupport.h"

#include "devices/DeviceTexts.h"
#include "focus/FocusTexts.h"
#include "setup/OnboardingTexts.h"
#include "shell/HeaderButtons.h"
#include "shell/PanelClock.h"
#include "shell/PanelContent.h"
#include "shell/SettingsTexts.h"
#include "shell/StatusLine.h"
#include "ui/Symbol.h"

#include <QFile>
#include <QRawFont>
#include <QTest>

// The texts and rules the views only display: status line, device lines, what the panel shows,
// settings formats, the tour's navigation and the symbol table.
class TextRuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void statusLineNamesTheShortcutOrTheTab()
    {
        QCOMPARE(StatusLine::text(QString(), HistoryShortcut::optionV),
                 QStringLiteral("⌥ V  Verlauf · ⌘ halten  Befehle"));
        QCOMPARE(StatusLine::text(QString(), HistoryShortcut::controlShiftV),
                 QStringLiteral("⌃ ⇧ V  Verlauf · ⌘ halten  Befehle"));
        QCOMPARE(StatusLine::text(QString(), HistoryShortcut::off),
                 QStringLiteral("Verlauf über den Tab öffnen · ⌘ halten  Befehle"));
        // A message replaces the whole hint, whatever the shortcut.
        QCOMPARE(StatusLine::text(QStringLiteral("Gesichert."), HistoryShortcut::off),
                 QStringLiteral("Gesichert."));
        QCOMPARE(StatusLine::trailing(), QStringLiteral("BRENLOW"));
    }

    void microphoneLineLetsMuteWinOverActivity()
    {
        QCOMPARE(DeviceTexts::microphoneLine(true, true), QStringLiteral("Mikrofon stumm"));
        QCOMPARE(DeviceTexts::microphoneLine(true, false), QStringLiteral("Mikrofon stumm"));
        QCOMPARE(DeviceTexts::microphoneLine(false, true), QStringLiteral("Mikrofon aktiv"));
        QCOMPARE(DeviceTexts::microphoneLine(false, false), QStringLiteral("Mikrofon bereit"));
        QCOMPARE(DeviceTexts::cameraLine(true), QStringLiteral("Kamera aktiv"));
        QCOMPARE(DeviceTexts::cameraLine(false), QStringLiteral("Kamera nicht aktiv"));
        QCOMPARE(DeviceTexts::microphoneHint(false),
                 QStringLiteral("Keine Mikrofonaktivität am Standard-Eingabegerät erkannt"));
        // The mini overview has no mute state: only in use or ready.
        QCOMPARE(DeviceTexts::miniMicrophone(true), QStringLiteral("Mikrofon aktiv"));
    }

    void powerCardPrefersTheAudioDevice()
    {
        QCOMPARE(DeviceTexts::powerTitle(true, 80), QStringLiteral("MacBook · 80 %"));
        QCOMPARE(DeviceTexts::powerTitle(false, 0), QStringLiteral("Netzbetrieb"));
        QCOMPARE(DeviceTexts::powerDetail({QStringLiteral("Kopfhörer"), QStringLiteral("Box")}, true),
                 QStringLiteral("Kopfhörer"));
        QCOMPARE(DeviceTexts::powerDetail({}, true), QStringLiteral("Wird mit Strom versorgt"));
        QCOMPARE(DeviceTexts::powerDetail({}, false), QStringLiteral("Keine Bluetooth-Audiogeräte"));
        QCOMPARE(DeviceTexts::batterySymbol(true), QStringLiteral("battery.100percent.bolt"));
        QCOMPARE(DeviceTexts::miniBattery(true, 42), QStringLiteral("Akku 42 %"));
    }

    void panelContentFollowsIntroThenOpenThenPage()
    {
        using K = PanelContent;
        // The glow wins even over a closed panel and the tour.
        QCOMPARE(K::choose(true, false, Page::onboarding, true), K::glow);
        QCOMPARE(K::choose(false, false, Page::onboarding, false), K::nothing);
        QCOMPARE(K::choose(false, false, Page::home, true), K::nothing);
        // The tour shows even with mini mode on.
        QCOMPARE(K::choose(false, true, Page::onboarding, true), K::onboarding);
        QCOMPARE(K::choose(false, true, Page::home, true), K::mini);
        // Mini mode shrinks only the overview.
        QCOMPARE(K::choose(false, true, Page::settings, true), K::full);
        QCOMPARE(K::choose(false, true, Page::home, false), K::full);
    }

    void headerButtonsKeepTheirOrderAndDropTheMenuBarButton()
    {
        QStringList withMenuApps;
        for (const HeaderButtons::Entry& entry : HeaderButtons::entries(true))
            withMenuApps.append(entry.hint);
        QCOMPARE(withMenuApps,
                 (QStringList{QStringLiteral("Panel offen halten"), QStringLiteral("Menüleisten-Apps"),
                              QStringLiteral("Screenshot, Bildschirmaufnahme & Kameraspiegel"),
                              QStringLiteral("Einstellungen"), QStringLiteral("Mini-Modus"),
                              QStringLiteral("Schließen · Escape")}));
        const auto without = HeaderButtons::entries(false);
        QCOMPARE(without.size(), 5);
        for (const HeaderButtons::Entry& entry : without)
            QVERIFY(entry.action != HeaderButtons::menuApps);
    }

    void settingsFormatsAndLimits()
    {
        QCOMPARE(SettingsTexts::delayText(0.0), QStringLiteral("0.00 s"));
        QCOMPARE(SettingsTexts::delayText(0.5), QStringLiteral("0.50 s"));
        QCOMPARE(SettingsTexts::delayText(1.255), QStringLiteral("1.25 s"));
        // Slider positions and seconds convert both ways without drift at the range ends.
        for (double seconds : {0.0, 0.2, 0.8, 1.5, 2.0})
            QCOMPARE(SettingsTexts::sliderToDelay(SettingsTexts::delayToSlider(seconds)), seconds);
        QCOMPARE(FocusTexts::stepFocusMinutes(1, -1), 1);
        QCOMPARE(FocusTexts::stepFocusMinutes(120, 1), 120);
        QCOMPARE(FocusTexts::stepFocusMinutes(25, 1), 26);
        QCOMPARE(FocusTexts::focusStepper(25), QStringLiteral("Standard-Fokus: 25 Minuten"));
        QCOMPARE(SettingsTexts::layoutCaption(PanelLayout::tall),
                 QStringLiteral("Karten untereinander · Änderungen werden sofort übernommen."));
        QCOMPARE(SettingsTexts::sections().first(), QStringLiteral("Menüleiste"));
        QCOMPARE(SettingsTexts::productLine(), QStringLiteral("BRENLOW 0.8.3"));
    }

    void focusPresetsMatchWholeMinutesOnly()
    {
        QCOMPARE(FocusTexts::presets(), (QList<int>{5, 15, 30, 45, 60}));
        QCOMPARE(FocusTexts::presetLabel(45), QStringLiteral("45 Min"));
        QVERIFY(FocusTexts::presetSelected(15, 900));
        QVERIFY(!FocusTexts::presetSelected(15, 901));
        QCOMPARE(FocusTexts::caption(true), QStringLiteral("Zeit für deinen Flow."));
        QCOMPARE(FocusTexts::caption(false), QStringLiteral("Bereit, wenn du es bist."));
    }

    void tourNavigationTexts()
    {
        QCOMPARE(OnboardingTexts::primary(0), QStringLiteral("Los geht\u2019s"));
        QCOMPARE(OnboardingTexts::primary(3), QStringLiteral("Weiter"));
        QCOMPARE(OnboardingTexts::primary(5), QStringLiteral("Brenlow starten"));
        QVERIFY(OnboardingTexts::primaryFinishes(5));
        QVERIFY(!OnboardingTexts::primaryFinishes(4));
        QVERIFY(!OnboardingTexts::hasBack(0));
        QVERIFY(OnboardingTexts::hasBack(1));
        QVERIFY(!OnboardingTexts::badge(0));
        QCOMPARE(OnboardingTexts::badge(4),
                 std::optional<QString>(QStringLiteral("Optional · später änderbar")));
        QVERIFY(!OnboardingTexts::badge(5));
        QCOMPARE(OnboardingTexts::stepDescription(2), QStringLiteral("Einführung, Schritt 3 von 6"));
        // Out-of-range steps read as the nearest real one.
        QCOMPARE(OnboardingTexts::title(99), OnboardingTexts::title(5));
        QCOMPARE(OnboardingTexts::title(-1), QStringLiteral("Willkommen in deiner Notch."));
    }

    void tourStatesAndShortcutTip()
    {
        QCOMPARE(OnboardingTexts::content(1, {}, HistoryShortcut::controlV).state,
                 QStringLiteral("Bedienungshilfen noch nicht freigegeben"));
        QCOMPARE(OnboardingTexts::content(1, {true, false}, HistoryShortcut::controlV).state,
                 QStringLiteral("Bedienungshilfen freigegeben"));
        QCOMPARE(OnboardingTexts::content(4, {}, HistoryShortcut::controlV).state,
                 QStringLiteral("Bildschirmaufnahme in macOS einrichten"));
        QCOMPARE(OnboardingTexts::content(5, {}, HistoryShortcut::optionV).tips.first().title,
                 QStringLiteral("⌥ V · Copy-Verlauf"));
        QCOMPARE(OnboardingTexts::content(5, {}, HistoryShortcut::off).tips.first().title,
                 QStringLiteral("Copy-Verlauf"));
        QCOMPARE(OnboardingTexts::content(5, {}, HistoryShortcut::off).tips.size(), 4);
    }

    void clockReadsTwentyFourHoursAndWaitsForTheMinute()
    {
        const QDateTime evening(QDate(2026, 3, 7), QTime(21, 5, 45));
        QCOMPARE(PanelClock::time(evening), QStringLiteral("21:05"));
        QCOMPARE(PanelClock::dayMonth(evening), QStringLiteral("07.03."));
        QVERIFY(PanelClock::fullDate(evening).contains(QStringLiteral("März 2026")));
        QVERIFY(PanelClock::fullDate(evening).endsWith(QStringLiteral("21:05")));
        QCOMPARE(PanelClock::secondsToNextMinute(evening), 15.0);
        // Exactly on the minute the next refresh is a full minute away, never zero.
        QCOMPARE(PanelClock::secondsToNextMinute(QDateTime(QDate(2026, 3, 7), QTime(21, 6))), 60.0);
    }

    void everySymbolThePagesUseIsInTheTable()
    {
        QStringList used;
        for (Page page : Pages::tabs())
            used.append(Pages::tabSymbol(page));
        for (const HeaderButtons::Entry& entry : HeaderButtons::entries(true))
            used.append(entry.symbol);
        used << HeaderButtons::menuSymbol() << FocusTexts::toggleSymbol(true)
             << FocusTexts::toggleSymbol(false) << DeviceTexts::batterySymbol(true)
             << DeviceTexts::batterySymbol(false);
        for (PanelLayout layout : PanelLayouts::all())
            used.append(SettingsTexts::layoutSymbol(layout));
        for (int step = 0; step < OnboardingTexts::stepCount; ++step) {
            const auto content = OnboardingTexts::content(step, {}, HistoryShortcut::controlV);
            if (!content.symbol.isEmpty())
                used.append(content.symbol);
            for (const auto& tip : content.tips)
                used.append(tip.symbol);
        }
        for (const QString& name : used)
            QVERIFY2(Symbol::codePoint(name).has_value(), qPrintable(name));
        QCOMPARE(Symbol::text(QStringLiteral("no.such.symbol"), true), QStringLiteral("no.such.symbol"));
        QCOMPARE(Symbol::text(QStringLiteral("xmark"), false), QStringLiteral("xmark"));
    }

    void everyTableGlyphExistsInTheInstalledFont()
    {
        const QString path = QString::fromLatin1(Symbol::fontPath);
        if (!QFile::exists(path))
            QSKIP("fonts-material-design-icons-iconfont is not installed");
        const QRawFont font(path, 16);
        QVERIFY(font.isValid());
        for (const QString& name : Symbol::names())
            QVERIFY2(font.supportsCharacter(QChar(*Symbol::codePoint(name))), qPrintable(name));
        QVERIFY(Symbol::ensureFont());
        QVERIFY(Symbol::font(16).has_value());
    }
};

int runTextRuleTests(int argc, char** argv)
{
    TextRuleTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TextRuleTest.moc"
