#include <QApplication>

int runCommandsTests(int argc, char** argv);
int runMenuBarTests(int argc, char** argv);

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = runCommandsTests(argc, argv);
    failures += runMenuBarTests(argc, argv);
    return failures;
}
