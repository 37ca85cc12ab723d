#include <QApplication>

int runCommandsTests(int argc, char** argv);
int runMenuBarTests(int argc, char** argv);
int runPagesTests(int argc, char** argv);

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = runCommandsTests(argc, argv);
    failures += runMenuBarTests(argc, argv);
    failures += runPagesTests(argc, argv);
    return failures;
}
