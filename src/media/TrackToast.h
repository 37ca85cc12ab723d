#pragma once

#include "common/Scheduler.h"
#include "media/MediaSnapshot.h"
#include "media/TrackChangePolicy.h"

#include <QDateTime>
#include <QImage>
#include <QObject>

#include <functional>
#include <optional>

class Clock;
class Displays;
class NowPlaying;
class Preferences;
class SessionEvents;
class TrackToastSettings;
class WingSurface;

// The wing beside the closed notch: a new track slides it out with cover, title and artist for a
// few seconds; so does a rising unread counter of a watched menu-bar app. One wing at a time, never
// over the open panel, a running capture or the intro. Main thread only.
class TrackToast : public QObject
{
    Q_OBJECT
public:
    static constexpr double slideInTime = 0.22;
    static constexpr double slideOutTime = 0.18;
    static constexpr double defaultHeight = 24;

    // What the wing watches and where it goes.
    struct Inputs
    {
        NowPlaying& media;
        TrackToastSettings& settings;
        // Whether something covers the notch now: the open panel, a capture, the intro.
        std::function<bool()> covered;
        Preferences& preferences;
        Displays& displays;
        // A sleeping machine wakes to no stale wing.
        SessionEvents& session;
        Clock& clock;
        Scheduler& scheduler;
    };

    TrackToast(const Inputs& inputs, WingSurface& surface, QObject* parent = nullptr);
    ~TrackToast() override;

    // Slides a wing out (after hiding any other) and schedules its retraction.
    void show(const QImage& image, const QString& title, const QString& subtitle);
    // A cover that arrives while the wing for its track is up, in time: the wing shows it.
    void display(const QImage& image);
    // Slides the wing back into the notch, then hides it unless something newer happened.
    void retract();
    // Takes the wing away at once.
    void hide();
    // The settings' test: the current song's wing, with the panel closed first.
    void preview();
    // An unread counter of a menu-bar app rose to `count`: the app's icon, its name and
    // "<count> ungelesene Hinweise", for the same duration as a track. Shown even with track
    // announcements switched off.
    void announceUnread(const QString& appID, const QString& name, int count);
    // The panel opened or closed: an open panel removes the wing at once.
    void panelExpanded(bool expanded);

    // What a test or the self-test looks at.
    const std::optional<QString>& visibleMusic() const { return m_visibleMusic; }
    const std::optional<QString>& pending() const { return m_pending; }
    double displayHeight() const { return m_displayHeight; }

Q_SIGNALS:
    // The preview closes the panel first: the wing never shows over it.
    void closeRequested();

private:
    void mediaChanged();
    void artworkChanged();
    void retractDone(quint64 token);

    Inputs m_in;
    WingSurface& m_surface;
    TrackChangePolicy m_policy;
    std::optional<QString> m_pending;
    std::optional<MediaSnapshot> m_song;
    std::optional<QString> m_visibleMusic;
    double m_displayHeight = defaultHeight;
    QDateTime m_pendingUntil;
    ScheduledWork m_dismiss;
    quint64 m_animationToken = 0;
};
