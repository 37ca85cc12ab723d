#include "TestSupport.h"

#include "common/Scheduler.h"
#include "platform/linux/LinuxFileSearch.h"
#include "productivity/AppCatalog.h"
#include "productivity/DesktopEntry.h"
#include "productivity/DeviceSearch.h"

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

namespace {

void writeFile(const QString& path, const QByteArray& content = "x")
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray entry(const QString& name, const QString& exec, const QString& extra = {})
{
    return QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n%3\n")
        .arg(name, exec, extra)
        .toUtf8();
}

QStringList names(const QList<SearchResult>& results)
{
    QStringList names;
    for (const SearchResult& result : results)
        names.append(result.name);
    return names;
}

} // namespace

// Applications from desktop entries, files from the index, in the order and with the texts
// the search page shows.
class SearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void desktopEntriesAreReadAsTheDesktopWould()
    {
        QTemporaryDir root;
        const QString user = root.filePath(QStringLiteral("user/applications"));
        const QString system = root.filePath(QStringLiteral("system/applications"));
        writeFile(system + QStringLiteral("/term.desktop"),
                  entry(QStringLiteral("Terminal"), QStringLiteral("sh"),
                        QStringLiteral("Name[de]=Konsole\\sTerminal\nCategories=TerminalEmulator;")));
        writeFile(system + QStringLiteral("/hidden-by-user.desktop"),
                  entry(QStringLiteral("Versteckt"), QStringLiteral("sh")));
        writeFile(user + QStringLiteral("/hidden-by-user.desktop"),
                  entry(QStringLiteral("Versteckt"), QStringLiteral("sh"), QStringLiteral("Hidden=true")));
        writeFile(
            system + QStringLiteral("/nodisplay.desktop"),
            entry(QStringLiteral("Unsichtbar"), QStringLiteral("sh"), QStringLiteral("NoDisplay=true")));
        writeFile(system + QStringLiteral("/missing.desktop"),
                  entry(QStringLiteral("Fehlt"), QStringLiteral("/nonexistent/prog --x")));
        writeFile(system + QStringLiteral("/tryexec.desktop"),
                  entry(QStringLiteral("Probe"), QStringLiteral("sh"),
                        QStringLiteral("TryExec=no-such-program-here")));
        writeFile(system + QStringLiteral("/link.desktop"),
                  "[Desktop Entry]\nType=Link\nName=Verweis\nURL=https://example.org\n");
        writeFile(system + QStringLiteral("/broken.desktop"), "Name=Ohne Gruppe\nExec=sh\n\x01\xff\xfe");
        writeFile(system + QStringLiteral("/kde/editor.desktop"),
                  entry(QStringLiteral("Editor \"Quote\""), QStringLiteral("\"/bin/sh\" -c true")));

        const QList<InstalledApp> apps =
            AppCatalog::scan({user, system}, {QStringLiteral("de_DE"), QStringLiteral("de")});
        QStringList found;
        for (const InstalledApp& app : apps)
            found.append(app.id + u'=' + app.name);
        found.sort();
        QCOMPARE(found, (QStringList{QStringLiteral("kde-editor.desktop=Editor \"Quote\""),
                                     QStringLiteral("term.desktop=Konsole Terminal")}));
    }

    void applicationsComeFirstAndOnlyOneQueryRunsPerPause()
    {
        QTemporaryDir root;
        const QString apps = root.filePath(QStringLiteral("applications"));
        writeFile(apps + QStringLiteral("/term.desktop"),
                  entry(QStringLiteral("Terminal"), QStringLiteral("sh")));
        writeFile(apps + QStringLiteral("/xterm.desktop"),
                  entry(QStringLiteral("XTerm"), QStringLiteral("sh")));
        const QString docs = root.filePath(QStringLiteral("docs"));
        for (const QString& name : {QStringLiteral("term 10.txt"), QStringLiteral("term 9.txt"),
                                    QStringLiteral("Library/term.txt"), QStringLiteral("Alt.app/term.txt")})
            writeFile(docs + u'/' + name);
        MemoryPlatform memory;
        memory.fileSearch.applications = {apps};
        memory.fileSearch.files = {
            docs + QStringLiteral("/term 10.txt"),      docs + QStringLiteral("/Library/term.txt"),
            docs + QStringLiteral("/Alt.app/term.txt"), docs + QStringLiteral("/term 9.txt"),
            docs + QStringLiteral("/term gone.txt"),    apps + QStringLiteral("/term.desktop")};
        DeviceSearch search(memory.fileSearch, memory.scheduler);
        QTRY_VERIFY(search.appsReady());
        QCOMPARE(search.status(), QStringLiteral("Programme und Dateien auf deinem Mac finden."));

        search.setText(QStringLiteral("t"));
        search.setText(QStringLiteral("te"));
        search.setText(QStringLiteral("term"));
        // The applications are there at once, before the index is asked.
        QCOMPARE(names(search.results()), (QStringList{QStringLiteral("Terminal"), QStringLiteral("XTerm")}));
        QVERIFY(search.searching());
        QCOMPARE(search.status(), QStringLiteral("Suche im Spotlight-Index …"));
        memory.scheduler.advance(0.2);
        QVERIFY(memory.fileSearch.queries.isEmpty());
        memory.scheduler.advance(0.05);
        QCOMPARE(memory.fileSearch.queries, QStringList{QStringLiteral("term")});
        QTRY_VERIFY(!search.searching());
        // Numbers by value; nothing from bundles, Library folders or files that are gone; the
        // desktop entry is listed once, as the application.
        QCOMPARE(names(search.results()),
                 (QStringList{QStringLiteral("Terminal"), QStringLiteral("XTerm"),
                              QStringLiteral("term 9.txt"), QStringLiteral("term 10.txt")}));
        QCOMPARE(search.status(), QStringLiteral("4 Treffer · Programme zuerst · Spotlight-Dateiindex"));
        QCOMPARE(names(DeviceSearch::filtered(search.results(), DeviceSearch::Scope::files)),
                 (QStringList{QStringLiteral("term 9.txt"), QStringLiteral("term 10.txt")}));

        // Clearing forgets everything; only spaces count as empty.
        search.setText(QStringLiteral("   \n"));
        QVERIFY(search.results().isEmpty());
        QVERIFY(!search.searching());
        QCOMPARE(search.status(), QStringLiteral("Programme und Dateien auf deinem Mac finden."));
        QCOMPARE(memory.scheduler.pending(), 0);
    }

    void aSlowOrMissingIndexLeavesTheApplications()
    {
        QTemporaryDir root;
        const QString apps = root.filePath(QStringLiteral("applications"));
        writeFile(apps + QStringLiteral("/term.desktop"),
                  entry(QStringLiteral("Terminal"), QStringLiteral("sh")));
        MemoryPlatform memory;
        memory.fileSearch.applications = {apps};
        DeviceSearch search(memory.fileSearch, memory.scheduler);
        QTRY_VERIFY(search.appsReady());

        memory.fileSearch.available = false;
        search.setText(QStringLiteral("Term"));
        memory.scheduler.advance(DeviceSearch::debounce);
        QTRY_COMPARE(search.status(),
                     QStringLiteral("Spotlight nicht verfügbar. Gefundene Programme werden angezeigt."));
        QCOMPARE(names(search.results()), QStringList{QStringLiteral("Terminal")});

        // An index that never answers: the search gives up, and a late answer changes nothing.
        memory.fileSearch.available = true;
        memory.fileSearch.holdAnswers = true;
        memory.fileSearch.files = {apps + QStringLiteral("/term.desktop")};
        search.setText(QStringLiteral("term"));
        memory.scheduler.advance(DeviceSearch::debounce);
        QCOMPARE(memory.fileSearch.held(), 1);
        memory.scheduler.advance(DeviceSearch::patience);
        QVERIFY(!search.searching());
        QCOMPARE(search.status(),
                 QStringLiteral("Spotlight nicht verfügbar. Gefundene Programme werden angezeigt."));
        QVERIFY(memory.fileSearch.answerHeld());
        QCOMPARE(search.status(),
                 QStringLiteral("Spotlight nicht verfügbar. Gefundene Programme werden angezeigt."));

        // An answer to an older text arriving after a newer one started is dropped too.
        search.setText(QStringLiteral("ter"));
        memory.scheduler.advance(DeviceSearch::debounce);
        search.setText(QStringLiteral("zzz"));
        QVERIFY(memory.fileSearch.answerHeld());
        QVERIFY(search.results().isEmpty());
        QVERIFY(search.searching());

        // A text longer than any file name answers without asking the index.
        const int asked = int(memory.fileSearch.queries.size());
        search.setText(QString(10000, u'a'));
        memory.scheduler.advance(DeviceSearch::debounce);
        QCOMPARE(memory.fileSearch.queries.size(), asked);
        QCOMPARE(search.status(),
                 QStringLiteral("Keine Treffer. Nicht indexierte oder geschützte Dateien können fehlen."));
    }

    // Tracker 3 on a bus of the test's own, indexing a folder of the test's own.
    void theDesktopsFileIndexFindsFilesByName()
    {
        const QString miner = QStringLiteral("/usr/libexec/tracker-miner-fs-3");
        if (!QFileInfo(miner).isExecutable())
            QSKIP("tracker-miner-fs-3 is not installed (scripts/bootstrap installs it)");
        // The miner skips everything below the temporary folder, so the test lives elsewhere.
        QTemporaryDir home(QStringLiteral("/var/tmp/brenlow-search-XXXXXX"));
        QVERIFY(home.isValid());
        const QString corpus = home.filePath(QStringLiteral("corpus"));
        for (int i = 0; i < 40; ++i)
            writeFile(corpus + QStringLiteral("/notiz-%1.txt").arg(i));
        writeFile(corpus + QStringLiteral("/Quartalsbericht 2.odt"));
        writeFile(corpus + QStringLiteral("/Unterordner/quartalsbericht 10.txt"));
        writeFile(corpus + QStringLiteral("/Library/Quartalsbericht.txt"));
        writeFile(
            home.filePath(QStringLiteral("config/glib-2.0/settings/keyfile")),
            QStringLiteral("[org/freedesktop/tracker/miner/files]\nindex-recursive-directories=['%1']\n"
                           "index-single-directories=@as []\nindex-applications=false\ninitial-sleep=0\n")
                .arg(corpus)
                .toUtf8());
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        for (const auto& [key, sub] : {std::pair{"HOME", ""},
                                       {"XDG_CACHE_HOME", "/cache"},
                                       {"XDG_CONFIG_HOME", "/config"},
                                       {"XDG_DATA_HOME", "/data"},
                                       {"XDG_RUNTIME_DIR", "/run"},
                                       {"TMPDIR", "/tmp"}})
            env.insert(QString::fromLatin1(key), home.path() + QString::fromLatin1(sub));
        env.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("keyfile"));
        QDir().mkpath(home.filePath(QStringLiteral("run")));
        QFile::setPermissions(home.filePath(QStringLiteral("run")),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        QDir().mkpath(home.filePath(QStringLiteral("tmp")));

        QProcess bus;
        bus.setProcessEnvironment(env);
        bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                  QStringLiteral("--print-address=1")});
        const auto stopBus = qScopeGuard([&bus] {
            QDBusConnection::disconnectFromBus(QStringLiteral("search-index"));
            bus.kill();
            bus.waitForFinished();
        });
        QVERIFY(bus.waitForReadyRead(5000));
        const QString address = QString::fromUtf8(bus.readLine()).trimmed();
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        // libtracker-sparql finds the bus through the environment.
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
        QDBusConnection connection = QDBusConnection::connectToBus(address, QStringLiteral("search-index"));
        QVERIFY(connection.isConnected());

        {
            LinuxFileSearch index(connection);
            QObject context;
            std::optional<std::optional<QStringList>> answer;
            const auto ask = [&](const QString& text) {
                answer.reset();
                index.findByName(text, DeviceSearch::examined, &context,
                                 [&answer](std::optional<QStringList> paths) { answer = paths; });
                QTRY_VERIFY_WITH_TIMEOUT(answer.has_value(), 10000);
            };
            // Before the miner runs there is no index, and asking does not start one.
            ask(QStringLiteral("quartal"));
            QVERIFY(!answer->has_value());

            QProcess minerProcess;
            minerProcess.setProcessEnvironment(env);
            minerProcess.setStandardOutputFile(QProcess::nullDevice());
            minerProcess.setStandardErrorFile(QProcess::nullDevice());
            const auto stopMiner = qScopeGuard([&minerProcess] {
                minerProcess.kill();
                minerProcess.waitForFinished();
            });
            minerProcess.start(miner, {QStringLiteral("-s"), QStringLiteral("0")});
            QVERIFY(minerProcess.waitForStarted());
            QStringList found;
            for (int attempt = 0; attempt < 60 && found.size() < 3; ++attempt) {
                QTest::qWait(500);
                ask(QStringLiteral("QUARTAL"));
                if (answer->has_value())
                    found = **answer;
            }
            found.sort();
            QCOMPARE(found, (QStringList{corpus + QStringLiteral("/Library/Quartalsbericht.txt"),
                                         corpus + QStringLiteral("/Quartalsbericht 2.odt"),
                                         corpus + QStringLiteral("/Unterordner/quartalsbericht 10.txt")}));

            // Through the search: Library folders left out, numbers by value.
            MemoryPlatform memory;
            DeviceSearch search(index, memory.scheduler);
            QTRY_VERIFY(search.appsReady());
            search.setText(QStringLiteral("quartalsbericht"));
            memory.scheduler.advance(DeviceSearch::debounce);
            QTRY_VERIFY_WITH_TIMEOUT(!search.searching(), 10000);
            QCOMPARE(names(search.results()), (QStringList{QStringLiteral("Quartalsbericht 2.odt"),
                                                           QStringLiteral("quartalsbericht 10.txt")}));
            // A clean stop, as at the end of a session.
            minerProcess.terminate();
            QVERIFY(minerProcess.waitForFinished(10000));
        }
    }
};

QTEST_GUILESS_MAIN(SearchTest)
#include "tst_search.moc"
