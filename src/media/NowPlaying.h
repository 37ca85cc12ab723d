#pragma once

#include "common/Scheduler.h"
#include "common/SerialQueue.h"
#include "media/MediaSnapshot.h"
#include "media/PlayerAnswers.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class ArtworkStore;
class Clock;
class Defaults;
class PlayerBridge;
class StatusMessage;

// What the players play, as the panel shows it, and the way to control them. The model asks the
// players every third heartbeat and whenever one reports a change; the questions and the commands
// run one at a time on the "Brenlow.media" queue. Every answer carries the generation it was asked
// in and is dropped when the connection was switched or a seek happened meanwhile.
class NowPlaying : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool mediaEnabled READ mediaEnabled WRITE setMediaEnabled NOTIFY mediaEnabledChanged)
    Q_PROPERTY(QString song READ song NOTIFY songChanged)
    Q_PROPERTY(QString artist READ artist NOTIFY artistChanged)
    Q_PROPERTY(QString mediaApp READ mediaApp NOTIFY mediaAppChanged)
    Q_PROPERTY(bool playing READ playing NOTIFY playingChanged)
    Q_PROPERTY(double songPosition READ songPosition NOTIFY songPositionChanged)
    Q_PROPERTY(QString mediaStatus READ mediaStatus NOTIFY mediaStatusChanged)
    Q_PROPERTY(bool mediaBusy READ mediaBusy NOTIFY mediaBusyChanged)
public:
    static constexpr const char* enabledKey = "mediaEnabled";
    static constexpr const char* queueLabel = "Brenlow.media";
    // A burst of change signals (metadata, then play state) becomes one question.
    static constexpr double changeSettleTime = 0.03;

    NowPlaying(Defaults& defaults, PlayerBridge& players, Clock& clock, Scheduler& scheduler,
               StatusMessage& message, QObject* parent = nullptr);
    ~NowPlaying() override;

    bool mediaEnabled() const { return m_mediaEnabled; }
    // Stores the switch and asks at once, or clears everything with the switched-off texts.
    void setMediaEnabled(bool enabled);
    const std::optional<MediaSnapshot>& media() const { return m_media; }
    const QString& song() const { return m_song; }
    const QString& artist() const { return m_artist; }
    const QString& mediaApp() const { return m_mediaApp; }
    bool playing() const { return m_playing; }
    double songPosition() const { return m_songPosition; }
    const QString& mediaStatus() const { return m_mediaStatus; }
    bool mediaBusy() const { return m_mediaBusy; }
    quint64 mediaGeneration() const { return m_generation; }
    ArtworkStore& artwork() const { return *m_artwork; }

    // Asks the players unless switched off or a question is still out.
    void refreshMedia();
    // The heartbeat moves the shown position on from the last answer.
    void advancePosition();
    // "playpause", "next track" or "previous track" to the player that answered last.
    void mediaAction(const QString& command);
    // Moves the current track to `seconds` (clamped), showing the new position at once.
    void seek(double seconds);

Q_SIGNALS:
    void mediaEnabledChanged();
    void mediaChanged();
    void songChanged();
    void artistChanged();
    void mediaAppChanged();
    void playingChanged();
    void songPositionChanged();
    void mediaStatusChanged();
    void mediaBusyChanged();

private:
    void applyEnabled();
    void apply(quint64 generation, const PollResult& result);
    void runMediaCommand(const PlayerCommand& command, const QString& app);
    void playersChanged();
    void setMedia(std::optional<MediaSnapshot> media);
    void setTexts(const QString& song, const QString& artist, const QString& app, bool playing,
                  double position, const QString& status);
    void setBusy(bool busy);

    Defaults& m_defaults;
    PlayerBridge& m_players;
    Clock& m_clock;
    StatusMessage& m_message;
    std::unique_ptr<ArtworkStore> m_artwork;
    SerialQueue m_queue{QString::fromLatin1(queueLabel)};
    ScheduledWork m_settle;

    bool m_mediaEnabled = false;
    std::optional<MediaSnapshot> m_media;
    QString m_song;
    QString m_artist;
    QString m_mediaApp;
    bool m_playing = false;
    double m_songPosition = 0;
    QString m_mediaStatus;
    bool m_mediaBusy = false;
    quint64 m_generation = 0;
    // A player reported a change while a question was out: ask once more when it is back.
    bool m_askAgain = false;
};
