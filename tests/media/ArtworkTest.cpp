#include "CoverServer.h"
#include "MediaTests.h"
#include "TestSupport.h"

#include "media/ArtworkStore.h"
#include "media/PlayerAnswers.h"
#include "media/SpotifyImages.h"

#include <QSignalSpy>
#include <QTest>

namespace {

MediaSnapshot track(const QString& app, const QString& id, const QString& art = {})
{
    MediaSnapshot s;
    s.app = app;
    s.trackID = id;
    s.playing = true;
    s.duration = 100;
    s.artworkURL = art;
    return s;
}

} // namespace

// Covers: one load per track, the cache, the pause after a failure, and downloads that go wrong
// in every way a server can make them go wrong.
class ArtworkTest : public QObject
{
    Q_OBJECT

private:
    MemoryPlatform m_memory;
    CoverServer m_server;

    std::optional<MediaSnapshot> spotify(const QString& id, const QString& path)
    {
        return track(QStringLiteral("Spotify"), id, QStringLiteral("https://open.spotify.com/image/") + path);
    }

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        QVERIFY(m_server.isListening());
        qputenv(SpotifyImages::baseVariable, m_server.base().toUtf8());
    }
    void cleanupTestCase() { qunsetenv(SpotifyImages::baseVariable); }

    void musicCoversLoadOnceAndComeBackFromTheCache()
    {
        ArtworkStore store(m_memory.players, m_memory.clock);
        m_memory.players.setCover(QStringLiteral("Music"), QStringLiteral("a"), CoverServer::png());
        const auto a = track(QStringLiteral("Music"), QStringLiteral("a"));
        store.update(a);
        store.update(a); // every poll hands the same track again
        QTRY_VERIFY(store.hasImage());
        store.update(a);
        QCOMPARE(m_memory.players.coverReads(), 1);
        QCOMPARE(store.key(), QStringLiteral("Music:a"));

        store.update(track(QStringLiteral("Music"), QStringLiteral("b")));
        QVERIFY(!store.hasImage());
        QTRY_VERIFY(!store.busy());
        store.update(a);
        QVERIFY(store.hasImage()); // at once, from the cache
        QCOMPARE(m_memory.players.coverReads(), 2);
        store.update(std::nullopt);
        QVERIFY(!store.hasImage());
        QCOMPARE(store.key(), QString());
    }

    void failuresWaitAMinuteAndLateResultsAreIgnored()
    {
        ArtworkStore store(m_memory.players, m_memory.clock);
        m_memory.players.setCover(QStringLiteral("Music"), QStringLiteral("c"), "kein Bild");
        const auto c = track(QStringLiteral("Music"), QStringLiteral("c"));
        const int reads = m_memory.players.coverReads();
        store.update(c);
        QTRY_VERIFY(!store.busy());
        QVERIFY(!store.hasImage());
        m_memory.clock.advance(59);
        store.update(c);
        QVERIFY(!store.busy());
        m_memory.clock.advance(2);
        m_memory.players.setCover(QStringLiteral("Music"), QStringLiteral("c"), CoverServer::png());
        store.update(c);
        QTRY_VERIFY(store.hasImage());
        QCOMPARE(m_memory.players.coverReads(), reads + 2);

        // The player answers for the old track after the user moved on.
        m_memory.players.setCover(QStringLiteral("Music"), QStringLiteral("d"), CoverServer::png(Qt::blue));
        m_memory.players.holdCovers();
        store.update(track(QStringLiteral("Music"), QStringLiteral("d")));
        store.update(
            track(QStringLiteral("Spotify"), QStringLiteral("e"), QStringLiteral("http://insecure/x")));
        m_memory.players.release();
        QTest::qWait(100);
        QVERIFY(!store.hasImage());
        QCOMPARE(store.key(), QStringLiteral("Spotify:e"));
    }

    void spotifyDownloadsSucceedOrEndInNoCover()
    {
        ArtworkStore store(m_memory.players, m_memory.clock);
        store.update(spotify(QStringLiteral("ok"), QStringLiteral("ok-png")));
        QTRY_VERIFY(store.hasImage());
        QCOMPARE(store.image().size(), QSize(64, 64));

        for (const char* path : {"missing", "loop", "huge", "text"}) {
            const QString id = QString::fromLatin1(path);
            store.update(spotify(id, id));
            QVERIFY(store.busy());
            QTRY_VERIFY2_WITH_TIMEOUT(!store.busy(), path, 15000);
            QVERIFY2(!store.hasImage(), path);
        }
        // An http address is never fetched.
        const int requests = m_server.requests;
        store.update(track(QStringLiteral("Spotify"), QStringLiteral("plain"),
                           QStringLiteral("http://open.spotify.com/image/x-png")));
        QVERIFY(!store.busy());
        QCOMPARE(m_server.requests, requests);
    }

    void switchingTracksCancelsTheDownload()
    {
        ArtworkStore store(m_memory.players, m_memory.clock);
        store.update(spotify(QStringLiteral("slow"), QStringLiteral("huge")));
        store.update(spotify(QStringLiteral("next"), QStringLiteral("next-png")));
        QTRY_VERIFY(store.hasImage());
        QCOMPARE(store.key(), QStringLiteral("Spotify:next"));
    }

    void decodingRefusesWhatIsNoImage()
    {
        QVERIFY(ArtworkStore::decode(QByteArray()).isNull());
        QVERIFY(ArtworkStore::decode(QByteArray(5000, '\xff')).isNull());
        // A PNG header that claims 100000 × 100000 pixels is refused before its pixels exist.
        QByteArray bogus = CoverServer::png();
        bogus[16] = 0;
        bogus[17] = 1;
        bogus[18] = char(0x86);
        bogus[19] = char(0xA0);
        bogus[20] = 0;
        bogus[21] = 1;
        bogus[22] = char(0x86);
        bogus[23] = char(0xA0);
        QVERIFY(ArtworkStore::decode(bogus).isNull());
        QImage big(2000, 1000, QImage::Format_RGB32);
        big.fill(Qt::green);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        big.save(&buffer, "JPG");
        QCOMPARE(ArtworkStore::decode(bytes).size(), QSize(256, 128));
    }
};

int runArtworkTests(int argc, char** argv)
{
    ArtworkTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ArtworkTest.moc"
