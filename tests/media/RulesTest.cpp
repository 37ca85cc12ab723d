#include "MediaTests.h"
#include "TestSupport.h"

#include "media/MediaMath.h"
#include "media/PlayerAnswers.h"
#include "media/SpotifyImages.h"
#include "media/TrackChangePolicy.h"
#include "media/TrackToastSettings.h"
#include "media/WingPlacement.h"

#include <QTest>
#include <QTimeZone>

#include <cmath>
#include <limits>

namespace {

const QDateTime start = QDateTime::fromSecsSinceEpoch(1'700'000'000, Qt::UTC);
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

MediaSnapshot snapshot(const QString& app, const QString& id, bool playing)
{
    MediaSnapshot s;
    s.app = app;
    s.trackID = id;
    s.playing = playing;
    s.title = id;
    return s;
}

} // namespace

// The area's pure rules: texts of times, the poll's parsing and choice, change detection, wing
// placement and the toast's stored settings.
class RulesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void timestampsAndLiterals()
    {
        QCOMPARE(MediaMath::timestamp(125), QStringLiteral("2:05"));
        QCOMPARE(MediaMath::timestamp(59.9), QStringLiteral("0:59"));
        QCOMPARE(MediaMath::timestamp(3600), QStringLiteral("60:00"));
        for (double bad : {-5.0, notANumber, infinity, -infinity})
            QCOMPARE(MediaMath::timestamp(bad), QStringLiteral("0:00"));
        QCOMPARE(MediaMath::timestamp(1e9), QStringLiteral("1440000:00"));
        QCOMPARE(MediaMath::literal(QStringLiteral("a\"b\\c")), QStringLiteral("\"a\\\"b\\\\c\""));
        QCOMPARE(MediaMath::literal(QStringLiteral("x\ny\r")), QStringLiteral("\"x\\ny\\r\""));
    }

    void elapsedMovesOnlyWhilePlaying()
    {
        MediaSnapshot s = snapshot(QStringLiteral("Music"), QStringLiteral("a"), true);
        s.position = 30;
        s.duration = 120;
        s.receivedAt = start;
        QCOMPARE(s.elapsed(start.addSecs(10)), 40.0);
        QCOMPARE(s.elapsed(start.addSecs(190)), 120.0);
        QCOMPARE(s.elapsed(start.addSecs(-5)), 30.0);
        s.playing = false;
        QCOMPARE(s.elapsed(start.addSecs(50)), 30.0);
        for (double duration : {0.0, -3.0, infinity, notANumber}) {
            s.duration = duration;
            QCOMPARE(s.elapsed(start.addSecs(1)), 0.0);
        }
    }

    void parsingTakesWhatFitsAndDefaultsTheRest()
    {
        const auto spotify = PlayerAnswers::parse(
            QStringLiteral("Spotify"),
            MemoryPlayerBridge::track(QStringLiteral("T"), QStringLiteral("A"), true, 215000, 300,
                                      QStringLiteral("spotify:track:x"), QStringLiteral("https://a/b")),
            start);
        QVERIFY(spotify);
        QCOMPARE(spotify->duration, 215.0);
        QCOMPARE(spotify->position, 215.0); // clamped into the duration
        QCOMPARE(spotify->artworkURL, std::optional<QString>(QStringLiteral("https://a/b")));
        const auto music =
            PlayerAnswers::parse(QStringLiteral("Music"),
                                 MemoryPlayerBridge::track(QStringLiteral("T"), QStringLiteral("A"), false,
                                                           215.0, -4, QStringLiteral("id")),
                                 start);
        QCOMPARE(music->duration, 215.0);
        QCOMPARE(music->position, 0.0);
        // Missing and wrongly typed items: the defaults, never a crash.
        const auto odd = PlayerAnswers::parse(QStringLiteral("Music"),
                                              {QVariant(), 5, QStringLiteral("yes"), QStringLiteral("long"),
                                               notANumber, QVariant(), QVariant()},
                                              start);
        QVERIFY(odd);
        QCOMPARE(odd->title, QStringLiteral("Unbekannter Titel"));
        QCOMPARE(odd->artist, QString());
        QVERIFY(!odd->playing);
        QCOMPARE(odd->duration, 0.0);
        QCOMPARE(odd->trackID, QString());
        QVERIFY(!odd->artworkURL);
        for (double duration : {-10.0, notANumber, infinity}) {
            const auto bad = PlayerAnswers::parse(
                QStringLiteral("Music"),
                MemoryPlayerBridge::track(QStringLiteral("T"), {}, true, duration, 5, QStringLiteral("i")),
                start);
            QCOMPARE(bad->duration, 0.0);
            QCOMPARE(bad->position, 0.0);
        }
        QVERIFY(!PlayerAnswers::parse(QStringLiteral("Music"), {}, start));
        QVERIFY(!PlayerAnswers::parse(QStringLiteral("Music"), QVariantList(8, 1), start));
    }

    void choosingPrefersPlayingAndLaterPlayers()
    {
        const auto chosen = [](bool spotifyPlays, bool musicPlays) {
            return PlayerAnswers::choose(
                       {{QStringLiteral("Spotify"), trackReply(QStringLiteral("s"), spotifyPlays)},
                        {QStringLiteral("Music"), trackReply(QStringLiteral("m"), musicPlays)}},
                       start)
                .candidate->app;
        };
        QCOMPARE(chosen(false, true), QStringLiteral("Music"));
        QCOMPARE(chosen(false, false), QStringLiteral("Spotify"));
        QCOMPARE(chosen(true, true), QStringLiteral("Music"));
        QCOMPARE(chosen(true, false), QStringLiteral("Spotify"));

        const PollResult refused = PlayerAnswers::choose(
            {{QStringLiteral("Spotify"), PlayerReply::failure(PlayerReply::notPermitted)}}, start);
        QVERIFY(refused.denied && refused.failed && !refused.candidate);
        const PollResult mixed =
            PlayerAnswers::choose({{QStringLiteral("Spotify"), PlayerReply::failure(PlayerReply::timedOut)},
                                   {QStringLiteral("Music"), trackReply(QStringLiteral("m"), true)}},
                                  start);
        QVERIFY(mixed.failed && !mixed.denied);
        QCOMPARE(mixed.candidate->trackID, QStringLiteral("m"));
        const PollResult stopped = PlayerAnswers::choose(
            {{QStringLiteral("Music"), PlayerReply::list({})}, {QStringLiteral("Spotify"), {}}}, start);
        QVERIFY(!stopped.candidate && !stopped.failed);
    }

    void policyAnnouncesOnlyNewPlayingTracks()
    {
        TrackChangePolicy policy;
        const QString spotify = QStringLiteral("Spotify");
        QVERIFY(!policy.changed(snapshot(spotify, QStringLiteral("a"), true)));
        MediaSnapshot moved = snapshot(spotify, QStringLiteral("a"), true);
        moved.position = 50;
        QVERIFY(!policy.changed(moved));
        QVERIFY(!policy.changed(snapshot(spotify, QStringLiteral("a"), false)));
        QVERIFY(!policy.changed(snapshot(spotify, QStringLiteral("a"), true)));
        QCOMPARE(policy.changed(snapshot(spotify, QStringLiteral("b"), true)),
                 std::optional(QStringLiteral("Spotify:b")));
        QVERIFY(!policy.changed(std::nullopt));
        QVERIFY(!policy.changed(snapshot(spotify, QStringLiteral("b"), true)));
        QCOMPARE(policy.changed(snapshot(QStringLiteral("Music"), QStringLiteral("b"), true)),
                 std::optional(QStringLiteral("Music:b")));
        QVERIFY(!policy.changed(snapshot(QStringLiteral("Music"), QStringLiteral("c"), false)));
        QVERIFY(!policy.changed(snapshot(QStringLiteral("Music"), QStringLiteral("c"), true)));
        QVERIFY(!policy.changed(snapshot(QStringLiteral("Music"), QString(), true)));
        QCOMPARE(policy.previous(), std::optional(QStringLiteral("Music:c")));
    }

    void toastSettingsPersistAndRejectOddDurations()
    {
        ScratchDomain domain;
        {
            TrackToastSettings settings(*domain.defaults);
            QVERIFY(settings.enabled());
            QCOMPARE(settings.duration(), 3.0);
            settings.setEnabled(false);
            settings.setDuration(5);
        }
        {
            TrackToastSettings settings(domain.reopen());
            QVERIFY(!settings.enabled());
            QCOMPARE(settings.duration(), 5.0);
        }
        domain.defaults->setDouble(QStringLiteral("trackToast.duration"), 4);
        domain.defaults->setString(QStringLiteral("trackToast.enabled"), QStringLiteral("ja"));
        TrackToastSettings odd(*domain.defaults);
        QCOMPARE(odd.duration(), 3.0);
        QVERIFY(odd.enabled());
    }

    void wingHangsLeftOfTheNotch()
    {
        // A display whose notch is 184 wide at x 2100, in global coordinates with y growing down.
        for (double height : {24.0, 32.0, 37.0}) {
            DisplayInfo display{QStringLiteral("laptop"), QRectF(1440, 100, 1512, 982), height,
                                QRectF(1440, 100, 660, height), QRectF(2284, 100, 668, height)};
            const auto wing = WingPlacement::wingFrame(display);
            QVERIFY(wing);
            QCOMPARE(wing->width(), 230.0);
            QCOMPARE(wing->right(), 2102.0);
            QCOMPARE(wing->left(), 1872.0);
            QCOMPARE(wing->top(), 100.0);
            QCOMPARE(wing->height(), height);
        }
        DisplayInfo cramped{QStringLiteral("narrow"), QRectF(0, 0, 1000, 800), 30, QRectF(0, 0, 70, 30),
                            QRectF(300, 0, 700, 30)};
        QVERIFY(!WingPlacement::wingFrame(cramped));
        DisplayInfo plain{QStringLiteral("plain"), QRectF(0, 0, 1920, 1080)};
        QCOMPARE(*WingPlacement::wingFrame(plain), QRectF(652, 0, 230, 24));
        QCOMPARE(WingPlacement::sliver(QRectF(652, 0, 230, 24)), QRectF(881, 0, 1, 24));

        const QList<DisplayInfo> displays{
            plain, DisplayInfo{QStringLiteral("notched"), QRectF(1920, 0, 1512, 982), 32}};
        QCOMPARE(WingPlacement::chooseDisplay(displays, false), std::optional(1));
        QCOMPARE(WingPlacement::chooseDisplay(displays, true), std::optional(0));
        QVERIFY(!WingPlacement::chooseDisplay({}, false));
    }

    void spotifyCoversComeFromTheImageHost()
    {
        qunsetenv(SpotifyImages::baseVariable);
        QCOMPARE(SpotifyImages::downloadUrl(QStringLiteral("https://open.spotify.com/image/ab67")),
                 QUrl(QStringLiteral("https://i.scdn.co/image/ab67")));
        QCOMPARE(SpotifyImages::downloadUrl(QStringLiteral("https://i.scdn.co/image/cd")),
                 QUrl(QStringLiteral("https://i.scdn.co/image/cd")));
        QVERIFY(!SpotifyImages::downloadUrl(QStringLiteral("http://open.spotify.com/image/ab")).isValid());
        QVERIFY(!SpotifyImages::downloadUrl(QStringLiteral("kein url")).isValid());
        // The override is taken for loopback addresses only.
        qputenv(SpotifyImages::baseVariable, "http://example.org/image/");
        QCOMPARE(SpotifyImages::base(), QStringLiteral("https://i.scdn.co/image/"));
        qputenv(SpotifyImages::baseVariable, "http://127.0.0.1:9/image");
        QCOMPARE(SpotifyImages::downloadUrl(QStringLiteral("https://open.spotify.com/image/ab")),
                 QUrl(QStringLiteral("http://127.0.0.1:9/image/ab")));
        qunsetenv(SpotifyImages::baseVariable);
    }
};

int runRulesTests(int argc, char** argv)
{
    RulesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RulesTest.moc"
