#include "SettingsTests.h"
#include "TestSupport.h"

#include "focus/Notice.h"
#include "productivity/Productivity.h"
#include "settings/Json.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

using namespace SettingsTestSupport;

namespace {

// What the process has handed to write() so far.
qint64 bytesWritten()
{
    for (const QByteArray& line : readFile(QStringLiteral("/proc/self/io")).split('\n')) {
        if (line.startsWith("wchar:"))
            return line.mid(6).trimmed().toLongLong();
    }
    return -1;
}

QStringList filesOf(const QString& folder, const QString& domain)
{
    QStringList names;
    for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        if (name.startsWith(domain + u'.'))
            names.append(name);
    }
    return names;
}

QJsonObject entry(const char* type, const QJsonValue& value)
{
    return {{u"type"_qs, QString::fromLatin1(type)}, {u"value"_qs, value}};
}

} // namespace

// The domain on disk: types, writes that touch only what changed, the former file's import and
// the removal of everything a domain leaves.
class DomainTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void aFormerFileIsImportedOnceWithItsTypes()
    {
        QTemporaryDir folder;
        const QString name = QStringLiteral("Brenlow.Tests.Former");
        const QDateTime date(QDate(2024, 2, 29), QTime(23, 59, 58, 500), Qt::UTC);
        const QByteArray document = formerDocument({
            {u"b"_qs, entry("bool", true)},
            {u"i"_qs, entry("integer", 1LL << 40)},
            {u"d"_qs, entry("double", 2.0)},
            {u"s"_qs, entry("string", u"Grüße ✓"_qs)},
            {u"data"_qs, entry("data", Json::encodeData(QByteArray("\0\x01\xff", 3)))},
            {u"date"_qs, entry("date", Json::encodeDate(date))},
            {u"list"_qs, entry("strings", QJsonArray{u"/a"_qs, u"/b c"_qs})},
            // Neither whole nor a number an integer can hold: the entry cannot be read.
            {u"half"_qs, entry("integer", 1.5)},
        });
        const QString former = folder.filePath(name + QStringLiteral(".json"));
        writeFile(former, document);
        {
            Defaults defaults(name, folder.path());
            QCOMPARE(defaults.boolValue(u"b"_qs), std::optional<bool>(true));
            QCOMPARE(defaults.integerValue(u"i"_qs), std::optional<qint64>(1LL << 40));
            QCOMPARE(defaults.value(u"d"_qs).typeId(), int(QMetaType::Double));
            QCOMPARE(defaults.stringValue(u"s"_qs), std::optional<QString>(u"Grüße ✓"_qs));
            QCOMPARE(defaults.dataValue(u"data"_qs), std::optional<QByteArray>(QByteArray("\0\x01\xff", 3)));
            QCOMPARE(defaults.dateValue(u"date"_qs), std::optional<QDateTime>(date));
            QCOMPARE(defaults.stringArrayValue(u"list"_qs),
                     std::optional<QStringList>({u"/a"_qs, u"/b c"_qs}));
            QVERIFY(!defaults.contains(u"half"_qs));
            // The former file is kept whole under a new name, and the entry it alone still holds
            // is reported with that name.
            QVERIFY(!QFileInfo::exists(former));
            const QList<StorageDamage> damage = defaults.takeDamage();
            QCOMPARE(damage.size(), 1);
            QVERIFY(damage.first().copy && damage.first().copy->contains(u".imported-"));
            QCOMPARE(readFile(*damage.first().copy), document);
            defaults.setString(u"s"_qs, u"geändert"_qs);
        }
        // A second start imports nothing again, even when the former file shows up once more.
        writeFile(former, document);
        Defaults again(name, folder.path());
        QCOMPARE(again.stringValue(u"s"_qs), std::optional<QString>(u"geändert"_qs));
        QVERIFY(again.takeDamage().isEmpty());
        again.removeDomain();
        QCOMPARE(filesOf(folder.path(), name), QStringList());
    }

    void aChangeWritesOnlyItsKey()
    {
        ScratchDomain domain;
        Defaults& defaults = *domain.defaults;
        QList<Notice> notices;
        for (int i = 0; i < 10'000; ++i)
            notices.append(Notice{QUuid::createUuid(), u"Fokus geschafft"_qs, u"Zeit für eine Pause."_qs,
                                  QDateTime::currentDateTimeUtc()});
        const QByteArray list = Notice::encodeList(notices);
        QVERIFY(list.size() > 1'000'000);
        defaults.setData(u"notices.v1"_qs, list);
        defaults.setString(u"lastPage"_qs, u"Übersicht"_qs);

        qint64 before = bytesWritten();
        defaults.setString(u"lastPage"_qs, u"Notizen"_qs);
        const qint64 change = bytesWritten() - before;
        QVERIFY2(change > 0 && change < 64 * 1024, qPrintable(QString::number(change)));

        // What the stores write back right after loading it costs nothing.
        before = bytesWritten();
        defaults.setString(u"lastPage"_qs, u"Notizen"_qs);
        defaults.setData(u"notices.v1"_qs, list);
        QCOMPARE(bytesWritten() - before, 0);

        // Same number, other type: the type is part of the value.
        defaults.setDouble(u"n"_qs, 2.0);
        defaults.setInteger(u"n"_qs, 2);
        QCOMPARE(domain.reopen().value(u"n"_qs).typeId(), int(QMetaType::LongLong));
        QCOMPARE(domain.defaults->dataValue(u"notices.v1"_qs), std::optional<QByteArray>(list));
    }

    void aRowThatDoesNotFitItsTypeIsKeptAside()
    {
        ScratchDomain domain;
        domain.defaults->setInteger(u"welcome.step"_qs, 3);
        domain.defaults->setString(u"noteDraft"_qs, u"bleibt"_qs);
        domain.defaults.reset();
        // Someone else wrote text where an integer belongs.
        sqlite3* db = nullptr;
        QCOMPARE(sqlite3_open(
                     QFile::encodeName(domain.folder + u'/' + domain.name + u".sqlite"_qs).constData(), &db),
                 SQLITE_OK);
        QCOMPARE(sqlite3_exec(db, "UPDATE entries SET value='drei' WHERE key='welcome.step'", nullptr,
                              nullptr, nullptr),
                 SQLITE_OK);
        sqlite3_close(db);

        Defaults& defaults = domain.reopen();
        QVERIFY(!defaults.contains(u"welcome.step"_qs));
        QCOMPARE(defaults.stringValue(u"noteDraft"_qs), std::optional<QString>(u"bleibt"_qs));
        const QList<StorageDamage> damage = defaults.takeDamage();
        QCOMPARE(damage.size(), 1);
        QVERIFY(damage.first().what.contains(u"welcome.step"));
        QCOMPARE(readFile(damage.first().copy.value()), QByteArray("drei"));
    }

    void removingADomainLeavesNothingOfIt()
    {
        QTemporaryDir folder;
        const QString name = QStringLiteral("Brenlow.Tests.Weg");
        const QString neighbour = name + QStringLiteral(".Nachbar");
        writeFile(folder.filePath(name + QStringLiteral(".json")), "{kaputt");
        Defaults other(neighbour, folder.path());
        other.setBool(u"x"_qs, true);
        {
            Defaults defaults(name, folder.path());
            defaults.setData(u"productivity.notes"_qs, "[{]");
            defaults.keepUnreadable(u"productivity.notes"_qs, u"die Notizen"_qs);
            writeFile(folder.filePath(name + QStringLiteral(".unreadable-1.x.part")), "halb");
            QCOMPARE(QDir(folder.path()).entryList({name + u".unreadable-*"_qs}).size(), 3);
            defaults.removeDomain();
        }
        QStringList left = filesOf(folder.path(), name);
        left.removeIf([&](const QString& file) { return file.startsWith(neighbour + u'.'); });
        QCOMPARE(left, QStringList());
        // A domain whose name begins like this one keeps its files.
        QVERIFY(QFileInfo::exists(other.filePath()));
        QCOMPARE(Defaults(neighbour, folder.path()).boolValue(u"x"_qs), std::optional<bool>(true));
    }
};

int runDomainTests(int argc, char** argv)
{
    DomainTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DomainTest.moc"
