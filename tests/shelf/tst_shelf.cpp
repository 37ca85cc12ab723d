#include "TestSupport.h"

#include "common/StatusMessage.h"
#include "platform/linux/LinuxSharing.h"
#include "productivity/AppCatalog.h"
#include "productivity/AppFavourites.h"
#include "productivity/ItemOpener.h"
#include "productivity/Shelf.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// KDE Connect as far as sharing sees it: the daemon lists devices, a device's share plugin takes
// URLs or refuses them.
class FakeDaemon : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kdeconnect.daemon")
public:
    QStringList reachable;
public Q_SLOTS:
    QStringList devices(bool onlyReachable, bool onlyPaired)
    {
        return onlyReachable && onlyPaired ? reachable : QStringList();
    }
};

class FakeShare : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kdeconnect.device.share")
public:
    QStringList received;
    QString refusal;
public Q_SLOTS:
    void shareUrl(const QString& url)
    {
        if (!refusal.isEmpty()) {
            sendErrorReply(QDBusError::Failed, refusal);
            return;
        }
        received.append(url);
    }
};

// A session bus of the test's own, so nothing of the desktop's is asked or changed.
class PrivateBus
{
public:
    PrivateBus()
    {
        m_daemon.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        if (m_daemon.waitForReadyRead(5000))
            address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    ~PrivateBus()
    {
        for (const QString& name : std::as_const(m_names))
            QDBusConnection::disconnectFromBus(name);
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    QDBusConnection connect(const QString& name)
    {
        m_names.append(name);
        return QDBusConnection::connectToBus(address, name);
    }
    QString address;

private:
    QProcess m_daemon;
    QStringList m_names;
};

// The shelf's lists, favourites, sharing and opening.
class ShelfTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void applicationsAndFilesAreSortedAndBadUrlsIgnored()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        const QUrl file = QUrl::fromLocalFile(QStringLiteral("/srv/Bericht.pdf"));
        const QUrl entry = QUrl::fromLocalFile(QStringLiteral("/usr/share/applications/Editor.DESKTOP"));
        const QUrl bundle = QUrl::fromLocalFile(QStringLiteral("/opt/Alt.app"));
        model.addFiles(
            {file, QUrl(QStringLiteral("https://example.org/a.desktop")), entry, file, bundle, entry});
        QCOMPARE(model.files(), QList<QUrl>{file});
        QCOMPARE(model.apps(), (QList<QUrl>{entry, bundle}));
        model.removeApp(bundle);
        QCOMPARE(fixture.restart().apps(), QList<QUrl>{entry});
    }

    void awkwardPathsSurviveARestartUnchanged()
    {
        ModelFixture fixture;
        QTemporaryDir folder;
        const QString spaced = folder.filePath(QStringLiteral("mit Leer zeichen.txt"));
        const QString lines = folder.filePath(QStringLiteral("zwei\nZeilen.txt"));
        // A name that is not UTF-8 on disk, as Qt decodes it.
        const QString latin1 = QFile::decodeName(QByteArray("/srv/gr\xfc\xdf.txt"));
        const QString longPath = u'/' + QString(3990, u'x') + QStringLiteral(".txt");
        QList<QUrl> urls;
        for (const QString& path : {spaced, lines, latin1, longPath})
            urls.append(QUrl::fromLocalFile(path));
        fixture.model->addFiles(urls);
        QCOMPARE(fixture.restart().files(), urls);
        // Stored as the plain path list the key is defined as, nothing lost or escaped away.
        QStringList paths;
        for (const QUrl& url : urls)
            paths.append(url.toLocalFile());
        QCOMPARE(fixture.domain.defaults->stringArrayValue(QStringLiteral("files")),
                 std::optional<QStringList>(paths));
    }

    void tenThousandFilesArriveInOneStep()
    {
        ModelFixture fixture;
        QList<QUrl> urls;
        for (int i = 0; i < 10000; ++i)
            urls.append(QUrl::fromLocalFile(QStringLiteral("/srv/stapel/datei-%1.txt").arg(i)));
        urls.append(urls.first());
        int changes = 0;
        QObject::connect(&fixture.model->shelf(), &Shelf::filesChanged, [&changes] { ++changes; });
        fixture.model->addFiles(urls);
        QCOMPARE(changes, 1);
        QCOMPARE(fixture.model->files().size(), 10000);
        QCOMPARE(fixture.restart().files().last(), urls.at(9999));
    }

    void firstStartFavouritesAreTheDesktopsOwnApps()
    {
        QTemporaryDir home;
        const QString apps = home.filePath(QStringLiteral("applications"));
        QDir().mkpath(apps);
        const auto write = [&](const QString& name, const QString& categories, const QString& exec) {
            QFile file(QDir(apps).filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nCategories=%3\n")
                           .arg(name, exec, categories)
                           .toUtf8());
        };
        write(QStringLiteral("firstbrowser.desktop"), QStringLiteral("Network;WebBrowser;"),
              QStringLiteral("sh"));
        write(QStringLiteral("chosenbrowser.desktop"), QStringLiteral("Network;WebBrowser;"),
              QStringLiteral("sh"));
        write(QStringLiteral("gone.desktop"), QStringLiteral("TextEditor;"),
              QStringLiteral("/nonexistent/edit"));
        write(QStringLiteral("term.desktop"), QStringLiteral("System;TerminalEmulator;"),
              QStringLiteral("sh -c x"));
        QFile mimeapps(home.filePath(QStringLiteral("mimeapps.list")));
        QVERIFY(mimeapps.open(QIODevice::WriteOnly));
        mimeapps.write(
            "[Added Associations]\nx-scheme-handler/https=firstbrowser.desktop;\n"
            "[Default Applications]\nx-scheme-handler/https=missing.desktop;chosenbrowser.desktop;\n");
        mimeapps.close();

        ModelFixture fixture;
        fixture.memory.fileSearch.applications = {apps};
        fixture.memory.fileSearch.defaultApps = {home.path()};
        fixture.domain.defaults->remove(QStringLiteral("apps"));
        // The browser the user chose, no editor (its program is missing), the terminal.
        QCOMPARE(
            fixture.restart().apps(),
            (QList<QUrl>{QUrl::fromLocalFile(QDir(apps).filePath(QStringLiteral("chosenbrowser.desktop"))),
                         QUrl::fromLocalFile(QDir(apps).filePath(QStringLiteral("term.desktop")))}));
        // Once stored, an emptied list stays empty.
        const QList<QUrl> favourites = fixture.model->apps();
        for (const QUrl& app : favourites)
            fixture.model->removeApp(app);
        QVERIFY(fixture.restart().apps().isEmpty());
    }

    void aFileDeletedAfterShelvingStaysAndSaysSo()
    {
        ModelFixture fixture;
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Entwurf.txt"));
        QFile(path).open(QIODevice::WriteOnly);
        fixture.memory.workspace.openable.insert(path);
        fixture.model->addFiles({QUrl::fromLocalFile(path)});
        fixture.model->openItem(QUrl::fromLocalFile(path));
        QCOMPARE(fixture.memory.workspace.opened, QStringList{path});
        QFile::remove(path);
        fixture.model->openItem(QUrl::fromLocalFile(path));
        QCOMPARE(
            fixture.model->message(),
            QStringLiteral("„Entwurf.txt“ ist nicht mehr da. Der Eintrag bleibt, bis du ihn entfernst."));
        QCOMPARE(fixture.memory.workspace.opened.size(), 1);
        QCOMPARE(fixture.model->files().size(), 1);
        // A file that is there but that the desktop refuses.
        const QString refused = folder.filePath(QStringLiteral("Fremd.xyz"));
        QFile(refused).open(QIODevice::WriteOnly);
        fixture.model->openItem(QUrl::fromLocalFile(refused));
        QCOMPARE(fixture.model->message(), QStringLiteral("Element konnte nicht geöffnet werden."));
    }

    void sharingHoldsOneSessionAndReportsEveryEnd()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        MemorySharing& sharing = fixture.memory.sharing;
        const QList<QUrl> files{QUrl::fromLocalFile(QStringLiteral("/srv/a.txt"))};

        model.airDrop({});
        QCOMPARE(model.message(), QStringLiteral("Lege zuerst Dateien in die Ablage."));
        QCOMPARE(model.interactionLocks(), qint64(0));

        model.airDrop(files);
        QCOMPARE(model.interactionLocks(), qint64(1));
        model.airDrop(files);
        QCOMPARE(model.message(), QStringLiteral("Ein AirDrop-Dialog ist bereits geöffnet."));
        QCOMPARE(sharing.waiting(), 1);
        QVERIFY(sharing.finish());
        QCOMPARE(sharing.sent, QList<QList<QUrl>>{files});
        QCOMPARE(model.interactionLocks(), qint64(0));
        QVERIFY(!model.sharingSessionOpen());

        sharing.reachable = false;
        model.airDrop(files);
        QVERIFY(sharing.finish());
        QCOMPARE(model.message(), QStringLiteral("AirDrop ist für diese Auswahl nicht verfügbar."));

        sharing.reachable = true;
        sharing.failure = QStringLiteral("Abgebrochen");
        model.airDrop(files);
        QVERIFY(sharing.finish());
        QCOMPARE(model.message(), QStringLiteral("AirDrop beendet: Abgebrochen"));
        QCOMPARE(model.interactionLocks(), qint64(0));
    }

    void kdeConnectSharesWithAReachableDeviceOnly()
    {
        PrivateBus bus;
        QVERIFY2(!bus.address.isEmpty(), "dbus-daemon did not start");
        QDBusConnection client = bus.connect(QStringLiteral("shelf-client"));
        QDBusConnection server = bus.connect(QStringLiteral("shelf-server"));
        QVERIFY(client.isConnected() && server.isConnected());
        LinuxSharing sharing(client);
        QObject context;
        std::optional<SharingResult> result;
        const auto ask = [&](const QList<QUrl>& files) {
            result.reset();
            sharing.share(files, &context, [&result](SharingResult r) { result = r; });
            QTRY_VERIFY(result.has_value());
        };
        const QList<QUrl> files{QUrl::fromLocalFile(QStringLiteral("/srv/mit Leerzeichen.txt")),
                                QUrl::fromLocalFile(QStringLiteral("/srv/b.txt"))};

        // No daemon on the bus.
        ask(files);
        QCOMPARE(result->outcome, SharingResult::unavailable);

        FakeDaemon daemon;
        FakeShare share;
        QVERIFY(server.registerObject(QStringLiteral("/modules/kdeconnect"), &daemon,
                                      QDBusConnection::ExportAllSlots));
        QVERIFY(server.registerObject(QStringLiteral("/modules/kdeconnect/devices/phone1/share"), &share,
                                      QDBusConnection::ExportAllSlots));
        QVERIFY(server.registerService(QString::fromLatin1(LinuxSharing::service)));
        // The daemon runs, but no paired device is in reach.
        ask(files);
        QCOMPARE(result->outcome, SharingResult::unavailable);

        daemon.reachable = {QStringLiteral("phone1")};
        ask(files);
        QCOMPARE(result->outcome, SharingResult::shared);
        QCOMPARE(share.received, (QStringList{QStringLiteral("file:///srv/mit%20Leerzeichen.txt"),
                                              QStringLiteral("file:///srv/b.txt")}));

        share.refusal = QStringLiteral("Übertragung abgelehnt");
        ask(files);
        QCOMPARE(result->outcome, SharingResult::failed);
        QCOMPARE(result->error, QStringLiteral("Übertragung abgelehnt"));
    }
};

QTEST_GUILESS_MAIN(ShelfTest)
#include "tst_shelf.moc"
