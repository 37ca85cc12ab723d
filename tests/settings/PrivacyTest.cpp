#include "SettingsTests.h"
#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace SettingsTestSupport;

namespace {

int modeOf(const QString& path)
{
    struct stat info
    {
    };
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 07777) : -1;
}

// Names in a folder whose mode changed after they were made, seen through inotify.
class ModeWatch
{
public:
    explicit ModeWatch(const QString& folder) : m_fd(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        inotify_add_watch(m_fd, QFile::encodeName(folder).constData(), IN_ATTRIB);
    }
    ~ModeWatch() { ::close(m_fd); }
    QStringList changed() const
    {
        QStringList names;
        alignas(inotify_event) char buffer[16384];
        for (ssize_t length; (length = ::read(m_fd, buffer, sizeof buffer)) > 0;) {
            for (char* at = buffer; at < buffer + length;) {
                const auto* event = reinterpret_cast<const inotify_event*>(at);
                if (event->len > 0)
                    names.append(QFile::decodeName(event->name));
                at += sizeof(inotify_event) + event->len;
            }
        }
        return names;
    }

private:
    int m_fd;
};

} // namespace

// Notes, drafts and pins are the user's alone: folders 0700, files 0600 from their first byte,
// whatever the umask, and a folder left open by an older version is narrowed.
class PrivacyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void everyFileIsPrivateFromItsFirstByte()
    {
        const mode_t previous = ::umask(0);
        const auto restore = qScopeGuard([previous] { ::umask(previous); });
        QTemporaryDir scratch;
        const QString config = scratch.filePath(u"config"_qs);
        const QString folder = config + u"/Brenlow"_qs;
        QVERIFY(QDir().mkpath(folder));
        ::chmod(QFile::encodeName(folder).constData(), 0755);
        const QString name = u"Brenlow.Tests.Privat"_qs;
        // An older version left its file readable by everyone.
        const QString former = folder + u'/' + name + u".json"_qs;
        const QJsonObject draft{{u"type"_qs, u"string"_qs}, {u"value"_qs, u"geheim"_qs}};
        writeFile(former, formerDocument({std::pair<QString, QJsonValue>(u"noteDraft"_qs, draft)}));
        ::chmod(QFile::encodeName(former).constData(), 0644);

        const ModeWatch watch(folder);
        QStringList made;
        {
            Defaults defaults(name, folder);
            defaults.setData(u"productivity.notes"_qs, "[{");
            defaults.keepUnreadable(u"productivity.notes"_qs, u"die Notizen"_qs);
            QCOMPARE(defaults.stringValue(u"noteDraft"_qs), std::optional<QString>(u"geheim"_qs));
            made = QDir(folder).entryList(QDir::Files);
            QCOMPARE(modeOf(folder), 0700);
            for (const QString& file : std::as_const(made))
                QVERIFY2(modeOf(folder + u'/' + file) == 0600, qPrintable(file));
        }
        // The database, its log and the kept copy were made 0600; only the files that were there
        // before had their mode changed. (SQLite hands its log and journal to the database's owner,
        // which inotify also counts as a change; it makes them with the database's mode.)
        QVERIFY(made.size() >= 4);
        QStringList later = watch.changed();
        later.removeIf([&](const QString& file) {
            return file.endsWith(u"-wal") || file.endsWith(u"-shm") || file.endsWith(u"-journal");
        });
        later.removeDuplicates();
        QVERIFY2(later == QStringList{name + u".json"_qs}, qPrintable(later.join(u", ")));
        Defaults::removeDomain(name, folder);
    }

    void missingFoldersAreMadePrivate()
    {
        const mode_t previous = ::umask(0);
        const auto restore = qScopeGuard([previous] { ::umask(previous); });
        QTemporaryDir scratch;
        const QString config = scratch.filePath(u"neu/config"_qs);
        Defaults defaults(u"Brenlow.Tests.Ordner"_qs, config + u"/Brenlow"_qs);
        defaults.setBool(u"mini"_qs, true);
        QCOMPARE(modeOf(scratch.filePath(u"neu"_qs)), 0700);
        QCOMPARE(modeOf(config), 0700);
        QCOMPARE(modeOf(config + u"/Brenlow"_qs), 0700);
        QCOMPARE(modeOf(defaults.filePath()), 0600);
        // The folder above ours is the user's to choose: once it exists it keeps its mode.
        ::chmod(QFile::encodeName(config).constData(), 0755);
        Defaults again(u"Brenlow.Tests.Ordner"_qs, config + u"/Brenlow"_qs);
        QCOMPARE(modeOf(config), 0755);
        again.removeDomain();
    }
};

int runPrivacyTests(int argc, char** argv)
{
    PrivacyTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PrivacyTest.moc"
