#include "ConcealedServer.h"
#include "X11ClipboardTest.h"
#include "X11Owner.h"
#include "X11ReadTest.h"

#include <QApplication>

#include <cstring>

int main(int argc, char** argv)
{
    // A plain X client, without Qt's own clipboard in the way.
    if (argc == 3 && std::strcmp(argv[1], "--serve-x11") == 0)
        return serveX11Owner(QByteArray(argv[2]));
    QApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("--serve-concealed"))
        return serveConcealed(arguments.at(2));
    int failures = runX11ReadTests(argc, argv);
    failures += runX11ClipboardTests(argc, argv);
    return failures;
}
