#include "DesktopFixtures.h"

#include <QApplication>
#include <QTest>

#include <cstdio>
#include <cstring>

int runAtspiTests(int argc, char** argv);
int runTrayTests(int argc, char** argv);

int main(int argc, char** argv)
{
    if (argc >= 2 && std::strcmp(argv[1], "--menu-app") == 0)
        return runMenuFixture(argc, argv);
    // Our own session bus, so the tray watcher's and the accessibility bus's names are ours alone.
    PrivateDesktopSession session;
    if (!session.ready()) {
        std::fprintf(stderr, "no private session bus with an accessibility bus\n");
        return 1;
    }
    QApplication app(argc, argv);
    int failures = runAtspiTests(argc, argv);
    failures += runTrayTests(argc, argv);
    return failures;
}
