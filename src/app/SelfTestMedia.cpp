// Self-test group for the music rules: times and literals, the poll's parsing and choice, change
// detection, the wing's place and the track toast's settings.
#include "app/SelfTest.h"

#include "media/MediaMath.h"
#include "media/PlayerAnswers.h"
#include "media/TrackChangePolicy.h"
#include "media/TrackToastSettings.h"
#include "media/WingPlacement.h"
#include "platform/memory/MemoryPlayerBridge.h"
#include "settings/Defaults.h"

#include <QUuid>

#include <cmath>
#include <limits>

namespace {

MediaSnapshot song(const QString& app, const QString& id, bool playing)
{
    MediaSnapshot s;
    s.app = app;
    s.trackID = id;
    s.playing = playing;
    return s;
}

} // namespace

namespace SelfTestGroups {

QString mediaRules()
{
    selfCheck(MediaMath::timestamp(125) == QLatin1String("2:05") &&
                  MediaMath::timestamp(3600) == QLatin1String("60:00") &&
                  MediaMath::timestamp(std::numeric_limits<double>::quiet_NaN()) == QLatin1String("0:00"),
              "position labels");
    selfCheck(MediaMath::literal(QStringLiteral("a\"b\\c")) == QStringLiteral("\"a\\\"b\\\\c\""),
              "script literals");

    const QDateTime t0 = QDateTime::fromSecsSinceEpoch(10, Qt::UTC);
    MediaSnapshot playing = song(QStringLiteral("Music"), QStringLiteral("a"), true);
    playing.position = 30;
    playing.duration = 120;
    playing.receivedAt = t0;
    selfCheck(playing.elapsed(t0.addSecs(10)) == 40 && playing.elapsed(t0.addSecs(190)) == 120,
              "elapsed while playing");
    playing.duration = 0;
    selfCheck(playing.elapsed(t0.addSecs(10)) == 0, "elapsed without a duration");

    const auto spotify = PlayerAnswers::parse(
        QStringLiteral("Spotify"),
        MemoryPlayerBridge::track(QStringLiteral("T"), {}, true, 215000, 5, QStringLiteral("s")), t0);
    selfCheck(spotify && spotify->duration == 215, "Spotify's milliseconds");
    const auto untitled = PlayerAnswers::parse(QStringLiteral("Music"), QVariantList(7), t0);
    selfCheck(untitled && untitled->title == QLatin1String("Unbekannter Titel") && untitled->artist.isEmpty(),
              "missing title and artist");
    const PollResult chosen = PlayerAnswers::choose(
        {{QStringLiteral("Spotify"), PlayerReply::list(MemoryPlayerBridge::track(
                                         QStringLiteral("S"), {}, false, 1000, 0, QStringLiteral("s")))},
         {QStringLiteral("Music"), PlayerReply::list(MemoryPlayerBridge::track(QStringLiteral("M"), {}, true,
                                                                               10, 0, QStringLiteral("m")))}},
        t0);
    selfCheck(chosen.candidate && chosen.candidate->app == QLatin1String("Music"),
              "playing wins over paused");
    const PollResult refused = PlayerAnswers::choose(
        {{QStringLiteral("Spotify"), PlayerReply::failure(PlayerReply::notPermitted)}}, t0);
    selfCheck(refused.denied && refused.failed && !refused.candidate, "refused automation");

    TrackChangePolicy policy;
    const QString s = QStringLiteral("Spotify");
    selfCheck(!policy.changed(song(s, QStringLiteral("a"), true)) &&
                  !policy.changed(song(s, QStringLiteral("a"), false)) &&
                  policy.changed(song(s, QStringLiteral("b"), true)) == QStringLiteral("Spotify:b") &&
                  !policy.changed(std::nullopt) && !policy.changed(song(s, QStringLiteral("b"), true)) &&
                  policy.changed(song(QStringLiteral("Music"), QStringLiteral("b"), true)) ==
                      QStringLiteral("Music:b"),
              "track change policy");

    const DisplayInfo display{QStringLiteral("laptop"), QRectF(1440, 100, 1512, 982), 32,
                              QRectF(1440, 100, 660, 32), QRectF(2284, 100, 668, 32)};
    const auto wing = WingPlacement::wingFrame(display);
    selfCheck(wing && *wing == QRectF(1872, 100, 230, 32), "wing beside the notch");

    const QString domain =
        QStringLiteral("Brenlow.SelfTest.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        Defaults defaults(domain);
        TrackToastSettings settings(defaults);
        selfCheck(settings.enabled() && settings.duration() == 3, "toast defaults");
        settings.setDuration(5);
        settings.setEnabled(false);
        TrackToastSettings again(defaults);
        selfCheck(!again.enabled() && again.duration() == 5, "toast settings persist");
        defaults.setDouble(QStringLiteral("trackToast.duration"), 4);
        selfCheck(TrackToastSettings(defaults).duration() == 3, "odd durations read as 3");
    }
    Defaults(domain).removeDomain();
    return QStringLiteral(
        "media answers and choice, times and literals, track change policy, wing placement, toast settings");
}

} // namespace SelfTestGroups
