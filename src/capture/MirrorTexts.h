#pragma once

#include <QString>

// The camera mirror's words.
namespace MirrorTexts {

QString initial();
QString preparing();
QString noCamera();
QString cannotOpen();
QString unavailable();
QString notStarted();
QString active();
QString stopped();
QString interrupted();
QString denied();

QString title();
QString startingPreview();
QString previewLabel();
QString note();
QString startButton();
QString stopButton();
QString settingsButton();
QString settingsAnchor();

} // namespace MirrorTexts
