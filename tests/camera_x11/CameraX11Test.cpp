#include "TestSupport.h"

#include "capture/CameraMirror.h"
#include "capture/widgets/CameraMirrorPane.h"
#include "capture/widgets/MirrorPreview.h"
#include "platform/linux/LinuxCameraFeed.h"

#include <QCameraDevice>
#include <QDir>
#include <QFile>
#include <QMediaDevices>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

// The mirror on Qt Multimedia: first with no camera at all, then with a camera published through
// a private PipeWire by GStreamer's test picture (the colour bars: white at the left edge, blue at
// the right), which the mirror must show flipped.
class CameraX11Test : public QObject
{
    Q_OBJECT

    QTemporaryDir m_runtime;
    std::vector<std::unique_ptr<QProcess>> m_services;

    static bool childRun() { return qEnvironmentVariableIsSet("BRENLOW_CAMERA_TEST_CHILD"); }

    bool startService(const QString& program, const QStringList& arguments)
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->setStandardOutputFile(QProcess::nullDevice());
        process->start(program, arguments);
        if (!process->waitForStarted(5000))
            return false;
        m_services.push_back(std::move(process));
        return true;
    }

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        QVERIFY(m_runtime.isValid());
        QFile::setPermissions(m_runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        // Before Qt Multimedia looks for devices: only our own PipeWire is to be found.
        qputenv("XDG_RUNTIME_DIR", m_runtime.path().toUtf8());
        qputenv("PIPEWIRE_RUNTIME_DIR", m_runtime.path().toUtf8());
        if (childRun())
            return;
        // Qt looks for cameras once, so the camera is there before it first looks.
        for (const char* program : {"pipewire", "wireplumber", "gst-launch-1.0"})
            QVERIFY2(!QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty(), program);
        QVERIFY(startService(QStringLiteral("pipewire"), {}));
        QTest::qWait(300);
        QVERIFY(startService(QStringLiteral("wireplumber"), {}));
        QTest::qWait(500);
        // YUY2: with the default format QCamera::start() never returns.
        QVERIFY(startService(
            QStringLiteral("gst-launch-1.0"),
            {QStringLiteral("-q"), QStringLiteral("videotestsrc"), QStringLiteral("is-live=true"),
             QStringLiteral("!"),
             QStringLiteral("video/x-raw,format=YUY2,width=320,height=240,framerate=10/1"),
             QStringLiteral("!"), QStringLiteral("pipewiresink"), QStringLiteral("mode=provide"),
             QStringLiteral("stream-properties=props,media.class=Video/Source,node.description=FakeCam")}));
        QTest::qWait(1500);
    }

    void cleanupTestCase()
    {
        // Newest first: the picture source, then the session manager, then PipeWire.
        while (!m_services.empty()) {
            m_services.back()->terminate();
            m_services.back()->waitForFinished(5000);
            m_services.pop_back();
        }
    }

    // In a child process with a runtime folder of its own, where no PipeWire runs.
    void noCameraSaysSo()
    {
        if (!childRun()) {
            QProcess child;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(QStringLiteral("BRENLOW_CAMERA_TEST_CHILD"), QStringLiteral("1"));
            child.setProcessEnvironment(environment);
            child.setProcessChannelMode(QProcess::ForwardedChannels);
            child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("noCameraSaysSo")});
            QVERIFY(child.waitForFinished(60000));
            QCOMPARE(child.exitCode(), 0);
            return;
        }
        if (!QMediaDevices::videoInputs().isEmpty())
            QSKIP("this machine has a camera of its own");
        LinuxCameraFeed feed;
        CameraMirror mirror(feed);
        mirror.start();
        QTRY_VERIFY_WITH_TIMEOUT(!mirror.starting(), 10000);
        QVERIFY(!mirror.running());
        QCOMPARE(mirror.status(),
                 QStringLiteral("Keine Kamera gefunden. Verbinde eine Kamera und versuche es erneut."));
    }

    void fakeCameraIsShownMirroredAndSwitchedOff()
    {
        QTRY_VERIFY_WITH_TIMEOUT(!QMediaDevices::videoInputs().isEmpty(), 20000);

        LinuxCameraFeed feed;
        CameraMirrorPane pane(feed);
        pane.resize(400, 400);
        pane.show();
        pane.toggleButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(pane.mirror().running(), 15000);
        QCOMPARE(pane.statusText(), QStringLiteral("Spiegel aktiv · keine Aufnahme"));
        QTRY_VERIFY_WITH_TIMEOUT(!pane.mirror().frame().isNull(), 10000);

        // The camera's own picture: white bar at the left, blue at the right.
        const QImage source = pane.mirror().frame();
        const QColor sourceLeft = source.pixelColor(source.width() / 20, source.height() / 4);
        const QColor sourceRight = source.pixelColor(source.width() * 19 / 20, source.height() / 4);
        QVERIFY2(sourceLeft.red() > 150 && sourceLeft.blue() > 150 && sourceLeft.green() > 150,
                 qPrintable(sourceLeft.name()));
        QVERIFY2(sourceRight.blue() > 150 && sourceRight.red() < 100, qPrintable(sourceRight.name()));
        // On screen it is the other way round.
        const QImage shown = pane.preview()->grab().toImage();
        const int y = shown.height() / 4;
        const QColor shownLeft = shown.pixelColor(shown.width() / 40, y);
        const QColor shownRight = shown.pixelColor(shown.width() * 39 / 40, y);
        QVERIFY2(shownLeft.blue() > 150 && shownLeft.red() < 100, qPrintable(shownLeft.name()));
        QVERIFY2(shownRight.red() > 150 && shownRight.green() > 150, qPrintable(shownRight.name()));

        // Leaving: the view goes away, the session stops and the device is released.
        pane.hide();
        QVERIFY(!pane.mirror().running());
        QTRY_VERIFY_WITH_TIMEOUT(!feed.running(), 5000);
        QCOMPARE(pane.statusText(), QStringLiteral("Spiegel beendet."));
    }
};

QTEST_MAIN(CameraX11Test)
#include "CameraX11Test.moc"
