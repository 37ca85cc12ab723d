#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

#include <optional>

class ActivityLog;
class Clock;
class Defaults;
class Preferences;
class Sound;

// The deadline-based focus countdown ("Fokuszeit"). While it runs it holds the wall-clock end and
// derives the seconds left from it, so a restart resumes it where it stands. Main thread only.
class FocusTimer : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qint64 seconds READ seconds NOTIFY secondsChanged)
    Q_PROPERTY(qint64 duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(bool timerRunning READ timerRunning NOTIFY timerRunningChanged)
    Q_PROPERTY(QString timeText READ timeText NOTIFY secondsChanged)
public:
    // Restores a saved or resumable period; otherwise the default length from the preferences.
    FocusTimer(Defaults& defaults, Clock& clock, Sound& sound, const Preferences& preferences,
               ActivityLog& activity, QObject* parent = nullptr);

    qint64 seconds() const { return m_seconds; }
    qint64 duration() const { return m_duration; }
    bool timerRunning() const { return m_timerRunning; }
    std::optional<QDateTime> deadline() const { return m_deadline; }
    // "25:00"; minutes are not capped at two digits.
    QString timeText() const;

    // A new length in minutes (1…120), stopped and full.
    void setDuration(qint64 minutes);
    // Starts (a finished timer from its full length) or pauses.
    void toggleTimer();
    // The heartbeat's step: recomputes the seconds left; at zero the period ends with a notice,
    // the sound when wanted, and periodFinished().
    void advance();
    void persistFocus();
    // Before a self-restart: a running period is handed to the next start.
    void storeResume();

Q_SIGNALS:
    void secondsChanged();
    void durationChanged();
    void timerRunningChanged();
    // A running period reached zero (the panel opens on the overview).
    void periodFinished();

private:
    void restore();
    void setSeconds(qint64 seconds);
    void setDurationSeconds(qint64 seconds);
    void setTimerRunning(bool running);

    Defaults& m_defaults;
    Clock& m_clock;
    Sound& m_sound;
    const Preferences& m_preferences;
    ActivityLog& m_activity;
    qint64 m_seconds = 1500;
    qint64 m_duration = 1500;
    bool m_timerRunning = false;
    std::optional<QDateTime> m_deadline;
};
