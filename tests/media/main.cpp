#include "MediaTests.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    failures += runRulesTests(argc, argv);
    failures += runStoreTests(argc, argv);
    failures += runArtworkTests(argc, argv);
    failures += runToastTests(argc, argv);
    return failures;
}
