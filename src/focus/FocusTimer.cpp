#include "focus/FocusTimer.h"

#include "common/Clock.h"
#include "focus/ActivityLog.h"
#include "focus/FocusTexts.h"
#include "platform/Sound.h"
#include "settings/Defaults.h"
#include "settings/Preferences.h"

#include <algorithm>
#include <cmath>

namespace {
const QString savedDurationKey = QStringLiteral("focus.savedDuration");
const QString savedSecondsKey = QStringLiteral("focus.savedSeconds");
const QString savedDeadlineKey = QStringLiteral("focus.savedDeadline");
const QString resumeDeadlineKey = QStringLiteral("focus.resumeDeadline");
const QString resumeDurationKey = QStringLiteral("focus.resumeDuration");

// No period is longer than the longest length the user can choose. A stored length, number of
// seconds or deadline beyond it is no state this timer wrote (9.2e18 seconds would fill the
// card with fifteen digits) and counts as the wrong type: 0 for the numbers, absent for a date.
constexpr qint64 longestPeriod = qint64(PreferenceValues::mostFocusMinutes) * 60;
static_assert(PreferenceValues::mostFocusMinutes == FocusTexts::focusMinutesHighest &&
                  PreferenceValues::fewestFocusMinutes == FocusTexts::focusMinutesLowest,
              "the stepper offers what the preferences can hold");

qint64 storedSeconds(const Defaults& defaults, const QString& key)
{
    const auto seconds = defaults.integerValue(key);
    return seconds && *seconds >= 0 && *seconds <= longestPeriod ? *seconds : 0;
}

std::optional<QDateTime> storedDeadline(const Defaults& defaults, const QString& key, const QDateTime& now)
{
    const auto deadline = defaults.dateValue(key);
    if (!deadline || now.secsTo(*deadline) > longestPeriod)
        return std::nullopt;
    return deadline;
}

// Seconds until `deadline`, rounded up to whole seconds and never negative.
qint64 secondsUntil(const QDateTime& now, const QDateTime& deadline)
{
    const double remaining = double(now.msecsTo(deadline)) / 1000.0;
    return std::max<qint64>(0, qint64(std::ceil(remaining)));
}
} // namespace

FocusTimer::FocusTimer(Defaults& defaults, Clock& clock, Sound& sound, const Preferences& preferences,
                       ActivityLog& activity, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_clock(clock), m_sound(sound), m_preferences(preferences),
      m_activity(activity)
{
    restore();
}

void FocusTimer::setDuration(qint64 minutes)
{
    minutes =
        std::clamp<qint64>(minutes, PreferenceValues::fewestFocusMinutes, PreferenceValues::mostFocusMinutes);
    setDurationSeconds(minutes * 60);
    setSeconds(m_duration);
    m_deadline.reset();
    setTimerRunning(false);
    persistFocus();
}

void FocusTimer::toggleTimer()
{
    const QDateTime now = m_clock.now();
    if (!m_timerRunning) {
        if (m_seconds == 0)
            setSeconds(m_duration);
        m_deadline = now.addSecs(m_seconds);
        setTimerRunning(true);
    } else {
        setSeconds(m_deadline ? secondsUntil(now, *m_deadline) : 0);
        m_deadline.reset();
        setTimerRunning(false);
    }
    persistFocus();
}

QString FocusTimer::timeText() const
{
    return QString::asprintf("%02lld:%02lld", m_seconds / 60, m_seconds % 60);
}

void FocusTimer::advance()
{
    if (!m_timerRunning || !m_deadline)
        return;
    setSeconds(secondsUntil(m_clock.now(), *m_deadline));
    if (m_seconds > 0)
        return;
    m_deadline.reset();
    setTimerRunning(false);
    persistFocus();
    m_activity.addNotice(QStringLiteral("Fokus geschafft"), QStringLiteral("Zeit für eine Pause."));
    if (m_preferences.values().focusSound)
        m_sound.play(QStringLiteral("Glass"));
    Q_EMIT periodFinished();
}

void FocusTimer::persistFocus()
{
    m_defaults.setInteger(savedDurationKey, m_duration);
    m_defaults.setInteger(savedSecondsKey, m_seconds);
    if (m_deadline)
        m_defaults.setDate(savedDeadlineKey, *m_deadline);
    else
        m_defaults.remove(savedDeadlineKey);
}

void FocusTimer::storeResume()
{
    if (!m_timerRunning || !m_deadline)
        return;
    m_defaults.setDate(resumeDeadlineKey, *m_deadline);
    m_defaults.setInteger(resumeDurationKey, m_duration);
}

void FocusTimer::restore()
{
    const QDateTime now = m_clock.now();
    m_duration = qint64(m_preferences.values().focusMinutes) * 60;
    m_seconds = m_duration;
    m_timerRunning = false;
    m_deadline.reset();

    // A self-restart hands over a running period; its keys stay and go stale by themselves.
    if (const auto resume = storedDeadline(m_defaults, resumeDeadlineKey, now); resume && *resume > now) {
        m_duration = std::max<qint64>(60, storedSeconds(m_defaults, resumeDurationKey));
        m_deadline = *resume;
        m_seconds = secondsUntil(now, *resume);
        m_timerRunning = true;
    }

    if (m_defaults.contains(savedDurationKey)) {
        m_duration = std::max<qint64>(60, storedSeconds(m_defaults, savedDurationKey));
        m_seconds = storedSeconds(m_defaults, savedSecondsKey);
        m_deadline = storedDeadline(m_defaults, savedDeadlineKey, now);
        if (m_deadline) {
            m_seconds = secondsUntil(now, *m_deadline);
            m_timerRunning = m_seconds > 0;
            if (!m_timerRunning)
                m_deadline.reset();
        }
    }
}

void FocusTimer::setSeconds(qint64 seconds)
{
    if (m_seconds == seconds)
        return;
    m_seconds = seconds;
    Q_EMIT secondsChanged();
}

void FocusTimer::setDurationSeconds(qint64 seconds)
{
    if (m_duration == seconds)
        return;
    m_duration = seconds;
    Q_EMIT durationChanged();
}

void FocusTimer::setTimerRunning(bool running)
{
    if (m_timerRunning == running)
        return;
    m_timerRunning = running;
    Q_EMIT timerRunningChanged();
}
