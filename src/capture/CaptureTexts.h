#pragma once

#include <QString>

// The sentences of the capture flow's status line.
namespace CaptureTexts {

QString saveMessage();
QString launchFailed(const QString& reason);
// "Keine Aufnahme erstellt. " + the tool's text cut to `limit` characters, or the cancel text.
QString noCapture(const QString& errorText, qsizetype limit);
QString saved(const QString& displayName);
QString saveFailed(const QString& temporaryPath);
QString stopEntry();

} // namespace CaptureTexts
