#include "CaptureTests.h"
#include "TestSupport.h"

#include "capture/CaptureKind.h"
#include "capture/ScreenCapture.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList hiddenFiles(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

// The capture flow on the memory platform: the save dialog, the pause with the panel hidden, the
// tool's outcome, and what lands on the shelf, in the activity list and in the status line.
class CaptureFlowTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ModelFixture> m_fixture;
    QTemporaryDir m_folder;

    MemoryPlatform& memory() { return m_fixture->memory; }
    Model& model() { return *m_fixture->model; }
    ScreenCapture& capture() { return model().screenCapture(); }

    // Runs a capture up to the launched tool, saving to `destination`.
    void launchTo(CaptureKind kind, const QString& destination)
    {
        model().capture(kind);
        QVERIFY(memory().dialogs.saveTo(QUrl::fromLocalFile(destination)));
        memory().scheduler.advance(ScreenCapture::hideDelay);
        QVERIFY(memory().captureTool.running());
    }

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        QVERIFY(m_folder.isValid());
    }
    void init() { m_fixture = std::make_unique<ModelFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void screenshotLandsOnTheShelfWithItsNotice()
    {
        QSignalSpy visibility(&model(), &Model::captureVisibility);
        model().capture(CaptureKind::screenshot);
        QVERIFY(model().captureBusy());
        QCOMPARE(model().interactionLocks(), 1);
        QCOMPARE(memory().dialogs.saveCount(), 1);
        const SaveDialogRequest& request = memory().dialogs.currentSave();
        QCOMPARE(request.title, QStringLiteral("Screenshot speichern"));
        QCOMPARE(request.extension, QStringLiteral("png"));
        QCOMPARE(request.message,
                 QStringLiteral("Danach wählst du den Bildschirmbereich. Escape bricht die Auswahl ab."));
        QVERIFY(request.proposedName.startsWith(QStringLiteral("Brenlow-")));
        QVERIFY(request.proposedName.endsWith(QStringLiteral(".png")));

        const QString destination = m_folder.filePath(QStringLiteral("shot one.png"));
        QVERIFY(memory().dialogs.saveTo(QUrl::fromLocalFile(destination)));
        QCOMPARE(visibility.size(), 1);
        QCOMPARE(visibility.at(0).at(0).toBool(), true);
        QVERIFY(model().captureStatus().startsWith(QStringLiteral("Bereich aufziehen")));
        // The panel needs its moment to leave the screen before the tool looks at it.
        memory().scheduler.advance(ScreenCapture::hideDelay - 0.01);
        QCOMPARE(memory().captureTool.launches, 0);
        memory().scheduler.advance(0.01);
        QCOMPARE(memory().captureTool.launches, 1);
        const QFileInfo temporary(memory().captureTool.lastPath);
        QCOMPARE(temporary.absolutePath(), QFileInfo(destination).absolutePath());
        QVERIFY(temporary.fileName().startsWith(QLatin1Char('.')));
        QCOMPARE(temporary.suffix(), QStringLiteral("png"));

        QVERIFY(memory().captureTool.complete("PNG bytes"));
        QCOMPARE(readAll(destination), QByteArray("PNG bytes"));
        QVERIFY(!temporary.exists());
        QCOMPARE(model().files(), QList<QUrl>{QUrl::fromLocalFile(destination)});
        QCOMPARE(model().notices().first().title, QStringLiteral("Screenshot"));
        QCOMPARE(model().notices().first().detail, QStringLiteral("shot one.png"));
        const QString done = QStringLiteral("Screenshot gespeichert und zur Ablage hinzugefügt.");
        QCOMPARE(model().captureStatus(), done);
        QCOMPARE(model().message(), done);
        QVERIFY(!model().captureBusy());
        QCOMPARE(model().interactionLocks(), 0);
        QCOMPARE(visibility.size(), 2);
        QCOMPARE(visibility.at(1).at(0).toBool(), false);
    }

    void cancelledDialogOnlyReleasesThePanel()
    {
        QSignalSpy visibility(&model(), &Model::captureVisibility);
        model().capture(CaptureKind::video);
        // A second request while the dialog is up does nothing.
        model().capture(CaptureKind::screenshot);
        QCOMPARE(memory().dialogs.saveCount(), 1);
        QVERIFY(memory().dialogs.cancelSave());
        QVERIFY(!model().captureBusy());
        QCOMPARE(model().interactionLocks(), 0);
        QCOMPARE(model().message(), QString());
        QCOMPARE(visibility.size(), 0);
        memory().scheduler.advance(1);
        QCOMPARE(memory().captureTool.launches, 0);
    }

    void failuresDeleteTheTemporaryFileAndSaySo_data()
    {
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<int>("exitStatus");
        QTest::addColumn<QString>("errorText");
        QTest::addColumn<QString>("message");
        const QString cancelled =
            QStringLiteral("Keine Aufnahme erstellt. Auswahl abgebrochen oder keine Datei erstellt.");
        QTest::newRow("selection cancelled") << QByteArray() << 1 << QString() << cancelled;
        QTest::newRow("empty file, status 0") << QByteArray() << 0 << QString() << cancelled;
        QTest::newRow("file but non-zero status")
            << QByteArray("half") << 1 << QStringLiteral("  disk full \n")
            << QStringLiteral("Keine Aufnahme erstellt. disk full");
        const QString flood =
            QString(239, QLatin1Char('x')) + QStringLiteral("yz") + QString(5000, QLatin1Char('q'));
        QTest::newRow("error text cut to 240") << QByteArray() << 2 << flood
                                               << QStringLiteral("Keine Aufnahme erstellt. ") +
                                                      QString(239, QLatin1Char('x')) + QStringLiteral("y");
    }

    void failuresDeleteTheTemporaryFileAndSaySo()
    {
        QFETCH(QByteArray, written);
        QFETCH(int, exitStatus);
        QFETCH(QString, errorText);
        QFETCH(QString, message);
        QTemporaryDir folder;
        const QString destination = folder.filePath(QStringLiteral("clip.mp4"));
        launchTo(CaptureKind::video, destination);
        QVERIFY(memory().captureTool.complete(written, exitStatus, errorText));
        QCOMPARE(model().captureStatus(), message);
        QCOMPARE(model().message(), message);
        QVERIFY(hiddenFiles(folder.path()).isEmpty());
        QVERIFY(model().files().isEmpty());
        QVERIFY(!model().captureBusy());
        QCOMPARE(model().interactionLocks(), 0);
    }

    void existingFileIsReplacedUnderTheSameName()
    {
        QTemporaryDir folder;
        const QString destination = folder.filePath(QStringLiteral("same.png"));
        for (const QByteArray content : {QByteArray("first"), QByteArray("second")}) {
            launchTo(CaptureKind::screenshot, destination);
            QVERIFY(memory().captureTool.complete(content));
        }
        QCOMPARE(readAll(destination), QByteArray("second"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        QCOMPARE(model().files().size(), 1);
    }

    void failedMoveKeepsTheCaptureWhereItIs()
    {
        QTemporaryDir folder;
        // A folder with content where the file should go: no rename can replace it.
        const QString destination = folder.filePath(QStringLiteral("taken.png"));
        QVERIFY(QDir().mkpath(destination + QStringLiteral("/inside")));
        launchTo(CaptureKind::screenshot, destination);
        const QString temporary = memory().captureTool.lastPath;
        QVERIFY(memory().captureTool.complete("pixels"));
        QCOMPARE(model().captureStatus(),
                 QStringLiteral("Speichern fehlgeschlagen. Aufnahme bleibt unter ") + temporary);
        QCOMPARE(readAll(temporary), QByteArray("pixels"));
        QVERIFY(model().files().isEmpty());
        QCOMPARE(model().interactionLocks(), 0);
    }

    void toolThatCannotStartShowsThePanelAgain()
    {
        memory().captureTool.launchFailure = QStringLiteral("Das Programm „maim“ fehlt.");
        QSignalSpy visibility(&model(), &Model::captureVisibility);
        model().capture(CaptureKind::screenshot);
        QVERIFY(memory().dialogs.saveTo(QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("x.png")))));
        memory().scheduler.advance(ScreenCapture::hideDelay);
        QCOMPARE(
            model().message(),
            QStringLiteral("Bildschirmaufnahme konnte nicht gestartet werden: Das Programm „maim“ fehlt."));
        QCOMPARE(visibility.size(), 2);
        QVERIFY(!model().captureBusy());
        QCOMPARE(model().interactionLocks(), 0);
    }

    void recordingStopsFromTheTrayAndOnQuit()
    {
        QTemporaryDir folder;
        const QString destination = folder.filePath(QStringLiteral("movie.mp4"));
        QVERIFY(!memory().statusBar.clickStop());
        QSignalSpy visibility(&model(), &Model::captureVisibility);
        launchTo(CaptureKind::video, destination);
        QVERIFY(capture().recordingActive());
        QCOMPARE(memory().statusBar.stopTitle, QStringLiteral("Aufnahme beenden"));
        // While it records the panel is back and free, but no second capture starts.
        QCOMPARE(visibility.size(), 2);
        QCOMPARE(visibility.last().at(0).toBool(), false);
        QVERIFY(!model().captureBusy());
        QCOMPARE(model().interactionLocks(), 0);
        model().capture(CaptureKind::screenshot);
        QCOMPARE(memory().dialogs.saveCount(), 0);
        QVERIFY(memory().statusBar.clickStop());
        QCOMPARE(readAll(destination), memory().captureTool.recorded);
        QVERIFY(!memory().statusBar.stopVisible);
        QCOMPARE(model().notices().first().title, QStringLiteral("Bildschirmaufnahme"));
        QCOMPARE(model().interactionLocks(), 0);

        // Quitting in the middle of a recording still files it.
        const QString second = folder.filePath(QStringLiteral("quit.mp4"));
        launchTo(CaptureKind::video, second);
        capture().finishBeforeQuit();
        QCOMPARE(readAll(second), memory().captureTool.recorded);
        QCOMPARE(model().files().size(), 2);
        QVERIFY(!capture().recordingActive());
    }

    void argumentsKeepThePathAsOneArgument()
    {
        const QString movie = QStringLiteral("/tmp/Spaces and 'quotes'/test.mov");
        QCOMPARE(CaptureKinds::arguments(CaptureKind::video, movie),
                 (QStringList{QStringLiteral("-i"), QStringLiteral("-U"), QStringLiteral("-J"),
                              QStringLiteral("video"), movie}));
        const QString shot = QStringLiteral("/tmp/Spaces and 'quotes'/test.png");
        QCOMPARE(CaptureKinds::arguments(CaptureKind::screenshot, shot),
                 (QStringList{QStringLiteral("-i"), QStringLiteral("-t"), QStringLiteral("png"), shot}));
    }

    void proposedNameHasNoPathOrTimeSeparators_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::newRow("de_DE") << QStringLiteral("de_DE");
        QTest::newRow("en_US") << QStringLiteral("en_US");
    }

    void proposedNameHasNoPathOrTimeSeparators()
    {
        QFETCH(QString, locale);
        const QDateTime when(QDate(2026, 3, 4), QTime(9, 5, 7));
        const QString name = CaptureKinds::proposedName(when, QStringLiteral("png"), QLocale(locale));
        QVERIFY2(!name.contains(QLatin1Char(':')) && !name.contains(QLatin1Char('/')), qPrintable(name));
        QVERIFY2(name.startsWith(QStringLiteral("Brenlow-")) && name.endsWith(QStringLiteral(".png")),
                 qPrintable(name));
        // The seconds are part of it, so two captures a few seconds apart do not collide.
        QVERIFY2(name.contains(QStringLiteral("05-07")), qPrintable(name));
    }
};

int runCaptureFlowTests(int argc, char** argv)
{
    CaptureFlowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CaptureFlowTest.moc"
