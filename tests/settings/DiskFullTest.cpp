#include "SettingsTests.h"
#include "TestSupport.h"

#include "model/Page.h"
#include "productivity/Productivity.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace SettingsTestSupport;

namespace {

// A file system of 200 KiB, mounted for one test and unmounted when it ends.
class SmallDisk
{
public:
    SmallDisk()
    {
        if (::geteuid() != 0) {
            m_refusal = u"mounting a 200 KiB tmpfs needs root"_qs;
            return;
        }
        QProcess mount;
        mount.start(u"mount"_qs,
                    {u"-t"_qs, u"tmpfs"_qs, u"-o"_qs, u"size=200k"_qs, u"tmpfs"_qs, m_mountPoint.path()});
        if (!mount.waitForFinished(10'000) || mount.exitStatus() != QProcess::NormalExit ||
            mount.exitCode() != 0) {
            m_refusal = u"mount -t tmpfs is not permitted here: "_qs +
                        QString::fromLocal8Bit(mount.readAllStandardError()).trimmed();
            return;
        }
        m_mounted = true;
    }
    ~SmallDisk()
    {
        if (m_mounted)
            QProcess::execute(u"umount"_qs, {u"-l"_qs, m_mountPoint.path()});
    }

    bool mounted() const { return m_mounted; }
    const QString& refusal() const { return m_refusal; }
    QString folder() const { return m_mountPoint.path() + u"/Brenlow"_qs; }

    // Takes up every free block.
    void fill()
    {
        const int fd = ::open(QFile::encodeName(filler()).constData(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        const QByteArray block(4096, 'x');
        while (::write(fd, block.constData(), size_t(block.size())) > 0) {
        }
        // The last partial block as well.
        while (::write(fd, block.constData(), 1) > 0) {
        }
        ::close(fd);
    }
    void free() { QFile::remove(filler()); }

private:
    QString filler() const { return m_mountPoint.path() + u"/filler"_qs; }

    QTemporaryDir m_mountPoint;
    bool m_mounted = false;
    QString m_refusal;
};

QStringList noteTexts(const Productivity& productivity)
{
    QStringList texts;
    for (const QuickNote& note : productivity.notes())
        texts.append(note.text);
    return texts;
}

} // namespace

// A full disk: nothing on disk is damaged, nothing in memory is given up, the user hears of it
// once, and everything is written once there is room again.
class DiskFullTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void aFullDiskLosesNothing()
    {
        SmallDisk disk;
        if (!disk.mounted())
            QSKIP(qPrintable(disk.refusal()));
        MemoryPlatform memory;
        ScratchDomain domain(disk.folder());
        auto model = std::make_unique<Model>(*domain.defaults, memory.platform(), false, memory.pasteboard);
        for (const QString& text : {u"eins"_qs, u"zwei"_qs, u"drei"_qs})
            model->productivity().addNote(text);
        model->setPage(Page::notes);

        disk.fill();
        model->productivity().addNote(u"vier"_qs);
        model->setPage(Page::events);
        model->toggleTimer();
        model->productivity().setNoteDraft(u"während die Platte voll ist"_qs);
        QVERIFY(domain.defaults->hasUnwrittenChanges());
        QCOMPARE(domain.defaults->writeProblem(), std::optional<WriteProblem>(WriteProblem::diskFull));
        QVERIFY2(model->message().startsWith(u"Einstellungen nicht gespeichert: der Datenträger ist voll"),
                 qPrintable(model->message()));
        QCOMPARE(noticesTitled(*model, u"Einstellungen nicht gespeichert"_qs), 1);
        QCOMPARE(noteTexts(model->productivity()),
                 QStringList({u"vier"_qs, u"drei"_qs, u"zwei"_qs, u"eins"_qs}));

        // On disk: the state before the disk filled, whole.
        QVERIFY(QFileInfo(domain.defaults->filePath()).size() > 0);
        {
            Defaults onDisk(domain.name, domain.folder);
            Productivity stored(onDisk, memory.clock);
            QCOMPARE(noteTexts(stored), QStringList({u"drei"_qs, u"zwei"_qs, u"eins"_qs}));
            QCOMPARE(onDisk.stringValue(u"lastPage"_qs), std::optional<QString>(u"Notizen"_qs));
        }

        // Room again: within five heartbeats everything waiting is written, and that is said.
        disk.free();
        for (int i = 0; i < 5; ++i)
            model->tick();
        QVERIFY(!domain.defaults->hasUnwrittenChanges());
        QVERIFY(!domain.defaults->writeProblem());
        QCOMPARE(noticesTitled(*model, u"Einstellungen wieder gespeichert"_qs), 1);
        const QList<Notice> notices = model->notices();

        model.reset();
        model = std::make_unique<Model>(domain.reopen(), memory.platform(), false, memory.pasteboard);
        QCOMPARE(noteTexts(model->productivity()),
                 QStringList({u"vier"_qs, u"drei"_qs, u"zwei"_qs, u"eins"_qs}));
        QCOMPARE(model->page(), Page::events);
        QVERIFY(model->timerRunning());
        QCOMPARE(model->productivity().noteDraft(), u"während die Platte voll ist"_qs);
        QCOMPARE(model->notices(), notices);
    }

    void anUnreadableListOnAFullDiskIsNotWrittenOver()
    {
        SmallDisk disk;
        if (!disk.mounted())
            QSKIP(qPrintable(disk.refusal()));
        MemoryPlatform memory;
        ScratchDomain domain(disk.folder());
        const QByteArray unreadable = R"([{"id":"x","text":"wichtig"}])";
        domain.defaults->setData(u"productivity.notes"_qs, unreadable);
        domain.defaults.reset();

        disk.fill();
        auto model = std::make_unique<Model>(domain.reopen(), memory.platform(), false, memory.pasteboard);
        // No room for a copy: the original stays where it is, untouched by a new note.
        QVERIFY(keptCopy(*model).isEmpty());
        QVERIFY2(model->message().contains(u"die Notizen"), qPrintable(model->message()));
        model->productivity().addNote(u"neu"_qs);
        QCOMPARE(Defaults(domain.name, domain.folder).dataValue(u"productivity.notes"_qs),
                 std::optional<QByteArray>(unreadable));

        disk.free();
        for (int i = 0; i < 5; ++i)
            model->tick();
        const QString copy = keptCopy(*model);
        QCOMPARE(readFile(copy), unreadable);
        QVERIFY(!domain.defaults->hasUnwrittenChanges());
        Defaults onDisk(domain.name, domain.folder);
        QCOMPARE(noteTexts(Productivity(onDisk, memory.clock)), QStringList{u"neu"_qs});
    }
};

int runDiskFullTests(int argc, char** argv)
{
    DiskFullTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DiskFullTest.moc"
