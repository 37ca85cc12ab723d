#pragma once

#include <QString>

// Child-process mode: owns the clipboard with `text` marked the way KeePassXC marks a secret
// (text/plain plus x-kde-passwordManagerHint), prints "serving", and prints "asked: <type>"
// whenever another client reads a type's data from it. Runs until killed.
int serveConcealed(const QString& text);
