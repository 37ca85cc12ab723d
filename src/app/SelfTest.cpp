#include "app/SelfTest.h"

#include "model/Model.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"

#include <QUuid>

#include <cstdio>

namespace {

void pass(const QString& group)
{
    // A group whose pieces are not built yet answers nothing and prints nothing.
    if (group.isEmpty())
        return;
    std::printf("PASS: %s\n", group.toUtf8().constData());
    std::fflush(stdout);
}

} // namespace

int runSelfTest()
{
    const QString domainName =
        QStringLiteral("Brenlow.ModelTests.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    int status = 0;
    try {
        pass(SelfTestGroups::permissions());
        pass(SelfTestGroups::productivityStore());
        pass(SelfTestGroups::preferencesAndHover());
        pass(SelfTestGroups::noteHistory());
        pass(SelfTestGroups::searchRules());
        pass(SelfTestGroups::mediaRules());
        pass(SelfTestGroups::menuCommands());
        pass(SelfTestGroups::menuBarCounters());
        pass(SelfTestGroups::metForecast());
        pass(SelfTestGroups::weatherStore());

        Defaults defaults(domainName);
        MemoryPlatform memory;
        {
            Model model(defaults, memory.platform(), false, memory.pasteboard);
            pass(SelfTestGroups::clipboardCapture(model, memory));
            pass(SelfTestGroups::historyPersistence(model, memory));
            pass(SelfTestGroups::shelfAndSharing(model, memory));
            pass(SelfTestGroups::timerAndEvents(model, memory));
        }
    } catch (const SelfTestFailure& failure) {
        std::fprintf(stderr, "FAIL: %s\n", failure.what());
        status = 1;
    }
    Defaults(domainName).removeDomain();
    return status;
}
