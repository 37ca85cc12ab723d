#pragma once

#include <QWidget>

#include <functional>

class NowPlaying;
class QPushButton;
class SegmentedControl;
class ToggleRow;
class TrackToastSettings;

// The players' part of the "Verbindungen" settings: the connection switch and the track toast's
// switch, duration and test.
class MediaSettings : public QWidget
{
    Q_OBJECT
public:
    MediaSettings(NowPlaying& media, TrackToastSettings& toast, std::function<void()> preview,
                  QWidget* parent = nullptr);

    ToggleRow* connectRow() const { return m_connect; }
    ToggleRow* toastRow() const { return m_toast; }
    SegmentedControl* durationControl() const { return m_duration; }
    QPushButton* previewButton() const { return m_preview; }

private:
    void sync();

    NowPlaying& m_media;
    TrackToastSettings& m_settings;
    ToggleRow* m_connect;
    ToggleRow* m_toast;
    SegmentedControl* m_duration;
    QPushButton* m_preview;
};
