#include "StoreRig.h"
#include "WeatherTests.h"

#include "common/StatusMessage.h"
#include "model/PanelState.h"
#include "ui/SymbolLabel.h"
#include "weather/widgets/WeatherChooser.h"
#include "weather/widgets/WeatherHeader.h"
#include "weather/widgets/WeatherPage.h"
#include "weather/widgets/WeatherSettings.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>

// The weather's widgets bound to a store: header, page, chooser and settings.
class ViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void searchPickAndShow()
    {
        StoreRig rig;
        Placemark place;
        place.locality = QStringLiteral("Berlin");
        place.administrativeArea = QStringLiteral("Berlin");
        place.country = QStringLiteral("Deutschland");
        place.latitude = 52.52;
        place.longitude = 13.41;
        Placemark namesake;
        namesake.locality = QStringLiteral("Berlin");
        namesake.administrativeArea = QStringLiteral("New Hampshire");
        namesake.country = QStringLiteral("Vereinigte Staaten");
        namesake.latitude = 44.4687;
        namesake.longitude = -71.1851;
        rig.memory.location.addPlaces(QStringLiteral("Berlin"), {place, namesake});
        PanelState panel(*rig.domain.defaults);
        StatusMessage message(rig.memory.scheduler);
        WeatherHeader header(*rig.store, panel);
        WeatherPage page(*rig.store, rig.memory.location, message);
        QCOMPARE(header.button()->text(), QStringLiteral("Ort && Wetter"));
        QVERIFY(!header.temperature()->isVisibleTo(&header));
        QCOMPARE(page.permissionLine()->text(), QStringLiteral("Standort optional · noch nicht angefragt"));

        WeatherChooser* chooser = page.chooser();
        QCOMPARE(chooser->searchField()->placeholderText(), QStringLiteral("Stadt suchen …"));
        QListView* results = chooser->resultView();
        page.resize(420, 700);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        QVERIFY(!results->isVisible());

        // A click takes the row under the pointer, not the first one.
        QTest::keyClicks(chooser->searchField(), QStringLiteral("Berlin"));
        QTest::keyClick(chooser->searchField(), Qt::Key_Return);
        QTRY_COMPARE(results->model()->rowCount(), 2);
        QVERIFY(results->isVisible());
        QCOMPARE(results->model()->index(0, 0).data().toString(), QStringLiteral("Berlin · Deutschland"));
        const QModelIndex second = results->model()->index(1, 0);
        QCOMPARE(second.data().toString(), QStringLiteral("Berlin · New Hampshire, Vereinigte Staaten"));
        // Every row is shown whole: the list is as tall as its rows.
        QVERIFY(results->viewport()->rect().contains(results->visualRect(second)));
        QTest::mouseClick(results->viewport(), Qt::LeftButton, {}, results->visualRect(second).center());
        QVERIFY(rig.store->place());
        QCOMPARE(rig.store->place()->latitude, 44.47);
        QCOMPARE(rig.store->place()->country, QStringLiteral("Vereinigte Staaten"));
        QTRY_VERIFY(!results->isVisible());

        // From the field, Down and Return take the first result.
        QTest::keyClick(chooser->searchField(), Qt::Key_Return);
        QTRY_COMPARE(results->model()->rowCount(), 2);
        QTest::keyClick(chooser->searchField(), Qt::Key_Down);
        QTest::keyClick(results, Qt::Key_Return);
        QCOMPARE(rig.store->place()->latitude, 52.52);
        QTRY_COMPARE(header.temperature()->text(), QStringLiteral("-2°"));
        QCOMPARE(header.placeName(), QStringLiteral("Berlin"));
        QCOMPARE(header.button()->text(), QStringLiteral("Berlin"));
        QCOMPARE(header.symbol()->symbol(), QStringLiteral("cloud.snow.fill"));
        QCOMPARE(page.temperature()->text(), QStringLiteral("-2°"));
        QCOMPARE(page.description()->text(), QStringLiteral("Schnee"));
        QCOMPARE(page.statusLine()->text(),
                 QStringLiteral("Schnee · Modellprognose für die aktuelle Stunde"));
        QVERIFY(page.placeLine()->text().startsWith(QStringLiteral("Berlin · Aktualisiert ")));

        // The header leads to the page; a long name is shortened but kept whole for the tooltip.
        header.button()->click();
        QCOMPARE(panel.page(), Page::weather);
        rig.store->select(
            WeatherPlace{0, QString(300, QChar(u'W')), 52.52, 13.41, std::nullopt, std::nullopt});
        QVERIFY(header.button()->text().size() < 300);
        QCOMPARE(header.placeName().size(), 300);

        // No location settings on this desktop: said so in the status line.
        page.settingsButton()->click();
        QVERIFY(message.text().contains(QStringLiteral("Ortungsdienst")));
        rig.memory.location.setSettingsAvailable(true);
        page.settingsButton()->click();
        QCOMPARE(rig.memory.location.settingsOpened(), 1);
    }

    void settingsSwitchTheWeatherOff()
    {
        StoreRig rig;
        PanelState panel(*rig.domain.defaults);
        WeatherSettings settings(*rig.store, panel);
        QCOMPARE(settings.setupButton()->text(), QStringLiteral("Ort && Wetter einrichten"));
        QVERIFY(!settings.offButton()->isEnabled());
        rig.store->select(berlin());
        QVERIFY(settings.offButton()->isEnabled());
        settings.offButton()->click();
        QVERIFY(!rig.store->place());
        QVERIFY(!rig.domain.defaults->contains(QStringLiteral("weather.place")));
        settings.setupButton()->click();
        QCOMPARE(panel.page(), Page::weather);
    }
};

int runViewTests(int argc, char** argv)
{
    ViewTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ViewTest.moc"
