#include "CaptureTests.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    failures += runCaptureFlowTests(argc, argv);
    failures += runMirrorTests(argc, argv);
    return failures;
}
