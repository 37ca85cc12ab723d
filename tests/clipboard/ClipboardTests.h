#pragma once

#include "clipboard/Clip.h"

#include <QList>
#include <QString>
#include <QStringList>

// The test classes of this program; main runs them in turn.
int runArchiveTests(int argc, char** argv);
int runCaptureTests(int argc, char** argv);
int runClassifyTests(int argc, char** argv);
int runRowsTests(int argc, char** argv);
int runStoreTests(int argc, char** argv);
int runPageTests(int argc, char** argv);
int runEditMenuTests(int argc, char** argv);
int runPasteboardTests(int argc, char** argv);

// Child-process mode of the crash test: captures `text` into the history file at `path`,
// prints "captured" and waits to be killed.
int captureAndHang(const QString& path, const QString& text);

// The texts of the clips, in their order.
inline QStringList texts(const QList<Clip>& clips)
{
    QStringList result;
    for (const Clip& clip : clips)
        result.append(clip.text);
    return result;
}
