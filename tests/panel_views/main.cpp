#include "PanelViewsTests.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    failures += runTextRuleTests(argc, argv);
    failures += runRootViewTests(argc, argv);
    failures += runSettingsPaneTests(argc, argv);
    failures += runOnboardingPaneTests(argc, argv);
    failures += runActivityTests(argc, argv);
    failures += runWorkspacesPageTests(argc, argv);
    return failures;
}
