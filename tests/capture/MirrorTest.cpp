#include "CaptureTests.h"
#include "TestSupport.h"

#include "capture/CameraMirror.h"
#include "capture/widgets/CameraMirrorPane.h"
#include "capture/widgets/CapturePage.h"
#include "capture/widgets/CapturePane.h"
#include "ui/SegmentedControl.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

using Device = CameraFeed::Device;
const Device builtIn{"int0", QStringLiteral("Integrated Camera"), CameraFeed::DeviceType::builtInWideAngle};
const Device usb{"usb1", QStringLiteral("USB Camera"), CameraFeed::DeviceType::external};

} // namespace

// The mirror's start, stop and every way a start can end, on the memory camera; and the page
// that owns it switching the camera off when it goes away.
class MirrorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void startEndsWithTheRightStatus_data()
    {
        QTest::addColumn<QList<Device>>("devices");
        QTest::addColumn<int>("result");
        QTest::addColumn<bool>("running");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QByteArray>("used");
        const int ok = int(CameraFeed::StartResult::running);
        QTest::newRow("no camera")
            << QList<Device>{} << ok << false
            << QStringLiteral("Keine Kamera gefunden. Verbinde eine Kamera und versuche es erneut.")
            << QByteArray();
        QTest::newRow("built-in preferred")
            << QList<Device>{usb, builtIn} << ok << true << QStringLiteral("Spiegel aktiv · keine Aufnahme")
            << QByteArray("int0");
        QTest::newRow("external only")
            << QList<Device>{usb} << ok << true << QStringLiteral("Spiegel aktiv · keine Aufnahme")
            << QByteArray("usb1");
        QTest::newRow("cannot open") << QList<Device>{usb} << int(CameraFeed::StartResult::cannotOpen)
                                     << false
                                     << QStringLiteral(
                                            "Kamera konnte nicht geöffnet werden. Bitte erneut versuchen.")
                                     << QByteArray("usb1");
        QTest::newRow("input rejected")
            << QList<Device>{usb} << int(CameraFeed::StartResult::inputRejected) << false
            << QStringLiteral("Kamera ist momentan nicht verfügbar.") << QByteArray("usb1");
        QTest::newRow("busy elsewhere")
            << QList<Device>{usb} << int(CameraFeed::StartResult::notRunning) << false
            << QStringLiteral(
                   "Kamera konnte nicht gestartet werden. Prüfe, ob sie von einer anderen App belegt ist.")
            << QByteArray("usb1");
    }

    void startEndsWithTheRightStatus()
    {
        QFETCH(QList<Device>, devices);
        QFETCH(int, result);
        QFETCH(bool, running);
        QFETCH(QString, status);
        QFETCH(QByteArray, used);
        MemoryCameraFeed feed;
        feed.setDevices(devices);
        feed.setStartResult(CameraFeed::StartResult(result));
        CameraMirror mirror(feed);
        QCOMPARE(mirror.status(), QStringLiteral("Frontkamera als Spiegel verwenden."));
        mirror.start();
        QVERIFY(mirror.starting());
        QCOMPARE(mirror.status(), QStringLiteral("Kamera wird vorbereitet …"));
        // Pressed twice before the first start answered: still one start.
        mirror.start();
        QTRY_VERIFY(!mirror.starting());
        QCOMPARE(mirror.running(), running);
        QCOMPARE(mirror.status(), status);
        QCOMPARE(feed.startedDevices(), used.isEmpty() ? QList<QByteArray>{} : QList<QByteArray>{used});
    }

    void stopDuringTheAccessQuestionWins()
    {
        MemoryCameraFeed feed;
        feed.setDevices({builtIn});
        feed.setAuthorization(CameraFeed::Authorization::notDetermined);
        CameraMirror mirror(feed);
        mirror.start();
        QCOMPARE(feed.accessQuestions(), 1);
        mirror.stop();
        QCOMPARE(mirror.status(), QStringLiteral("Spiegel beendet."));
        QVERIFY(feed.answerAccess(true));
        QTRY_COMPARE(feed.stops(), 1);
        QVERIFY(!mirror.running() && !mirror.starting());
        QVERIFY(feed.startedDevices().isEmpty());
    }

    void refusalAndInterruption()
    {
        MemoryCameraFeed feed;
        feed.setDevices({builtIn});
        feed.setAuthorization(CameraFeed::Authorization::notDetermined);
        CameraMirror mirror(feed);
        mirror.start();
        QVERIFY(feed.answerAccess(false));
        QVERIFY(mirror.denied());
        QVERIFY(!mirror.starting());
        QVERIFY(mirror.status().startsWith(QStringLiteral("Kamera nicht freigegeben.")));

        // Allowed afterwards: a new start clears the refusal and runs.
        feed.setAuthorization(CameraFeed::Authorization::authorized);
        mirror.start();
        QVERIFY(!mirror.denied());
        QTRY_VERIFY(mirror.running());
        QSignalSpy frames(&mirror, &CameraMirror::frameChanged);
        QImage picture(4, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        Q_EMIT feed.frameArrived(picture);
        QTRY_COMPARE(frames.size(), 1);
        QCOMPARE(mirror.frame(), picture);

        // Sleep or a locked screen: off, and it stays off until started again.
        feed.pauseSession();
        QVERIFY(!mirror.running());
        QTRY_VERIFY(!feed.running());
        mirror.start();
        QTRY_VERIFY(mirror.running());

        const int stopsBefore = feed.stops();
        Q_EMIT feed.interrupted();
        QTRY_VERIFY(!mirror.running());
        QCOMPARE(mirror.status(), QStringLiteral("Kamera wurde unterbrochen. Bitte erneut starten."));
        QVERIFY(mirror.frame().isNull());
        QTRY_COMPARE(feed.stops(), stopsBefore + 1);
        QVERIFY(!feed.running());
    }

    void leavingTheMirrorSwitchesTheCameraOff()
    {
        ModelFixture fixture;
        MemoryCameraFeed& feed = fixture.memory.cameraFeed;
        feed.setDevices({usb});
        CapturePage page(fixture.model->screenCapture(), feed);
        page.resize(600, 400);
        page.show();
        QVERIFY(!page.mirrorPane());
        page.choice()->button(QStringLiteral("Spiegel"))->click();
        QVERIFY(page.mirrorPane());
        CameraMirrorPane& pane = *page.mirrorPane();
        QCOMPARE(pane.toggleButton()->text(), QStringLiteral("Spiegel starten"));
        pane.toggleButton()->click();
        QTRY_VERIFY(feed.running());
        QTRY_COMPARE(pane.toggleButton()->text(), QStringLiteral("Stoppen"));

        // The panel closing hides the page: the camera goes off.
        page.hide();
        QTRY_VERIFY(!feed.running());
        QCOMPARE(pane.statusText(), QStringLiteral("Spiegel beendet."));
        page.show();
        pane.toggleButton()->click();
        QTRY_VERIFY(feed.running());

        // Back to the capture side: the mirror and its camera are gone.
        page.choice()->button(QStringLiteral("Aufnahme"))->click();
        QVERIFY(!page.mirrorPane());
        QVERIFY(!feed.running());
    }
};

int runMirrorTests(int argc, char** argv)
{
    MirrorTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "MirrorTest.moc"
