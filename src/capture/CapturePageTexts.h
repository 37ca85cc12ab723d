#pragma once

#include <QString>

// The capture page's words (the flow's sentences are in CaptureTexts).
namespace CapturePageTexts {

QString title();
QString section();
QString captureChoice();
QString mirrorChoice();
QString explanation();
QString screenshotDetail();
// "Bildschirmbereich · MP4": the type the recording is written in.
QString videoDetail(const QString& extension);
QString selectionHint();
QString stopHint();
QString stopButton();
QString permissionButton();
QString permissionAnchor();

} // namespace CapturePageTexts
