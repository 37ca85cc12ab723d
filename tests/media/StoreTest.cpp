#include "MediaTests.h"
#include "TestSupport.h"

#include "media/ArtworkStore.h"
#include "media/NowPlaying.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

// The player connection through the model: polls on the media queue, the texts of every outcome,
// stale answers, commands and seeks, on the memory bridge.
class StoreTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ModelFixture> m_fixture;

    Model& model() { return *m_fixture->model; }
    NowPlaying& media() { return model().nowPlaying(); }
    MemoryPlayerBridge& players() { return m_fixture->memory.players; }

    // One poll through the queue, waited for.
    void poll()
    {
        media().refreshMedia();
        QTRY_VERIFY(!media().mediaBusy());
    }

    // The heartbeat's share: three ticks make one poll.
    void enable()
    {
        model().setMediaEnabled(true);
        QTRY_VERIFY(!media().mediaBusy());
    }

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }
    void init() { m_fixture = std::make_unique<ModelFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void switchedOffShowsItsTextsAndPersists()
    {
        QVERIFY(!media().mediaEnabled());
        QCOMPARE(media().mediaStatus(), QStringLiteral("Musikverbindung ausgeschaltet."));
        QCOMPARE(media().song(), QStringLiteral("Noch keine Wiedergabe"));
        QCOMPARE(media().artist(), QStringLiteral("Apple Music & Spotify verbinden"));
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), true));
        for (int i = 0; i < 6; ++i)
            model().tick();
        QTest::qWait(50);
        QCOMPARE(players().queries(), 0);
        enable();
        QCOMPARE(media().song(), QStringLiteral("Titel"));
        QVERIFY(m_fixture->restart().mediaEnabled());
    }

    void idleTextsFollowTheFlags()
    {
        enable();
        QCOMPARE(media().song(), QStringLiteral("Keine Wiedergabe"));
        QCOMPARE(media().artist(), QStringLiteral("Apple Music oder Spotify starten"));
        QCOMPARE(media().mediaStatus(), QStringLiteral("Warte auf einen Titel in Music oder Spotify."));

        players().setPlayer(QStringLiteral("Spotify"), PlayerReply::failure(PlayerReply::timedOut));
        poll();
        QCOMPARE(media().mediaStatus(),
                 QStringLiteral("Player antwortet nicht. Erneut versuchen oder die App öffnen."));

        players().setPlayer(QStringLiteral("Spotify"), PlayerReply::failure(PlayerReply::notPermitted));
        players().setPlayer(QStringLiteral("Music"), PlayerReply::list({}));
        poll();
        QCOMPARE(media().artist(), QStringLiteral("Automation in Einstellungen erlauben"));
        QCOMPARE(
            media().mediaStatus(),
            QStringLiteral("Automation wurde nicht erlaubt. Freigabe in den Systemeinstellungen prüfen."));

        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), false));
        poll();
        QCOMPARE(media().mediaStatus(), QStringLiteral("Music · Pausiert"));
        QCOMPARE(media().mediaApp(), QStringLiteral("Music"));
        QVERIFY(!media().playing());
    }

    void pausedLosesToPlayingAndPositionMovesLocally()
    {
        players().setPlayer(QStringLiteral("Spotify"), trackReply(QStringLiteral("s"), false, 200000, 5));
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), true, 200, 10));
        enable();
        QCOMPARE(media().mediaStatus(), QStringLiteral("Music · Wiedergabe"));
        QCOMPARE(media().songPosition(), 10.0);
        m_fixture->memory.clock.advance(2);
        model().tick();
        QCOMPARE(media().songPosition(), 12.0);
        // Every third tick asks again.
        const int before = players().queries();
        model().tick();
        model().tick();
        QTRY_COMPARE(players().queries(), before + 2);
    }

    void lateAnswersAreDropped()
    {
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), true));
        enable();
        players().hold();
        media().refreshMedia();
        QVERIFY(media().mediaBusy());
        media().refreshMedia(); // dropped, not queued
        model().setMediaEnabled(false);
        players().release();
        QTRY_VERIFY(!media().mediaBusy());
        QCOMPARE(media().mediaStatus(), QStringLiteral("Musikverbindung ausgeschaltet."));
        QVERIFY(!media().media());
    }

    void seekClampsShowsAtOnceAndGuardsTheTrack()
    {
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), true, 200, 10));
        enable();
        PlayerCommand last;
        const auto seekAndSend = [this, &last](double to) {
            const int before = int(players().commands().size());
            media().seek(to);
            QTRY_COMPARE(int(players().commands().size()), before + 1);
            QTRY_VERIFY(!media().mediaBusy());
            last = players().commands().constLast().second;
        };
        media().seek(95.5);
        QCOMPARE(media().songPosition(), 95.5); // optimistic, before the player answers
        QTRY_COMPARE(int(players().commands().size()), 1);
        QCOMPARE(players().commands().constLast().second,
                 (PlayerCommand{PlayerCommand::Kind::seek, QStringLiteral("m"), 95.5}));
        seekAndSend(-5);
        QCOMPARE(last.position, 0.0);
        seekAndSend(300);
        QCOMPARE(last.position, 200.0);
        seekAndSend(std::numeric_limits<double>::quiet_NaN());
        QCOMPARE(last.position, 0.0);

        // A poll already running when the seek happens does not undo the seek's position.
        QTRY_VERIFY(!media().mediaBusy());
        players().hold();
        media().refreshMedia();
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), false, 200, 1));
        QList<double> shown;
        connect(&media(), &NowPlaying::songPositionChanged, this,
                [&] { shown.append(media().songPosition()); });
        media().seek(150);
        players().release();
        QTRY_COMPARE(players().commands().constLast().second.position, 150.0);
        QTRY_VERIFY(!media().mediaBusy());
        QTRY_COMPARE(media().songPosition(), 150.0);
        QVERIFY2(!shown.contains(1.0), "the stale answer was shown");
        disconnect(&media(), &NowPlaying::songPositionChanged, this, nullptr);

        // Without a duration or a track identity nothing is sent.
        players().setPlayer(QStringLiteral("Music"), trackReply(QString(), true, 200, 10));
        poll();
        const int sent = int(players().commands().size());
        media().seek(20);
        QTest::qWait(50);
        QCOMPARE(int(players().commands().size()), sent);
    }

    void transportReachesOnlyAKnownPlayer()
    {
        enable();
        media().mediaAction(QStringLiteral("playpause")); // no player answered yet
        players().setPlayer(QStringLiteral("Spotify"), trackReply(QStringLiteral("s"), true, 200000));
        poll();
        media().mediaAction(QStringLiteral("stop"));
        media().mediaAction(QStringLiteral("playpause"));
        QTRY_COMPARE(int(players().commands().size()), 1);
        QCOMPARE(players().commands().constFirst().first, QStringLiteral("Spotify"));
        QTRY_VERIFY(!media().playing()); // the poll after the command follows the player
        media().mediaAction(QStringLiteral("next track"));
        media().mediaAction(QStringLiteral("previous track"));
        QTRY_COMPARE(int(players().commands().size()), 3);
        QCOMPARE(players().commands().at(1).second.kind, PlayerCommand::Kind::next);
        QCOMPARE(players().commands().at(2).second.kind, PlayerCommand::Kind::previous);

        players().setCommandsFail(true);
        media().mediaAction(QStringLiteral("playpause"));
        QTRY_COMPARE(model().message(),
                     QStringLiteral("Musiksteuerung nicht möglich. Automation-Freigabe prüfen."));
    }

    void changeSignalsAskOnceAfterTheySettle()
    {
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), true));
        enable();
        const int before = players().queries();
        players().announceChange();
        players().announceChange();
        m_fixture->memory.scheduler.advance(NowPlaying::changeSettleTime);
        QTRY_VERIFY(!media().mediaBusy());
        QCOMPARE(players().queries(), before + 1);

        // A change during a running poll is asked about once that poll is back.
        players().hold();
        media().refreshMedia();
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("n"), true));
        players().announceChange();
        players().release();
        QTRY_COMPARE(media().media() ? media().media()->trackID : QString(), QStringLiteral("n"));
    }

    void hugeTitlesPassUnharmed()
    {
        const QString title(100'000, QLatin1Char('x'));
        players().setPlayer(QStringLiteral("Music"), trackReply(QStringLiteral("m"), true, 200, 10, title));
        enable();
        QCOMPARE(media().song().size(), 100'000);
    }
};

int runStoreTests(int argc, char** argv)
{
    StoreTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "StoreTest.moc"
