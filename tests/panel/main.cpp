#include "PanelTests.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    failures += runGeometryTests(argc, argv);
    failures += runHoverRuleTests(argc, argv);
    failures += runControllerTests(argc, argv);
    failures += runTriggerTests(argc, argv);
    failures += runDelegateTests(argc, argv);
    return failures;
}
