#pragma once

#include <QByteArray>

// Child-process mode: owns the CLIPBOARD on an X connection of its own, the way other
// applications do, well or badly. Reads commands from stdin, one per line:
//   take <text>   takes the clipboard with this text; prints "taken" when it is the owner
//   fill <n>      the same with a text of n ASCII bytes
// and prints "asked: <target> alive: <k>" for every request, k being how many of the windows
// that have asked it so far still exist. Modes:
//   good          offers UTF8_STRING and STRING and answers
//   utf8-mime     offers only text/plain;charset=utf-8 and answers
//   latin1        offers only STRING and answers in Latin-1
//   pieces        answers UTF8_STRING in pieces of 4000 bytes (INCR)
//   pieces-lowball  the same, but announces a size of 0
//   targets-only  answers TARGETS, never the text
//   slow          like good, but sends the text a second after it was asked
//   hung          answers nothing
// Runs until stdin closes.
int serveX11Owner(const QByteArray& mode);
