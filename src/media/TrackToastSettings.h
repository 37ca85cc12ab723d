#pragma once

#include <QObject>

class Defaults;

// Whether the wing announces new tracks and how long any wing stays; stored at once.
class TrackToastSettings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(double duration READ duration WRITE setDuration NOTIFY durationChanged)
public:
    static constexpr const char* enabledKey = "trackToast.enabled";
    static constexpr const char* durationKey = "trackToast.duration";
    static constexpr double durations[] = {2.0, 3.0, 5.0};
    static constexpr double defaultDuration = 3.0;

    explicit TrackToastSettings(Defaults& defaults, QObject* parent = nullptr);

    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    double duration() const { return m_duration; }
    // Only 2, 3 and 5 seconds exist; anything else is taken as 3.
    void setDuration(double seconds);
    static double validDuration(double seconds);

Q_SIGNALS:
    void enabledChanged();
    void durationChanged();

private:
    Defaults& m_defaults;
    bool m_enabled = true;
    double m_duration = defaultDuration;
};
