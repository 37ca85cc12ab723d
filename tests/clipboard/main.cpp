#include "ClipboardTests.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() == 4 && arguments.at(1) == QLatin1String("--capture-and-hang"))
        return captureAndHang(arguments.at(2), arguments.at(3));
    int failures = 0;
    failures += runArchiveTests(argc, argv);
    failures += runCaptureTests(argc, argv);
    failures += runClassifyTests(argc, argv);
    failures += runStoreTests(argc, argv);
    failures += runRowsTests(argc, argv);
    failures += runPageTests(argc, argv);
    failures += runEditMenuTests(argc, argv);
    failures += runPasteboardTests(argc, argv);
    return failures;
}
