#pragma once

#include <QString>

// The German texts of the music area.
namespace MediaTexts {

QString unknownTitle();
QString noPlayback();
QString startPlayer();
QString waiting();
QString notAnswering();
QString allowAutomation();
QString automationRefused();
// Before the first answer and while the connection is off.
QString noPlaybackYet();
QString connectPlayers();
QString connectHint();
QString switchedOff();
// "Spotify · Wiedergabe" or "Music · Pausiert".
QString playerState(const QString& app, bool playing);
QString controlFailed();

// The music card.
QString nowPlaying();
QString anyPlayer();
QString connectButton();
QString positionLabel();
QString noTime();
QString back30();
QString back10();
QString previous();
QString playPause();
QString next();
QString forward10();
QString forward30();
QString cover();
QString noCover();

// Settings.
QString connectToggle();
QString controlsNote();
QString scopeNote();
QString toastToggle();
QString toastDuration();
QString seconds(int count);
QString toastPreview();
QString toastNote();

// The wing's counter notice: "3 ungelesene Hinweise".
QString unread(int count);

} // namespace MediaTexts
