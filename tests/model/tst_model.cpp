#include "TestSupport.h"

#include "productivity/Productivity.h"
#include "settings/Json.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

// Settings domain, preferences and the central model's own rules.
class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void settingsKeepTheirTypesAcrossARestart()
    {
        ScratchDomain domain;
        Defaults& defaults = *domain.defaults;
        const QDateTime date = QDateTime(QDate(2026, 5, 1), QTime(12, 30, 15, 250), Qt::UTC);
        defaults.setBool(QStringLiteral("b"), false);
        defaults.setInteger(QStringLiteral("i"), 1LL << 40);
        defaults.setDouble(QStringLiteral("d"), 2.0);
        defaults.setString(QStringLiteral("s"), QStringLiteral("Grüße ✓"));
        defaults.setData(QStringLiteral("data"), QByteArray("\0\x01\xff", 3));
        defaults.setDate(QStringLiteral("date"), date);
        defaults.setStringArray(QStringLiteral("list"), {QStringLiteral("/a"), QStringLiteral("/b c")});

        Defaults& reopened = domain.reopen();
        QCOMPARE(reopened.boolValue(QStringLiteral("b")), std::optional<bool>(false));
        QCOMPARE(reopened.integerValue(QStringLiteral("i")), std::optional<qint64>(1LL << 40));
        // A double that happens to be whole stays a double, not an integer.
        QCOMPARE(reopened.value(QStringLiteral("d")).typeId(), int(QMetaType::Double));
        QCOMPARE(reopened.stringValue(QStringLiteral("s")),
                 std::optional<QString>(QStringLiteral("Grüße ✓")));
        QCOMPARE(reopened.dataValue(QStringLiteral("data")),
                 std::optional<QByteArray>(QByteArray("\0\x01\xff", 3)));
        QCOMPARE(reopened.dateValue(QStringLiteral("date")), std::optional<QDateTime>(date));
        QCOMPARE(reopened.stringArrayValue(QStringLiteral("list")).value(), QStringList({"/a", "/b c"}));
        // Wrong-type reads give nothing rather than a converted value.
        QVERIFY(!reopened.boolValue(QStringLiteral("s")));
        QVERIFY(!reopened.dateValue(QStringLiteral("d")));
        QVERIFY(!reopened.stringValue(QStringLiteral("missing")));
    }

    void recordEncodingFollowsTheReferenceDate()
    {
        QCOMPARE(Json::encodeDate(QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC)), 0.0);
        QCOMPARE(Json::encodeDate(QDateTime(QDate(2001, 1, 1), QTime(0, 1, 0, 500), Qt::UTC)), 60.5);
        const QUuid id = QUuid::createUuid();
        const QString text = Json::encodeUuid(id);
        QCOMPARE(text, text.toUpper());
        QCOMPARE(text.size(), 36);
        QCOMPARE(Json::decodeUuid(text), std::optional<QUuid>(id));
        QVERIFY(!Json::decodeUuid(QStringLiteral("not-a-uuid")));
    }

    void preferencesDecodeStrictly_data()
    {
        QTest::addColumn<QByteArray>("document");
        PreferenceValues values;
        values.layout = PanelLayout::wide;
        QJsonObject object = QJsonDocument::fromJson(values.encode()).object();
        QJsonObject missing = object;
        missing.remove(u"focusSound"_qs);
        QJsonObject wrongType = object;
        wrongType[u"hover"] = u"yes"_qs;
        QJsonObject fractional = object;
        fractional[u"focusMinutes"] = 25.5;
        QJsonObject unknownLayout = object;
        unknownLayout[u"layout"] = u"round"_qs;
        QTest::newRow("missing key") << QJsonDocument(missing).toJson();
        QTest::newRow("wrong type") << QJsonDocument(wrongType).toJson();
        QTest::newRow("fractional integer") << QJsonDocument(fractional).toJson();
        QTest::newRow("unknown layout") << QJsonDocument(unknownLayout).toJson();
        QTest::newRow("not json") << QByteArray("{layout:");
    }

    void preferencesDecodeStrictly()
    {
        QFETCH(QByteArray, document);
        ScratchDomain domain;
        domain.defaults->setData(QString::fromLatin1(Preferences::storageKey), document);
        Preferences preferences(*domain.defaults);
        QCOMPARE(preferences.values(), PreferenceValues{});
        // The unreadable document was replaced by the defaults.
        QCOMPARE(PreferenceValues::decode(
                     *domain.defaults->dataValue(QString::fromLatin1(Preferences::storageKey))),
                 std::optional<PreferenceValues>(PreferenceValues{}));
    }

    void hoverMigrationRunsOnce_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<double>("expected");
        QTest::newRow("former default") << 0.12 << 0.0;
        QTest::newRow("within a ten-thousandth") << 0.1201 << 0.0;
        QTest::newRow("chosen by the user") << 0.3 << 0.3;
    }

    void hoverMigrationRunsOnce()
    {
        QFETCH(double, stored);
        QFETCH(double, expected);
        ScratchDomain domain;
        PreferenceValues values;
        values.openDelay = stored;
        domain.defaults->setData(QString::fromLatin1(Preferences::storageKey), values.encode());
        int changes = 0;
        {
            Preferences preferences(*domain.defaults);
            QCOMPARE(preferences.values().openDelay, expected);
        }
        Defaults& reopened = domain.reopen();
        QCOMPARE(reopened.boolValue(QString::fromLatin1(Preferences::migrationKey)),
                 std::optional<bool>(true));
        values.openDelay = 0.12;
        reopened.setData(QString::fromLatin1(Preferences::storageKey), values.encode());
        Preferences again(reopened);
        QObject::connect(&again, &Preferences::valuesAssigned, &again, [&changes] { ++changes; });
        QCOMPARE(again.values().openDelay, 0.12);
        again.update([](PreferenceValues& v) { v.closeDelay = 1.0; });
        QCOMPARE(changes, 1);
        QCOMPARE(Preferences(domain.reopen()).values().closeDelay, 1.0);
    }

    void freshModelStartsFromTheTable()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        QCOMPARE(model.page(), Page::home);
        QCOMPARE(model.seconds(), 1500);
        QCOMPARE(model.duration(), 1500);
        QVERIFY(model.recording());
        QVERIFY(!model.mediaEnabled());
        // The memory platform has no applications folder, so there are no first-start favourites.
        QVERIFY(model.apps().isEmpty());
        QCOMPARE(model.notices().size(), 1);
        QCOMPARE(model.notices().first().title, QStringLiteral("Willkommen bei Brenlow"));
        QCOMPARE(model.notchWidth(), 185.0);
        QCOMPARE(model.commandStatus(), QStringLiteral("Andere App aktivieren und Command halten."));
        // No services: no heartbeat, and nothing ticks by itself.
        QVERIFY(!model.heartbeatRunning());
        QCOMPARE(model.ticks(), 0);
        model.tick();
        QCOMPARE(model.ticks(), 1);
    }

    void focusLengthComesFromThePreferences()
    {
        ModelFixture fixture;
        fixture.model->preferences().update([](PreferenceValues& v) { v.focusMinutes = 50; });
        // A stored period takes precedence; without one the preference decides.
        fixture.domain.defaults->remove(QStringLiteral("focus.savedDuration"));
        QCOMPARE(fixture.restart().duration(), 3000);
    }

    void pageIsStoredAndRestored()
    {
        ModelFixture fixture;
        int resizes = 0;
        QObject::connect(fixture.model.get(), &Model::resize, fixture.model.get(), [&resizes] { ++resizes; });
        fixture.model->setPage(Page::clipboard);
        QCOMPARE(resizes, 1);
        QCOMPARE(fixture.domain.defaults->stringValue(QStringLiteral("lastPage")),
                 std::optional<QString>(u"Verlauf"_qs));
        QCOMPARE(fixture.restart().page(), Page::clipboard);

        // Not restored while the preference is off; the tour and unknown titles never are.
        fixture.model->preferences().update([](PreferenceValues& v) { v.rememberPage = false; });
        QCOMPARE(fixture.restart().page(), Page::home);
        fixture.model->preferences().update([](PreferenceValues& v) { v.rememberPage = true; });
        for (const QString& title : {QStringLiteral("Einführung"), QStringLiteral("Nirgendwo")}) {
            fixture.domain.defaults->setString(QStringLiteral("lastPage"), title);
            QCOMPARE(fixture.restart().page(), Page::home);
        }
    }

    void messageClearsSixSecondsAfterItsLastChange()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        ManualScheduler& scheduler = fixture.memory.scheduler;
        model.setMessage(QStringLiteral("A"));
        scheduler.advance(4);
        model.setMessage(QStringLiteral("B"));
        scheduler.advance(5.9);
        QCOMPARE(model.message(), QStringLiteral("B"));
        scheduler.advance(0.1);
        QCOMPARE(model.message(), QString());

        model.setMessage(QStringLiteral("C"));
        model.setMessage(QString());
        QCOMPARE(scheduler.pending(), 0);
    }

    void preferenceChangesReachTheDelegateSlots()
    {
        ModelFixture fixture;
        QStringList calls;
        Model* model = fixture.model.get();
        QObject::connect(model, &Model::applyPreferences, model,
                         [&calls] { calls.append(QStringLiteral("apply")); });
        QObject::connect(model, &Model::resize, model, [&calls] { calls.append(QStringLiteral("resize")); });
        fixture.model->preferences().update([](PreferenceValues& v) { v.layout = PanelLayout::tall; });
        QCOMPARE(calls, QStringList({"apply", "resize"}));
    }

    void switchesPersist()
    {
        ModelFixture fixture;
        fixture.model->setRecording(false);
        fixture.model->setMediaEnabled(true);
        Model& restarted = fixture.restart();
        QVERIFY(!restarted.recording());
        QVERIFY(restarted.mediaEnabled());
        // A value of the wrong type counts as missing.
        fixture.domain.defaults->setString(QStringLiteral("recording"), QStringLiteral("no"));
        QVERIFY(fixture.restart().recording());
    }

    void finishingTheTourReturnsToTheOverview()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        std::optional<Page> shown;
        QObject::connect(&model, &Model::show, &model, [&shown](std::optional<Page> page) { shown = page; });
        model.onboarding().begin(false);
        model.onboarding().setStep(2);
        model.setPage(Page::onboarding);
        model.setPanelPinned(true);
        model.finishWelcome();
        QVERIFY(model.onboarding().completed());
        QVERIFY(!model.onboarding().active());
        QCOMPARE(model.page(), Page::home);
        QVERIFY(!model.panelPinned());
        QCOMPARE(shown, std::optional<Page>(Page::home));
        QVERIFY(fixture.restart().onboarding().completed());
    }

    void onboardingStepIsClamped()
    {
        ScratchDomain domain;
        domain.defaults->setInteger(QStringLiteral("welcome.step"), 99);
        QCOMPARE(OnboardingState(*domain.defaults).step(), 5);
        domain.defaults->setInteger(QStringLiteral("welcome.step"), 3);
        OnboardingState state(*domain.defaults);
        QCOMPARE(state.step(), 3);
        QVERIFY(!state.completed());
        state.setStep(-4);
        QCOMPARE(state.step(), 0);
        state.setStep(4);
        state.begin(true);
        QCOMPARE(state.step(), 0);
        QVERIFY(state.active());
    }

    void pagesKnowTheirTitlesAndTabs()
    {
        QCOMPARE(Pages::tabs(), QList<Page>({Page::home, Page::search, Page::shelf, Page::clipboard,
                                             Page::notes, Page::workspaces, Page::commands}));
        for (Page page : Pages::all())
            QCOMPARE(Pages::fromTitle(Pages::title(page)), std::optional<Page>(page));
        QCOMPARE(Pages::headline(Page::commands, QStringLiteral("Kate")), QStringLiteral("Kate"));
        QCOMPARE(Pages::headline(Page::settings, {}), QStringLiteral("Mach’s zu deinem."));
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
