#include "ClipboardTests.h"
#include "TestSupport.h"

#include "clipboard/ClipboardArchive.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

mode_t modeOf(const QString& path)
{
    struct stat info
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return 0;
    return info.st_mode & 07777;
}

// Writes raw SQL into a history file behind the archive's back.
void executeRaw(const QString& path, const QByteArray& sql)
{
    sqlite3* db = nullptr;
    QCOMPARE(sqlite3_open(QFile::encodeName(path).constData(), &db), SQLITE_OK);
    char* error = nullptr;
    const int result = sqlite3_exec(db, sql.constData(), nullptr, nullptr, &error);
    const QByteArray message = error ? QByteArray(error) : QByteArray();
    sqlite3_free(error);
    sqlite3_close(db);
    QVERIFY2(result == SQLITE_OK, message.constData());
}

QByteArray digest(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

Clip clipAt(int seconds, const QString& text)
{
    return Clip{QUuid::createUuid(), text,
                QDateTime(QDate(2026, 3, 1), QTime(9, 0), Qt::UTC).addSecs(seconds)};
}

} // namespace

// The SQLite archive on real files.
class ArchiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void newFoldersArePrivateAndTheFileIsOwnerOnly()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("a/b/Brenlow/clipboard.sqlite"));
        ::chmod(QFile::encodeName(dir.path()).constData(), 0755);
        {
            ClipboardArchive archive(path);
        }
        QCOMPARE(modeOf(dir.filePath(QStringLiteral("a"))), mode_t(0700));
        QCOMPARE(modeOf(dir.filePath(QStringLiteral("a/b"))), mode_t(0700));
        QCOMPARE(modeOf(dir.filePath(QStringLiteral("a/b/Brenlow"))), mode_t(0700));
        QCOMPARE(modeOf(path), mode_t(0600));
        // An existing folder keeps the mode its owner chose.
        QCOMPARE(modeOf(dir.path()), mode_t(0755));
    }

    void aHistoryComesBackWithIdsDatesAndOrder()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        QList<Clip> newestFirst;
        {
            ClipboardArchive archive(path);
            for (int i = 0; i < 250; ++i) {
                // Dates with milliseconds, as the clock gives them.
                Clip clip = clipAt(i, QStringLiteral("Eintrag %1").arg(i));
                clip.date = clip.date.addMSecs(i * 7 % 1000);
                archive.save(clip);
                newestFirst.prepend(clip);
            }
        }
        ClipboardArchive reopened(path);
        QCOMPARE(reopened.load(), newestFirst);
    }

    void tiesUpsertsAndUnusualTexts()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        const Clip first = clipAt(10, QStringLiteral("erste"));
        const Clip second = clipAt(10, QStringLiteral("zweite"));
        const QString unusual = QStringLiteral("Grüße, Ελληνικά, 你好 ") +
                                QString::fromUtf8("\xF0\x9F\x8E\x89") + QChar(u'\0') +
                                QStringLiteral("nach NUL\n");
        {
            ClipboardArchive archive(path);
            archive.save(first);
            archive.save(second);
            archive.save(Clip{QUuid::createUuid(), unusual, clipAt(5, {}).date});
            archive.save(Clip{QUuid::createUuid(), first.text, clipAt(20, {}).date});
        }
        const QList<Clip> loaded = ClipboardArchive(path).load();
        QCOMPARE(loaded.size(), 3);
        // The upsert kept the first id and moved the row to the top with the new date.
        QCOMPARE(loaded.at(0).id, first.id);
        QCOMPARE(loaded.at(0).date, clipAt(20, {}).date);
        QCOMPARE(loaded.at(1), second);
        QCOMPARE(loaded.at(2).text, unusual);
        QCOMPARE(loaded.at(2).text.size(), unusual.size());
    }

    void rowsAreReadBackAsWritten()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        {
            ClipboardArchive archive(path);
        }
        // Invalid UTF-8 written by someone else becomes U+FFFD; lower-case and nil ids are ids.
        executeRaw(
            path,
            "INSERT INTO clips VALUES('00000000-0000-0000-0000-000000000000', CAST(X'41FF42' AS TEXT), 2.5);"
            "INSERT INTO clips VALUES('5f0c4e7e-8a1b-4c2d-9e3f-1a2b3c4d5e6f', 'klein', 1.0);");
        const QList<Clip> loaded = ClipboardArchive(path).load();
        QCOMPARE(loaded.size(), 2);
        QCOMPARE(loaded.at(0).text, QStringLiteral("A\uFFFDB"));
        QCOMPARE(loaded.at(0).id, QUuid());
        QCOMPARE(loaded.at(0).date, QDateTime(QDate(2001, 1, 1), QTime(0, 0, 2, 500), Qt::UTC));
        QCOMPARE(loaded.at(1).id, QUuid::fromString(QStringLiteral("5F0C4E7E-8A1B-4C2D-9E3F-1A2B3C4D5E6F")));

        // The id is stored upper-case and the text as its exact UTF-8 bytes.
        ClipboardArchive archive(path);
        const Clip clip = clipAt(9, QString::fromUtf16(u"a\0b", 3));
        archive.save(clip);
        sqlite3* db = nullptr;
        sqlite3_open(QFile::encodeName(path).constData(), &db);
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(db, "SELECT id, length(CAST(text AS BLOB)), date FROM clips WHERE date > 5", -1,
                           &statement, nullptr);
        QCOMPARE(sqlite3_step(statement), SQLITE_ROW);
        QCOMPARE(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))),
                 clip.id.toString(QUuid::WithoutBraces).toUpper());
        QCOMPARE(sqlite3_column_int(statement, 1), 3);
        QCOMPARE(sqlite3_column_double(statement, 2),
                 double(clip.date.toMSecsSinceEpoch() - 978307200000LL) / 1000.0);
        sqlite3_finalize(statement);
        sqlite3_close(db);
    }

    void badRowsFailTheWholeLoad_data()
    {
        QTest::addColumn<QByteArray>("row");
        QTest::newRow("not a UUID") << QByteArray("INSERT INTO clips VALUES('kein-uuid', 'x', 1)");
        QTest::newRow("braced UUID") << QByteArray(
            "INSERT INTO clips VALUES('{5F0C4E7E-8A1B-4C2D-9E3F-1A2B3C4D5E6F}', 'x', 1)");
        QTest::newRow("NULL id") << QByteArray("INSERT INTO clips VALUES(NULL, 'x', 1)");
        QTest::newRow("empty text") << QByteArray(
            "INSERT INTO clips VALUES('5F0C4E7E-8A1B-4C2D-9E3F-1A2B3C4D5E6F', '', 1)");
    }
    void badRowsFailTheWholeLoad()
    {
        QFETCH(QByteArray, row);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        ClipboardArchive archive(path);
        archive.save(clipAt(1, QStringLiteral("gut")));
        executeRaw(path, row);
        QVERIFY_THROWS_EXCEPTION(ClipboardArchive::Failure, archive.load());
    }

    void deletionsAndClearingPersist()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        {
            ClipboardArchive archive(path);
            archive.save(clipAt(1, QStringLiteral("bleibt")));
            archive.save(clipAt(2, QStringLiteral("geht")));
            archive.remove(QStringLiteral("geht"));
            archive.remove(QStringLiteral("gab es nie"));
        }
        {
            ClipboardArchive archive(path);
            const QList<Clip> loaded = archive.load();
            QCOMPARE(loaded.size(), 1);
            QCOMPARE(loaded.first().text, QStringLiteral("bleibt"));
            archive.clear();
        }
        QVERIFY(ClipboardArchive(path).load().isEmpty());
    }

    void aMemoryArchiveLeavesNoFile()
    {
        QTemporaryDir dir;
        const QString previous = QDir::currentPath();
        QDir::setCurrent(dir.path());
        {
            ClipboardArchive archive(std::nullopt);
            archive.save(clipAt(1, QStringLiteral("flüchtig")));
            QCOMPARE(archive.load().size(), 1);
        }
        QDir::setCurrent(previous);
        QVERIFY(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).isEmpty());
    }

    void aFileThatIsNoDatabaseFailsAndStaysUntouched()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("Dies ist keine Datenbank, sondern eine Notiz.\n").repeated(200));
        file.close();
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
        const QByteArray before = digest(path);
        const mode_t modeBefore = modeOf(path);

        QVERIFY_THROWS_EXCEPTION(ClipboardArchive::Failure, ClipboardArchive archive(path));
        QCOMPARE(digest(path), before);
        QCOMPARE(modeOf(path), modeBefore);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void anUnusableLocationFails()
    {
        QTemporaryDir dir;
        QFile blocker(dir.filePath(QStringLiteral("Brenlow")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        QVERIFY_THROWS_EXCEPTION(ClipboardArchive::Failure, ClipboardArchive archive(dir.filePath(
                                                                QStringLiteral("Brenlow/clipboard.sqlite"))));
    }

    // A history place someone planted (a link, another user's file or folder) is refused and left
    // as it was; our own loose folder and file are closed to others.
    void foreignOrLinkedPlacesAreRefusedAndOwnOnesTightened()
    {
        QTemporaryDir dir;
        const QString elsewhere = dir.filePath(QStringLiteral("fremd.sqlite"));
        QFile bait(elsewhere);
        QVERIFY(bait.open(QIODevice::WriteOnly));
        bait.close();
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("Brenlow")));
        const QString path = dir.filePath(QStringLiteral("Brenlow/clipboard.sqlite"));
        QVERIFY(QFile::link(elsewhere, path));
        QVERIFY_THROWS_EXCEPTION(ClipboardArchive::Failure, ClipboardArchive archive(path));
        QCOMPARE(QFileInfo(elsewhere).size(), 0);
        QVERIFY(QFileInfo(path).isSymLink());

        // The folder itself a link to another folder.
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("anderswo")));
        const QString linkedFolder = dir.filePath(QStringLiteral("Verlinkt"));
        QVERIFY(QFile::link(dir.filePath(QStringLiteral("anderswo")), linkedFolder));
        QVERIFY_THROWS_EXCEPTION(
            ClipboardArchive::Failure,
            ClipboardArchive archive(linkedFolder + QStringLiteral("/clipboard.sqlite")));
        QVERIFY(QDir(dir.filePath(QStringLiteral("anderswo"))).isEmpty());

        // Our own folder and file with loose modes.
        const QString own = dir.filePath(QStringLiteral("Eigen/clipboard.sqlite"));
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("Eigen")));
        QVERIFY(::chmod(QFile::encodeName(dir.filePath(QStringLiteral("Eigen"))).constData(), 0755) == 0);
        {
            ClipboardArchive archive(own);
        }
        QVERIFY(::chmod(QFile::encodeName(own).constData(), 0644) == 0);
        {
            ClipboardArchive archive(own);
        }
        QCOMPARE(modeOf(dir.filePath(QStringLiteral("Eigen"))), mode_t(0700));
        QCOMPARE(modeOf(own), mode_t(0600));

        if (::geteuid() != 0)
            QSKIP("giving a file to another user needs root");
        const QString foreign = dir.filePath(QStringLiteral("Fremd/clipboard.sqlite"));
        {
            ClipboardArchive archive(foreign);
            archive.save(Clip{QUuid::createUuid(), QStringLiteral("gehört jemand anderem"),
                              QDateTime::currentDateTimeUtc()});
        }
        const QByteArray before = digest(foreign);
        QVERIFY(::chown(QFile::encodeName(foreign).constData(), 65534, 65534) == 0);
        QVERIFY_THROWS_EXCEPTION(ClipboardArchive::Failure, ClipboardArchive archive(foreign));
        QCOMPARE(digest(foreign), before);
        QVERIFY(::chown(QFile::encodeName(foreign).constData(), 0, 0) == 0);
        QVERIFY(::chown(QFile::encodeName(dir.filePath(QStringLiteral("Fremd"))).constData(), 65534, 65534) ==
                0);
        QVERIFY_THROWS_EXCEPTION(ClipboardArchive::Failure, ClipboardArchive archive(foreign));
        QCOMPARE(digest(foreign), before);
        QCOMPARE(modeOf(dir.filePath(QStringLiteral("Fremd"))), mode_t(0700));
    }
};

int runArchiveTests(int argc, char** argv)
{
    ArchiveTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ArchiveTest.moc"
