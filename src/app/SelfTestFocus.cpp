// Self-test group for the focus timer and the activity list, on the shared test model.
#include "app/SelfTest.h"

#include "model/Model.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"

namespace SelfTestGroups {

QString timerAndEvents(Model& model, MemoryPlatform& memory)
{
    model.setDuration(15);
    selfCheck(model.duration() == 900 && model.seconds() == 900 && !model.timerRunning(), "15 minutes set");
    model.setDuration(0);
    selfCheck(model.duration() == 60, "the shortest period is one minute");
    model.setDuration(500);
    selfCheck(model.duration() == 7200, "the longest period is two hours");

    model.setDuration(15);
    model.toggleTimer();
    selfCheck(model.timerRunning() && model.deadline().has_value(), "start");
    memory.clock.advance(0.4);
    model.toggleTimer();
    selfCheck(!model.timerRunning() && !model.deadline() && model.seconds() >= 899, "pause keeps the rest");

    model.setDuration(25);
    selfCheck(model.timeText() == u"25:00" && !model.timerRunning(), "reset shows the full period");

    model.toggleTimer();
    const int noticesBefore = int(model.notices().size());
    memory.clock.advance(25 * 60 + 1);
    model.tick();
    selfCheck(model.seconds() == 0 && !model.timerRunning() && !model.deadline(),
              "expiration stops the timer");
    selfCheck(model.notices().size() == noticesBefore + 1 &&
                  model.notices().first().title == u"Fokus geschafft" &&
                  model.notices().first().detail == u"Zeit für eine Pause.",
              "expiration is recorded");
    selfCheck(memory.sound.played == QStringList{QStringLiteral("Glass")}, "expiration plays the sound");
    model.toggleTimer();
    selfCheck(model.timerRunning() && model.seconds() == 1500,
              "a finished timer restarts with the full period");

    // A restart of the application resumes the running period from its deadline.
    memory.clock.advance(100);
    Defaults reopened(model.defaults().domain());
    Model restarted(reopened, memory.platform(), false, memory.pasteboard);
    selfCheck(restarted.timerRunning() && restarted.seconds() == 1400, "a running period survives a restart");
    restarted.toggleTimer();

    for (int i = 0; i < 70; ++i)
        restarted.addNotice(QStringLiteral("Event %1").arg(i), QString());
    const QList<Notice> kept = restarted.notices();
    Defaults reopenedAgain(model.defaults().domain());
    Model again(reopenedAgain, memory.platform(), false, memory.pasteboard);
    selfCheck(kept.size() >= 70 && kept.first().title == u"Event 69" && again.notices() == kept,
              "every event is kept across a restart");
    return QStringLiteral("timer start/pause/reset/expiration/restart; event retention");
}

} // namespace SelfTestGroups
