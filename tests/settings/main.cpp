#include "SettingsTests.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    int failures = 0;
    failures += runDomainTests(argc, argv);
    failures += runDamageTests(argc, argv);
    failures += runDiskFullTests(argc, argv);
    failures += runPrivacyTests(argc, argv);
    failures += runBoundsTests(argc, argv);
    return failures;
}
