#pragma once

#include <QString>

#include <stdexcept>

class Model;
class MemoryPlatform;

// The built-in validations of `--self-test`. Each group throws SelfTestFailure at its first
// failed check; the runner prints "PASS: <group>" after a group returns.
struct SelfTestFailure : std::runtime_error
{
    explicit SelfTestFailure(const QString& what) : std::runtime_error(what.toStdString()) {}
};

// Throws with `what` when `condition` is false.
inline void selfCheck(bool condition, const char* what)
{
    if (!condition)
        throw SelfTestFailure(QString::fromUtf8(what));
}

namespace SelfTestGroups {

// Each group runs on private state (memory platform, private settings domains) and answers the
// text of its PASS line.
QString permissions();
QString productivityStore();
QString preferencesAndHover();
// Hover rules, checked as part of the preferences group.
void hoverBehaviour();
// Model-level groups share one fresh model without services (memory pasteboard, no history file).
QString clipboardCapture(Model& model, MemoryPlatform& memory);
QString historyPersistence(Model& model, MemoryPlatform& memory);
QString timerAndEvents(Model& model, MemoryPlatform& memory);
// Notes, shelf and search.
QString noteHistory();
QString shelfAndSharing(Model& model, MemoryPlatform& memory);
QString searchRules();
// The music rules on their own (no model, no queue).
QString mediaRules();
// Menu commands and the menu-bar apps' counters, on the memory platform.
QString menuCommands();
QString menuBarCounters();
// The weather: the forecast's rules, and the store on its own private domain.
QString metForecast();
QString weatherStore();

} // namespace SelfTestGroups

// Runs every group in order; prints the PASS lines; answers the exit status.
int runSelfTest();
