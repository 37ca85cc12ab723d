#include "PanelTests.h"

#include "shell/NotchGeometry.h"

#include <QTest>

namespace {

// A built-in display whose camera housing sits between x 650 and 835 of its own frame.
DisplayInfo notched(QRectF frame, double inset = 32)
{
    const double left = frame.x() + 650;
    const double right = frame.x() + 835;
    return DisplayInfo{QStringLiteral("built-in"), frame, inset,
                       QRectF(frame.x(), frame.y(), left - frame.x(), inset),
                       QRectF(right, frame.y(), frame.right() - right, inset)};
}

DisplayInfo plain(QRectF frame)
{
    return DisplayInfo{QStringLiteral("plain"), frame, 0, std::nullopt, std::nullopt};
}

} // namespace

Q_DECLARE_METATYPE(DisplayInfo)

class GeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void displayChoice()
    {
        const QList<DisplayInfo> displays{plain(QRectF(0, 0, 1920, 1080)),
                                          notched(QRectF(1920, 0, 1512, 982)),
                                          plain(QRectF(-1280, 0, 1280, 1024))};
        QCOMPARE(NotchGeometry::chooseDisplay(displays, 2, false), std::optional<int>(1));
        QCOMPARE(NotchGeometry::chooseDisplay(displays, 2, true), std::optional<int>(0));

        const QList<DisplayInfo> flat{plain(QRectF(0, 0, 1920, 1080)), plain(QRectF(1920, 0, 2560, 1440))};
        QCOMPARE(NotchGeometry::chooseDisplay(flat, 1, false), std::optional<int>(1));
        QCOMPARE(NotchGeometry::chooseDisplay(flat, std::nullopt, false), std::optional<int>(0));
        QCOMPARE(NotchGeometry::chooseDisplay(flat, 7, false), std::optional<int>(0));
        QCOMPARE(NotchGeometry::chooseDisplay({}, 0, false), std::nullopt);
    }

    void measuredNotch()
    {
        const DisplayInfo display = notched(QRectF(0, 0, 1512, 982));
        const QRectF notch = NotchGeometry::notchRect(display);
        QCOMPARE(notch, QRectF(650, 0, 185, 32));
        // Closed, the panel is exactly the notch.
        const QSizeF closed = NotchGeometry::panelSize(PanelSizeInputs{}, notch.size());
        QCOMPARE(NotchGeometry::panelFrame(notch, display.frame, closed), notch);
    }

    void notchOnADisplayLeftOfAndBelowTheMain()
    {
        const DisplayInfo display = notched(QRectF(-1512, 98, 1512, 982));
        const QRectF notch = NotchGeometry::notchRect(display);
        QCOMPARE(notch, QRectF(-1512 + 650, 98, 185, 32));
        PanelSizeInputs open;
        open.expanded = true;
        const QRectF frame =
            NotchGeometry::panelFrame(notch, display.frame, NotchGeometry::panelSize(open, notch.size()));
        QCOMPARE(frame, QRectF(-1512 + 650 + 92.5 - 310, 98, 620, 378));
        QCOMPARE(frame.center().x(), notch.center().x());
    }

    void fallbackNotch_data()
    {
        QTest::addColumn<DisplayInfo>("display");
        QTest::addColumn<QRectF>("expected");
        const QRectF main(0, 0, 1920, 1080);
        QTest::newRow("no inset") << plain(main) << QRectF(880, 0, 160, 24);
        DisplayInfo noAreas = notched(main);
        noAreas.auxiliaryTopRight.reset();
        QTest::newRow("missing area") << noAreas << QRectF(880, 0, 160, 24);
        DisplayInfo touching = notched(main);
        touching.auxiliaryTopLeft->setRight(touching.auxiliaryTopRight->left());
        QTest::newRow("areas meet") << touching << QRectF(880, 0, 160, 24);
        DisplayInfo overlapping = notched(main);
        overlapping.auxiliaryTopLeft->setRight(900);
        QTest::newRow("areas overlap") << overlapping << QRectF(880, 0, 160, 24);
        DisplayInfo zeroInset = notched(main, 0);
        QTest::newRow("areas but no inset") << zeroInset << QRectF(880, 0, 160, 24);
        QTest::newRow("display above right")
            << plain(QRectF(1920, -1440, 2560, 1440)) << QRectF(1920 + 1280 - 80, -1440, 160, 24);
    }

    void fallbackNotch()
    {
        QFETCH(DisplayInfo, display);
        QFETCH(QRectF, expected);
        QCOMPARE(NotchGeometry::notchRect(display), expected);
    }

    void activationAreaGrowsSidewaysAndDownOnly()
    {
        for (double height : {24.0, 32.0, 37.0}) {
            const DisplayInfo display = notched(QRectF(0, 0, 1512, 982), height);
            const QRectF notch = NotchGeometry::notchRect(display);
            QCOMPARE(NotchGeometry::panelSize(PanelSizeInputs{}, notch.size()).height(), height);
            const QRectF area = NotchGeometry::activationRect(notch);
            QCOMPARE(area, QRectF(646, 0, 193, height + 6));
            // Edges belong to it; one step beyond does not.
            QVERIFY(NotchGeometry::contains(area, QPointF(646, 0)));
            QVERIFY(NotchGeometry::contains(area, QPointF(839, height + 6)));
            QVERIFY(!NotchGeometry::contains(area, QPointF(645.5, 10)));
            QVERIFY(!NotchGeometry::contains(area, QPointF(700, height + 6.5)));
            QVERIFY(!NotchGeometry::contains(area, QPointF(700, -0.5)));
        }
        QVERIFY(!NotchGeometry::contains(QRectF(10, 10, 0, 20), QPointF(10, 15)));
    }

    void panelSizes_data()
    {
        QTest::addColumn<bool>("intro");
        QTest::addColumn<bool>("expanded");
        QTest::addColumn<Page>("page");
        QTest::addColumn<bool>("mini");
        QTest::addColumn<PanelLayout>("layout");
        QTest::addColumn<QSizeF>("size");
        const auto balanced = PanelLayout::balanced;
        QTest::newRow("glow beats open")
            << true << true << Page::home << false << balanced << QSizeF(209, 48);
        QTest::newRow("closed") << false << false << Page::settings << true << PanelLayout::wide
                                << QSizeF(185, 32);
        QTest::newRow("tour, even mini")
            << false << true << Page::onboarding << true << PanelLayout::tall << QSizeF(640, 528);
        QTest::newRow("mini overview")
            << false << true << Page::home << true << PanelLayout::wide << QSizeF(440, 112);
        QTest::newRow("mini only on home")
            << false << true << Page::notes << true << balanced << QSizeF(620, 466);
        QTest::newRow("wide home") << false << true << Page::home << false << PanelLayout::wide
                                   << QSizeF(800, 378);
        QTest::newRow("wide other") << false << true << Page::clipboard << false << PanelLayout::wide
                                    << QSizeF(800, 426);
        QTest::newRow("balanced home")
            << false << true << Page::home << false << balanced << QSizeF(620, 378);
        QTest::newRow("balanced other")
            << false << true << Page::commands << false << balanced << QSizeF(620, 466);
        QTest::newRow("tall home") << false << true << Page::home << false << PanelLayout::tall
                                   << QSizeF(520, 556);
        QTest::newRow("tall other") << false << true << Page::weather << false << PanelLayout::tall
                                    << QSizeF(520, 556);
    }

    void panelSizes()
    {
        QFETCH(bool, intro);
        QFETCH(bool, expanded);
        QFETCH(Page, page);
        QFETCH(bool, mini);
        QFETCH(PanelLayout, layout);
        QFETCH(QSizeF, size);
        const PanelSizeInputs state{intro, expanded, page, mini, layout};
        QCOMPARE(NotchGeometry::panelSize(state, QSizeF(185, 32)), size);
    }
};

int runGeometryTests(int argc, char** argv)
{
    GeometryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "GeometryTest.moc"
