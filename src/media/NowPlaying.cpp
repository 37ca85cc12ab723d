#include "media/NowPlaying.h"

#include "common/Clock.h"
#include "common/StatusMessage.h"
#include "media/ArtworkStore.h"
#include "media/MediaTexts.h"
#include "platform/PlayerBridge.h"
#include "settings/Defaults.h"

#include <algorithm>
#include <cmath>

namespace {

std::optional<PlayerCommand::Kind> transport(const QString& command)
{
    if (command == QLatin1String("playpause"))
        return PlayerCommand::Kind::playPause;
    if (command == QLatin1String("next track"))
        return PlayerCommand::Kind::next;
    if (command == QLatin1String("previous track"))
        return PlayerCommand::Kind::previous;
    return std::nullopt;
}

bool knownPlayer(const QString& app)
{
    return app == QLatin1String("Spotify") || app == QLatin1String("Music");
}

} // namespace

NowPlaying::NowPlaying(Defaults& defaults, PlayerBridge& players, Clock& clock, Scheduler& scheduler,
                       StatusMessage& message, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_players(players), m_clock(clock), m_message(message),
      m_artwork(std::make_unique<ArtworkStore>(players, clock)), m_settle(scheduler, this),
      m_mediaEnabled(defaults.boolValue(QString::fromLatin1(enabledKey)).value_or(false)),
      m_song(MediaTexts::noPlaybackYet()), m_artist(MediaTexts::connectPlayers()),
      m_mediaStatus(MediaTexts::connectHint())
{
    connect(&players, &PlayerBridge::playersChanged, this, &NowPlaying::playersChanged);
    // The change handler runs once for the loaded value.
    applyEnabled();
}

NowPlaying::~NowPlaying() = default;

void NowPlaying::setMediaEnabled(bool enabled)
{
    const bool changed = m_mediaEnabled != enabled;
    m_mediaEnabled = enabled;
    if (changed)
        Q_EMIT mediaEnabledChanged();
    applyEnabled();
}

void NowPlaying::applyEnabled()
{
    m_defaults.setBool(QString::fromLatin1(enabledKey), m_mediaEnabled);
    ++m_generation;
    m_askAgain = false;
    if (m_mediaEnabled) {
        refreshMedia();
        return;
    }
    m_artwork->update(std::nullopt);
    setMedia(std::nullopt);
    setTexts(MediaTexts::noPlaybackYet(), MediaTexts::connectPlayers(), QString(), false, 0,
             MediaTexts::switchedOff());
}

void NowPlaying::refreshMedia()
{
    if (!m_mediaEnabled || m_mediaBusy)
        return;
    setBusy(true);
    const quint64 generation = m_generation;
    PlayerBridge* players = &m_players;
    m_queue.run<PollResult>(
        this, [players] { return PlayerAnswers::poll(*players, QDateTime()); },
        [this, generation](PollResult result) { apply(generation, result); });
}

void NowPlaying::playersChanged()
{
    if (!m_mediaEnabled)
        return;
    if (m_mediaBusy) {
        m_askAgain = true;
        return;
    }
    m_settle.schedule(changeSettleTime, [this] { refreshMedia(); });
}

void NowPlaying::apply(quint64 generation, const PollResult& result)
{
    setBusy(false);
    if (!m_mediaEnabled || generation != m_generation) {
        if (m_askAgain) {
            m_askAgain = false;
            refreshMedia();
        }
        return;
    }
    std::optional<MediaSnapshot> candidate = result.candidate;
    // Stamped where it arrives: the clock belongs to the main thread, and the hop takes a moment only.
    if (candidate)
        candidate->receivedAt = m_clock.now();
    setMedia(candidate);
    m_artwork->update(candidate);
    if (candidate) {
        setTexts(candidate->title, candidate->artist, candidate->app, candidate->playing,
                 candidate->elapsed(m_clock.now()),
                 MediaTexts::playerState(candidate->app, candidate->playing));
    } else if (result.denied) {
        setTexts(MediaTexts::noPlayback(), MediaTexts::allowAutomation(), QString(), false, 0,
                 MediaTexts::automationRefused());
    } else {
        setTexts(MediaTexts::noPlayback(), MediaTexts::startPlayer(), QString(), false, 0,
                 result.failed ? MediaTexts::notAnswering() : MediaTexts::waiting());
    }
    if (m_askAgain) {
        m_askAgain = false;
        refreshMedia();
    }
}

void NowPlaying::advancePosition()
{
    if (!m_media)
        return;
    const double position = m_media->elapsed(m_clock.now());
    if (position != m_songPosition) {
        m_songPosition = position;
        Q_EMIT songPositionChanged();
    }
}

void NowPlaying::mediaAction(const QString& command)
{
    const auto kind = transport(command);
    if (!m_mediaEnabled || !kind || !knownPlayer(m_mediaApp))
        return;
    runMediaCommand(PlayerCommand{*kind, QString(), 0}, m_mediaApp);
}

void NowPlaying::seek(double seconds)
{
    if (!m_mediaEnabled || !m_media || !(m_media->duration > 0) || m_media->trackID.isEmpty())
        return;
    const double duration = m_media->duration;
    const double target =
        std::isfinite(seconds) && std::isfinite(duration) ? std::clamp(seconds, 0.0, duration) : 0.0;
    ++m_generation;
    MediaSnapshot moved = *m_media;
    moved.position = target;
    moved.receivedAt = m_clock.now();
    setMedia(moved);
    if (m_songPosition != target) {
        m_songPosition = target;
        Q_EMIT songPositionChanged();
    }
    runMediaCommand(PlayerCommand{PlayerCommand::Kind::seek, moved.trackID, target}, moved.app);
}

void NowPlaying::runMediaCommand(const PlayerCommand& command, const QString& app)
{
    PlayerBridge* players = &m_players;
    m_queue.run<bool>(
        this, [players, command, app] { return players->command(app, command); },
        [this](bool sent) {
            if (!sent)
                m_message.setText(MediaTexts::controlFailed());
            refreshMedia();
        });
}

void NowPlaying::setMedia(std::optional<MediaSnapshot> media)
{
    if (m_media == media)
        return;
    m_media = std::move(media);
    Q_EMIT mediaChanged();
}

void NowPlaying::setTexts(const QString& song, const QString& artist, const QString& app, bool playing,
                          double position, const QString& status)
{
    // In the published order: song, artist, player, play state, position, status.
    if (m_song != song) {
        m_song = song;
        Q_EMIT songChanged();
    }
    if (m_artist != artist) {
        m_artist = artist;
        Q_EMIT artistChanged();
    }
    if (m_mediaApp != app) {
        m_mediaApp = app;
        Q_EMIT mediaAppChanged();
    }
    if (m_playing != playing) {
        m_playing = playing;
        Q_EMIT playingChanged();
    }
    if (m_songPosition != position) {
        m_songPosition = position;
        Q_EMIT songPositionChanged();
    }
    if (m_mediaStatus != status) {
        m_mediaStatus = status;
        Q_EMIT mediaStatusChanged();
    }
}

void NowPlaying::setBusy(bool busy)
{
    if (m_mediaBusy == busy)
        return;
    m_mediaBusy = busy;
    Q_EMIT mediaBusyChanged();
}
