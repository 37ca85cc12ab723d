#include "CoverServer.h"
#include "TestSupport.h"

#include "app/AppDelegate.h"
#include "media/ArtworkStore.h"
#include "media/NowPlaying.h"
#include "media/SpotifyImages.h"
#include "media/widgets/MusicCard.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/LinuxPlayerBridge.h"
#include "ui/SymbolButton.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString playerScript()
{
    // __FILE__ may be relative to the build folder, where the program under test lives.
    const QDir build = QFileInfo(QStringLiteral(BRENLOW_BINARY)).absoluteDir();
    return QFileInfo(build, QStringLiteral(__FILE__))
        .dir()
        .absoluteFilePath(QStringLiteral("mpris_player.py"));
}

QByteArray run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return process.readAllStandardOutput().trimmed();
}

// The wing's window as the X server sees it: "x y width height", or "" while none is mapped.
QString wingOnScreen()
{
    const QByteArray ids =
        run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                        QStringLiteral("--name"), QStringLiteral("Brenlow Einblendung")});
    if (ids.isEmpty())
        return {};
    const QString info = QString::fromUtf8(
        run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), QString::fromUtf8(ids.split('\n').first())}));
    const auto value = [&info](const char* label) {
        const QRegularExpression pattern(QString::fromLatin1(label) + QStringLiteral(":\\s+(-?\\d+)"));
        return pattern.match(info).captured(1);
    };
    return QStringList{value("Absolute upper-left X"), value("Absolute upper-left Y"), value("Width"),
                       value("Height")}
        .join(QLatin1Char(' '));
}

// One test player on the private bus; steered through its standard input, it reports on its output.
class TestPlayer
{
public:
    explicit TestPlayer(const QStringList& arguments)
    {
        m_process.setProcessChannelMode(QProcess::SeparateChannels);
        m_process.start(QStringLiteral("/usr/bin/python3"), QStringList{playerScript()} + arguments);
        m_ready = m_process.waitForReadyRead(10000) && m_process.readLine().trimmed() == "ready";
    }
    ~TestPlayer()
    {
        m_process.kill();
        m_process.waitForFinished(3000);
    }
    bool ready() const { return m_ready; }
    void send(const QByteArray& line) { m_process.write(line + '\n'); }
    // Waits until the player reported a line starting with `start`; answers the line.
    QString waitFor(const QString& start, int timeoutMs = 8000)
    {
        QDeadlineTimer deadline(timeoutMs);
        while (!deadline.hasExpired()) {
            while (m_process.canReadLine()) {
                const QString line = QString::fromUtf8(m_process.readLine().trimmed());
                if (line.startsWith(start))
                    return line;
            }
            QTest::qWait(20);
            m_process.waitForReadyRead(50);
        }
        return {};
    }

private:
    QProcess m_process;
    bool m_ready = false;
};

} // namespace

// Brenlow against real MPRIS players on a private session bus and the real X display: the bridge's
// answers and commands, the panel's music state, the wing window, covers over HTTP, and mpv.
class MediaX11Test : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<LinuxPlatform> m_linux;
    std::unique_ptr<ScratchDomain> m_domain;
    std::unique_ptr<AppDelegate> m_delegate;

    Model& model() { return m_delegate->model(); }
    NowPlaying& media() { return model().nowPlaying(); }

    void launch()
    {
        run(QStringLiteral("xdotool"),
            {QStringLiteral("mousemove"), QStringLiteral("300"), QStringLiteral("800")});
        m_linux = std::make_unique<LinuxPlatform>();
        m_domain = std::make_unique<ScratchDomain>();
        m_domain->defaults->setBool(QStringLiteral("welcome.completed"), true);
        m_delegate = std::make_unique<AppDelegate>(*m_domain->defaults, m_linux->platform());
        m_delegate->launch();
        model().setMediaEnabled(true);
    }

    static bool onBus(LinuxPlayerBridge& bridge, const QStringList& players)
    {
        QDeadlineTimer deadline(10000);
        while (!deadline.hasExpired()) {
            if (bridge.runningPlayers() == players)
                return true;
            QTest::qWait(50);
        }
        return false;
    }

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void cleanup()
    {
        m_delegate.reset();
        m_domain.reset();
        m_linux.reset();
    }

    void bridgeAnswersAndCommandsOverMpris()
    {
        TestPlayer browserByEntry(
            {QStringLiteral("aaa"), QStringLiteral("--desktop-entry"), QStringLiteral("firefox-esr")});
        TestPlayer browserByName({QStringLiteral("chromium.instance42")});
        TestPlayer plain({QStringLiteral("brenlowtest")});
        TestPlayer spotify({QStringLiteral("spotify"), QStringLiteral("--spotify")});
        QVERIFY(browserByEntry.ready() && browserByName.ready() && plain.ready() && spotify.ready());
        LinuxPlayerBridge bridge;
        QVERIFY(onBus(bridge, {QStringLiteral("Spotify"), QStringLiteral("Music")}));

        const PlayerReply music = bridge.query(QStringLiteral("Music"));
        QVERIFY(music.items && music.items->size() == 7);
        const QVariantList& items = *music.items;
        QCOMPARE(items[0].toString(), QStringLiteral("Erster Titel"));
        QCOMPARE(items[1].toString(), QStringLiteral("Erste Band"));
        QCOMPARE(items[2], QVariant(true));
        QCOMPARE(items[3].toDouble(), 180.0);
        QCOMPARE(items[5].toString(), QStringLiteral("/org/brenlow/track/1"));
        QCOMPARE(items[6].toString(), QString());

        const PlayerReply quirky = bridge.query(QStringLiteral("Spotify"));
        QVERIFY(quirky.items && quirky.items->size() == 7);
        QCOMPARE(quirky.items->at(3).toDouble(), 180000.0); // milliseconds, as the rules expect of Spotify
        QCOMPARE(quirky.items->at(5).toString(), QStringLiteral("spotify:track:1"));
        QCOMPARE(quirky.items->at(6).toString(), QStringLiteral("https://open.spotify.com/image/one-png"));
        // Its Position stays 0; ours moves on while it plays.
        QTest::qWait(600);
        QVERIFY(bridge.query(QStringLiteral("Spotify")).items->at(4).toDouble() >= 0.5);

        QVERIFY(bridge.command(QStringLiteral("Music"),
                               {PlayerCommand::Kind::seek, QStringLiteral("/org/brenlow/track/1"), 12.5}));
        QCOMPARE(plain.waitFor(QStringLiteral("SetPosition")),
                 QStringLiteral("SetPosition /org/brenlow/track/1 12500000"));
        QVERIFY(bridge.query(QStringLiteral("Music")).items->at(4).toDouble() >= 12.5);
        // The guard: a seek meant for another track is not sent.
        QVERIFY(bridge.command(QStringLiteral("Music"),
                               {PlayerCommand::Kind::seek, QStringLiteral("/org/brenlow/track/9"), 50}));
        QVERIFY(bridge.command(QStringLiteral("Music"), {PlayerCommand::Kind::next, {}, 0}));
        QCOMPARE(plain.waitFor(QStringLiteral("SetPosition"), 500), QString());

        QVERIFY(bridge.command(QStringLiteral("Spotify"),
                               {PlayerCommand::Kind::seek, QStringLiteral("spotify:track:1"), 30}));
        const QString seek = spotify.waitFor(QStringLiteral("Seek"));
        const qint64 offset = seek.section(QLatin1Char(' '), 1).toLongLong();
        QVERIFY2(offset > 25'000'000 && offset <= 30'000'000, qPrintable(seek));
        QVERIFY(bridge.command(QStringLiteral("Spotify"), {PlayerCommand::Kind::playPause, {}, 0}));
        QCOMPARE(spotify.waitFor(QStringLiteral("PlayPause")), QStringLiteral("PlayPause Paused"));

        // A player that stops answering fails after the limit with the timeout's number.
        plain.send("hang 5");
        QVERIFY(!plain.waitFor(QStringLiteral("ok hang")).isEmpty());
        const PlayerReply hung = bridge.query(QStringLiteral("Music"));
        QCOMPARE(hung.error, std::optional<int>(PlayerReply::timedOut));
    }

    void panelFollowsPlayersAndTheWingSlidesOut()
    {
        CoverServer covers;
        qputenv(SpotifyImages::baseVariable, covers.base().toUtf8());
        auto spotify = std::make_unique<TestPlayer>(
            QStringList{QStringLiteral("spotify"), QStringLiteral("--spotify"), QStringLiteral("--paused")});
        TestPlayer plain({QStringLiteral("brenlowtest")});
        QVERIFY(spotify->ready() && plain.ready());
        launch();
        QTRY_COMPARE_WITH_TIMEOUT(media().mediaStatus(), QStringLiteral("Music · Wiedergabe"), 8000);
        QCOMPARE(media().song(), QStringLiteral("Erster Titel"));

        // The card's play/pause reaches the player; then the paused Spotify is the one shown.
        MusicCard card(media());
        card.button(QStringLiteral("playpause"))->click();
        QCOMPARE(plain.waitFor(QStringLiteral("PlayPause")), QStringLiteral("PlayPause Paused"));
        QTRY_COMPARE_WITH_TIMEOUT(media().mediaStatus(), QStringLiteral("Spotify · Pausiert"), 8000);
        QTRY_VERIFY_WITH_TIMEOUT(media().artwork().hasImage(), 8000); // fetched from the local image host

        // A new playing track slides the wing out of the closed notch, then it goes again.
        plain.send("playpause");
        QTRY_COMPARE_WITH_TIMEOUT(media().mediaStatus(), QStringLiteral("Music · Wiedergabe"), 8000);
        // Another player taking over is news too; that wing goes first.
        QTRY_VERIFY_WITH_TIMEOUT(wingOnScreen().isEmpty(), 8000);
        plain.send("next");
        QTRY_COMPARE_WITH_TIMEOUT(media().song(), QStringLiteral("Zweiter Titel"), 8000);
        QTRY_COMPARE_WITH_TIMEOUT(wingOnScreen(), QStringLiteral("652 0 230 24"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(wingOnScreen().isEmpty(), 8000);

        // A seek lands where it was asked for.
        model().seek(100);
        QCOMPARE(plain.waitFor(QStringLiteral("SetPosition")),
                 QStringLiteral("SetPosition /org/brenlow/track/2 100000000"));

        // A hung player: the status says so after its limit, and the panel still opens and closes.
        spotify.reset();
        plain.send("hang 12");
        QTRY_COMPARE_WITH_TIMEOUT(
            media().mediaStatus(),
            QStringLiteral("Player antwortet nicht. Erneut versuchen oder die App öffnen."), 15000);
        run(QStringLiteral("xdotool"),
            {QStringLiteral("mousemove"), QStringLiteral("960"), QStringLiteral("5")});
        QTRY_VERIFY_WITH_TIMEOUT(model().expanded(), 3000);
        run(QStringLiteral("xdotool"),
            {QStringLiteral("mousemove"), QStringLiteral("300"), QStringLiteral("800")});
        QTRY_VERIFY_WITH_TIMEOUT(!model().expanded(), 3000);
        qunsetenv(SpotifyImages::baseVariable);
    }

    void oddPlayersNeverBreakThePanel()
    {
        TestPlayer plain({QStringLiteral("brenlowtest")});
        QVERIFY(plain.ready());
        launch();
        QTRY_COMPARE_WITH_TIMEOUT(media().song(), QStringLiteral("Erster Titel"), 8000);
        plain.send("longtitle");
        QTRY_COMPARE_WITH_TIMEOUT(media().song().size(), 100'000, 8000);
        plain.send("badmeta");
        QTRY_COMPARE_WITH_TIMEOUT(media().song(), QStringLiteral("Unbekannter Titel"), 8000);
        QCOMPARE(media().media()->duration, 0.0);
        plain.send("stop");
        QTRY_COMPARE_WITH_TIMEOUT(media().mediaStatus(),
                                  QStringLiteral("Warte auf einen Titel in Music oder Spotify."), 8000);
    }

    void realMpvPlaysAndFollows()
    {
        const QString mpris = QStringLiteral("/etc/mpv/scripts/mpris.so");
        if (QStandardPaths::findExecutable(QStringLiteral("mpv")).isEmpty() || !QFile::exists(mpris) ||
            QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty())
            QSKIP("mpv with mpv-mpris and ffmpeg are needed (scripts/bootstrap installs them)");
        QTemporaryDir folder;
        QStringList files;
        for (const char* title : {"Mpv Eins", "Mpv Zwei"}) {
            const QString file = folder.filePath(QString::number(files.size()) + QStringLiteral(".ogg"));
            QProcess ffmpeg;
            ffmpeg.start(QStringLiteral("ffmpeg"),
                         {QStringLiteral("-loglevel"), QStringLiteral("error"), QStringLiteral("-f"),
                          QStringLiteral("lavfi"), QStringLiteral("-i"),
                          QStringLiteral("sine=frequency=440:duration=60"), QStringLiteral("-metadata"),
                          QStringLiteral("title=") + QString::fromLatin1(title), QStringLiteral("-metadata"),
                          QStringLiteral("artist=Brenlow"), QStringLiteral("-c:a"),
                          QStringLiteral("libvorbis"), file});
            QVERIFY(ffmpeg.waitForFinished(30000) && ffmpeg.exitCode() == 0);
            files.append(file);
        }
        QProcess mpv;
        mpv.start(QStringLiteral("mpv"),
                  QStringList{QStringLiteral("--no-config"), QStringLiteral("--script=") + mpris,
                              QStringLiteral("--no-video"), QStringLiteral("--ao=null")} +
                      files);
        QVERIFY(mpv.waitForStarted());
        launch();
        QTRY_COMPARE_WITH_TIMEOUT(media().song(), QStringLiteral("Mpv Eins"), 10000);
        QCOMPARE(media().mediaApp(), QStringLiteral("Music"));
        model().seek(30);
        // The optimistic position shows at once; what counts is the player's own answer afterwards.
        QTest::qWait(1000);
        QTRY_VERIFY_WITH_TIMEOUT(!media().mediaBusy(), 5000);
        media().refreshMedia();
        QTRY_VERIFY_WITH_TIMEOUT(!media().mediaBusy(), 5000);
        QVERIFY2(media().media() && media().media()->position >= 29.5 && media().media()->position < 40,
                 qPrintable(QString::number(media().media() ? media().media()->position : -1)));
        model().mediaAction(QStringLiteral("next track"));
        QTRY_COMPARE_WITH_TIMEOUT(media().song(), QStringLiteral("Mpv Zwei"), 8000);
        mpv.kill();
        mpv.waitForFinished(3000);
    }
};

int main(int argc, char** argv)
{
    // A private session bus for the players and Brenlow, before anything opens the session bus.
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
    if (!bus.waitForReadyRead(10000)) {
        qCritical("dbus-daemon did not start");
        return 1;
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    int result = 0;
    {
        QApplication app(argc, argv);
        MediaX11Test test;
        result = QTest::qExec(&test, argc, argv);
    }
    bus.kill();
    bus.waitForFinished(3000);
    return result;
}

#include "MediaX11Test.moc"
