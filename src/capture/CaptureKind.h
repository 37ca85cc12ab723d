#pragma once

#include "platform/CaptureTool.h"

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QStringList>

// What a capture makes: a screenshot of an area or window, or a recording of a screen area.
enum class CaptureKind { screenshot, video };

// The rules and texts of each kind. The file type itself comes from the capture tool, which
// knows what it writes (PNG, and MP4 or WebM for recordings on Linux).
namespace CaptureKinds {

QString saveTitle(CaptureKind kind);
QString displayName(CaptureKind kind);
// The status line while the tool runs.
QString hint(CaptureKind kind);
CaptureTool::Mode mode(CaptureKind kind);

// The macOS tool's extension and content type, and its argument list with the destination as
// the last argument, unchanged (no quoting: blanks and quotes stay as they are).
QString macExtension(CaptureKind kind);
QString macContentType(CaptureKind kind);
QStringList arguments(CaptureKind kind, const QString& destination);

// "Brenlow-" + the date (short) and time (with seconds) as the locale writes them, with every
// ":" and "/" turned into "-", then "." + the extension.
QString proposedName(const QDateTime& now, const QString& extension,
                     const QLocale& locale = QLocale::system());

} // namespace CaptureKinds
