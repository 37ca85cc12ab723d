#include "ClipboardTests.h"
#include "TestSupport.h"

#include "app/SelfTest.h"
#include "clipboard/ClipboardArchive.h"
#include "clipboard/ClipboardHistory.h"
#include "productivity/Productivity.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

#include <cstdio>

#include <unistd.h>

namespace {

const QString openFailed = QStringLiteral(
    "Lokaler Verlauf konnte nicht geöffnet werden. Vorhandene Daten werden nicht überschrieben.");
const QString saveFailed =
    QStringLiteral("Kopie konnte nicht lokal gespeichert werden. Bitte freien Speicher prüfen.");

void copy(ModelFixture& fixture, const QString& text, const QStringList& types = {})
{
    fixture.memory.clock.advance(1.0);
    fixture.memory.pasteboard.copyFromOutside(text, types);
    fixture.model->pollClipboard();
}

void executeRaw(const QString& path, const char* sql)
{
    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &db);
    const int result = sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
    sqlite3_close(db);
    QCOMPARE(result, SQLITE_OK);
}

} // namespace

int captureAndHang(const QString& path, const QString& text)
{
    enterTestMode();
    // The settings go beside the history, into the parent's scratch folder: this process is
    // killed, so it never gets to remove them itself.
    ScratchDomain domain(QFileInfo(path).absolutePath());
    MemoryPlatform memory;
    Model model(*domain.defaults, memory.platform(), false, memory.pasteboard, path);
    memory.clock.advance(1.0);
    memory.pasteboard.copyFromOutside(text);
    model.pollClipboard();
    if (!model.clipboardHistory().store().slotOf(text))
        return 2;
    std::printf("captured\n");
    std::fflush(stdout);
    for (;;)
        QThread::sleep(1);
}

// Capture into the model: the rules of each step, the storage messages and restarts.
class CaptureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void copiesSurviveARestartWithTheirIdsAndPins()
    {
        QTemporaryDir dir;
        ModelFixture fixture(dir.filePath(QStringLiteral("clipboard.sqlite")));
        copy(fixture, QStringLiteral("A"));
        copy(fixture, QStringLiteral("B"));
        copy(fixture, QStringLiteral("A"));
        const QList<Clip> before = fixture.model->clips();
        QCOMPARE(texts(before), QStringList({QStringLiteral("A"), QStringLiteral("B")}));
        // A favourite whose entry is not stored comes back as a stored entry at the end.
        fixture.model->productivity().setPins({QStringLiteral("Nur Favorit"), QStringLiteral("B")});

        Model& model = fixture.restart();
        QCOMPARE(model.clips().size(), 3);
        QCOMPARE(model.clips().mid(0, 2), before);
        QCOMPARE(model.clips().at(2).text, QStringLiteral("Nur Favorit"));
        QCOMPARE(model.clips().at(2).date, fixture.memory.clock.now());
        const Clip placeholder = model.clips().at(2);
        // Stored with the current date, so it is the newest entry from the next start on.
        QCOMPARE(fixture.restart().clips().first(), placeholder);
        QCOMPARE(fixture.model->clips().size(), 3);
        QVERIFY(fixture.model->historyStorageError().isEmpty());
    }

    void recordingIsStoredAndAPausedCopyIsNeverCaptured()
    {
        ModelFixture fixture;
        QVERIFY(fixture.model->recording());
        fixture.model->setRecording(false);
        QVERIFY(!fixture.restart().recording());
        copy(fixture, QStringLiteral("Pausiert"));
        fixture.model->setRecording(true);
        fixture.model->pollClipboard();
        QVERIFY(fixture.model->clips().isEmpty());
        QVERIFY(fixture.restart().recording());
        // A value of another type counts as missing: on.
        fixture.domain.defaults->setString(QStringLiteral("recording"), QStringLiteral("nein"));
        QVERIFY(fixture.restart().recording());
    }

    void theSizeLimitCountsUtf8Bytes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("captured");
        QTest::newRow("99,999 ASCII") << QString(99'999, u'a') << true;
        QTest::newRow("100,000 ASCII") << QString(100'000, u'a') << false;
        // 33,333 three-byte characters are 99,999 bytes in 33,333 UTF-16 units.
        QTest::newRow("99,999 in €") << QString(33'333, u'€') << true;
        QTest::newRow("100,002 in €") << QString(33'334, u'€') << false;
        const QString emoji = QString::fromUtf8("\xF0\x9F\x98\x80");
        QTest::newRow("99,999 with emoji") << emoji.repeated(24'999) + QStringLiteral("abc") << true;
        QTest::newRow("100,000 with emoji") << emoji.repeated(25'000) << false;
    }
    void theSizeLimitCountsUtf8Bytes()
    {
        QFETCH(QString, text);
        QFETCH(bool, captured);
        ModelFixture fixture;
        copy(fixture, text);
        QCOMPARE(fixture.model->clips().size(), captured ? 1 : 0);
    }

    void deletingAndClearingKeepPinsInStep()
    {
        QTemporaryDir dir;
        ModelFixture fixture(dir.filePath(QStringLiteral("clipboard.sqlite")));
        copy(fixture, QStringLiteral("eins"));
        copy(fixture, QStringLiteral("zwei"));
        Productivity& productivity = fixture.model->productivity();
        productivity.togglePin(QStringLiteral("eins"));
        productivity.togglePin(QStringLiteral("zwei"));
        QSignalSpy clipsSpy(&fixture.model->clipboardHistory(), &ClipboardHistory::clipsChanged);
        fixture.model->deleteClip(fixture.model->clips().last());
        QCOMPARE(clipsSpy.size(), 1);
        QCOMPARE(texts(fixture.model->clips()), QStringList{QStringLiteral("zwei")});
        QCOMPARE(productivity.pins(), QStringList{QStringLiteral("zwei")});
        QCOMPARE(texts(fixture.restart().clips()), QStringList{QStringLiteral("zwei")});
        fixture.model->clearHistory();
        QVERIFY(fixture.model->clips().isEmpty());
        QVERIFY(fixture.model->productivity().pins().isEmpty());
        QVERIFY(fixture.restart().clips().isEmpty());
    }

    void storageFailuresLeaveTheListAndReportInGerman()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        ModelFixture fixture(path);
        copy(fixture, QStringLiteral("vorher"));
        fixture.model->productivity().togglePin(QStringLiteral("vorher"));
        // Another connection makes every write fail, as a full disk would.
        executeRaw(path,
                   "CREATE TRIGGER noInsert BEFORE INSERT ON clips BEGIN SELECT RAISE(ABORT, 'voll'); END;"
                   "CREATE TRIGGER noDelete BEFORE DELETE ON clips BEGIN SELECT RAISE(ABORT, 'voll'); END;");
        const QList<Clip> before = fixture.model->clips();
        // The log carries what SQLite said, the status line the German sentence.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("copy not saved: step: voll")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("entry not deleted: .*voll")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("history not cleared: .*voll")));
        copy(fixture, QStringLiteral("neu"));
        QCOMPARE(fixture.model->historyStorageError(), saveFailed);
        QCOMPARE(fixture.model->clips(), before);
        fixture.model->deleteClip(before.first());
        QCOMPARE(fixture.model->historyStorageError(),
                 QStringLiteral("Eintrag konnte nicht gelöscht werden."));
        fixture.model->clearHistory();
        QCOMPARE(fixture.model->historyStorageError(),
                 QStringLiteral("Verlauf konnte nicht geleert werden."));
        QCOMPARE(fixture.model->clips(), before);
        QCOMPARE(fixture.model->productivity().pins(), QStringList{QStringLiteral("vorher")});

        // The refused copy waited; once writes work it is saved, before the next one.
        QCOMPARE(texts(fixture.model->clipboardHistory().unsavedClips()), QStringList{QStringLiteral("neu")});
        executeRaw(path, "DROP TRIGGER noInsert; DROP TRIGGER noDelete;");
        copy(fixture, QStringLiteral("danach"));
        fixture.memory.clock.advance(ClipboardHistory::retryIntervalSeconds);
        fixture.model->pollClipboard();
        QVERIFY(fixture.model->historyStorageError().isEmpty());
        QCOMPARE(texts(fixture.model->clips()).mid(0, 3), QStringList({"danach", "neu", "vorher"}));
        QCOMPARE(ClipboardArchive(path).load(), fixture.model->clips());
    }

    // Another process holds the history locked: copies wait in memory, newest first and once
    // per text, and are saved when the lock is gone.
    void copiesWaitOutALockAndAreSavedAfterIt()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        ModelFixture fixture(path);
        copy(fixture, QStringLiteral("vorher"));
        sqlite3* other = nullptr;
        QCOMPARE(sqlite3_open(QFile::encodeName(path).constData(), &other), SQLITE_OK);
        QCOMPARE(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);

        // Tried at the first copy and again at the third, when the next try is due.
        for (int attempt = 0; attempt < 2; ++attempt)
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression(QStringLiteral("copy not saved: .*locked")));
        for (const QString& text : {QStringLiteral("eins"), QStringLiteral("zwei"), QStringLiteral("eins")})
            copy(fixture, text);
        QCOMPARE(fixture.model->historyStorageError(), saveFailed);
        QCOMPARE(texts(fixture.model->clips()), QStringList{QStringLiteral("vorher")});
        QCOMPARE(texts(fixture.model->clipboardHistory().unsavedClips()), QStringList({"eins", "zwei"}));
        // Still locked at the next try: nothing is lost, nothing is doubled.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("copy not saved: .*locked")));
        fixture.memory.clock.advance(ClipboardHistory::retryIntervalSeconds);
        fixture.model->pollClipboard();
        QCOMPARE(fixture.model->clipboardHistory().unsavedClips().size(), 2);

        QCOMPARE(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(other);
        fixture.memory.clock.advance(ClipboardHistory::retryIntervalSeconds);
        fixture.model->pollClipboard();
        QVERIFY(fixture.model->historyStorageError().isEmpty());
        QVERIFY(fixture.model->clipboardHistory().unsavedClips().isEmpty());
        QCOMPARE(texts(fixture.model->clips()), QStringList({"eins", "zwei", "vorher"}));
        QCOMPARE(fixture.model->clips().first().date,
                 fixture.memory.clock.now().addSecs(-2 * ClipboardHistory::retryIntervalSeconds));
        QCOMPARE(ClipboardArchive(path).load(), fixture.model->clips());
    }

    // A history that SQLite could open only for reading (here: a file nobody may change) takes
    // copies again once the file is writable, without a restart.
    void aReadOnlyHistoryIsReopenedOnceWritable()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        {
            ClipboardArchive archive(path);
            archive.save(Clip{QUuid::createUuid(), QStringLiteral("vorher"),
                              QDateTime(QDate(2020, 1, 1), QTime(8, 0), Qt::UTC)});
        }
        const bool root = ::geteuid() == 0; // root writes to a 0400 file; an immutable one stops it
        const auto lock = [&](bool locked) {
            if (root)
                return QProcess::execute(QStringLiteral("chattr"),
                                         {locked ? QStringLiteral("+i") : QStringLiteral("-i"), path}) == 0;
            return QFile::setPermissions(path,
                                         locked ? QFile::ReadOwner : QFile::ReadOwner | QFile::WriteOwner);
        };
        if (!lock(true))
            QSKIP("the file cannot be made unwritable here (chattr not permitted)");
        ModelFixture fixture(path);
        QVERIFY(fixture.model->historyStorageError().isEmpty());
        QCOMPARE(texts(fixture.model->clips()), QStringList{QStringLiteral("vorher")});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("copy not saved: .*readonly")));
        copy(fixture, QStringLiteral("neu"));
        const bool unlocked = lock(false);
        QVERIFY(unlocked);
        QCOMPARE(fixture.model->historyStorageError(), saveFailed);
        QCOMPARE(texts(fixture.model->clips()), QStringList{QStringLiteral("vorher")});

        fixture.memory.clock.advance(ClipboardHistory::retryIntervalSeconds);
        fixture.model->pollClipboard();
        QVERIFY(fixture.model->historyStorageError().isEmpty());
        QCOMPARE(texts(fixture.model->clips()), QStringList({"neu", "vorher"}));
        const QList<Clip> stored = ClipboardArchive(path).load();
        QCOMPARE(texts(stored), texts(fixture.model->clips()));
        QCOMPARE(stored.first().date, fixture.model->clips().first().date);
        QCOMPARE(stored, fixture.model->clips());
    }

    void anUnreadableHistoryIsNeverWritten()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        const QByteArray content = QByteArray("Einkaufsliste: Milch, Brot, Kaffee\n").repeated(100);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();

        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression(QStringLiteral("history not opened: .*file is not a database")));
        ModelFixture fixture(path);
        fixture.model->productivity().togglePin(QStringLiteral("Favorit"));
        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression(QStringLiteral("history not opened: .*file is not a database")));
        Model& model = fixture.restart();
        QCOMPARE(model.historyStorageError(), openFailed);
        QVERIFY(model.archive() == nullptr);
        QVERIFY(model.clips().isEmpty());
        copy(fixture, QStringLiteral("ignoriert"));
        model.deleteClip(Clip{QUuid::createUuid(), QStringLiteral("Favorit"), QDateTime()});
        model.clearHistory();
        QVERIFY(model.clips().isEmpty());
        QCOMPARE(model.historyStorageError(), openFailed);
        // Deleting and clearing did nothing, so the favourite is still there.
        QCOMPARE(model.productivity().pins(), QStringList{QStringLiteral("Favorit")});
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), content);
    }

    void aFailedFavouriteSaveAtStartDropsTheArchive()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        ModelFixture fixture(path);
        copy(fixture, QStringLiteral("gespeichert"));
        fixture.model->productivity().togglePin(QStringLiteral("nicht gespeichert"));
        executeRaw(path,
                   "CREATE TRIGGER noInsert BEFORE INSERT ON clips BEGIN SELECT RAISE(ABORT, 'voll'); END;");
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("history not opened: step: voll")));
        Model& model = fixture.restart();
        QCOMPARE(model.historyStorageError(), openFailed);
        QVERIFY(model.archive() == nullptr);
        QVERIFY(model.clips().isEmpty());
    }

    void aCapturedCopySurvivesAKill()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        const QString text = QStringLiteral("überlebt SIGKILL ") + QUuid::createUuid().toString();
        QProcess child;
        child.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--capture-and-hang"), path, text});
        QVERIFY(child.waitForStarted());
        QByteArray output;
        QTRY_VERIFY_WITH_TIMEOUT((output += child.readAllStandardOutput()).contains("captured") ||
                                     child.state() == QProcess::NotRunning,
                                 20000);
        QVERIFY2(child.state() == QProcess::Running, child.readAllStandardError().constData());
        child.kill();
        QVERIFY(child.waitForFinished());

        ModelFixture restarted(path);
        QCOMPARE(restarted.model->historyStorageError(), QString());
        QCOMPARE(texts(restarted.model->clips()), QStringList{text});
    }

    void theSelfTestGroupsPassOnAFreshModelAndLeaveItClean()
    {
        ModelFixture fixture;
        QCOMPARE(SelfTestGroups::clipboardCapture(*fixture.model, fixture.memory).left(17),
                 QStringLiteral("clipboard capture"));
        QCOMPARE(SelfTestGroups::historyPersistence(*fixture.model, fixture.memory).left(25),
                 QStringLiteral("local history persistence"));
        QVERIFY(fixture.model->clips().isEmpty());
        QVERIFY(fixture.model->recording());
        QVERIFY(fixture.model->productivity().pins().isEmpty());
    }

    void aSignalledChangeIsCapturedAtOnceAndCopyBackIsNot()
    {
        QTemporaryDir dir;
        MemoryPlatform memory;
        ScratchDomain domain;
        Model model(*domain.defaults, memory.platform(), true, memory.pasteboard,
                    dir.filePath(QStringLiteral("clipboard.sqlite")));
        model.stopHeartbeat();
        memory.pasteboard.copyFromOutside(QStringLiteral("sofort"));
        QTRY_COMPARE(texts(model.clips()), QStringList{QStringLiteral("sofort")});
        memory.pasteboard.copyFromOutside(QStringLiteral("noch eine"));
        QTRY_COMPARE(model.clips().size(), 2);

        const QList<Clip> before = model.clips();
        model.copyBack(before.last());
        QCoreApplication::processEvents();
        model.pollClipboard();
        QCOMPARE(model.clips(), before);
        QCOMPARE(memory.pasteboard.string(), std::optional<QString>(QStringLiteral("sofort")));
    }
};

int runCaptureTests(int argc, char** argv)
{
    CaptureTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CaptureTest.moc"
