#pragma once

#include <QWidget>

class DeviceStatus;
class FocusTimer;
class NowPlaying;
class PanelState;
class Productivity;
class QLabel;
class QPushButton;
class SongArtwork;
class SymbolButton;

// The overview in one row: song, focus timer, search and the way back to the full overview.
class MiniOverview : public QWidget
{
    Q_OBJECT
public:
    MiniOverview(const NowPlaying& nowPlaying, FocusTimer& focus, const DeviceStatus& devices,
                 PanelState& panel, Productivity& productivity, QWidget* parent = nullptr);

    QPushButton* timerButton() const { return m_timer; }
    SymbolButton* searchButton() const { return m_search; }
    SymbolButton* expandButton() const { return m_expand; }
    QString songText() const;
    QString statusText() const;
    SongArtwork* cover() const { return m_cover; }

private:
    void sync();

    const NowPlaying& m_nowPlaying;
    FocusTimer& m_focus;
    const DeviceStatus& m_devices;
    SongArtwork* m_cover;
    QLabel* m_song;
    QLabel* m_status;
    QPushButton* m_timer;
    SymbolButton* m_search;
    SymbolButton* m_expand;
};
