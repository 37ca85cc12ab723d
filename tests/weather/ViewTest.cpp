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
        rig.memory.location.addPlaces(QStringLiteral("Berlin"), {place});
        PanelState panel(*rig.domain.defaults);
        StatusMessage message(rig.memory.scheduler);
        WeatherHeader header(*rig.store, panel);
        WeatherPage page(*rig.store, rig.memory.location, message);
        QCOMPARE(header.button()->text(), QStringLiteral("Ort && Wetter"));
        QVERIFY(!header.temperature()->isVisibleTo(&header));
        QCOMPARE(page.permissionLine()->text(), QStringLiteral("Standort optional · noch nicht angefragt"));

        WeatherChooser* chooser = page.chooser();
        QCOMPARE(chooser->searchField()->placeholderText(), QStringLiteral("Stadt suchen …"));
        QTest::keyClicks(chooser->searchField(), QStringLiteral("Berlin"));
        QTest::keyClick(chooser->searchField(), Qt::Key_Return);
        QTRY_COMPARE(chooser->resultButtons().size(), 1);
        QCOMPARE(chooser->resultButtons().first()->text(), QStringLiteral("Berlin · Deutschland"));
        chooser->resultButtons().first()->click();
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
