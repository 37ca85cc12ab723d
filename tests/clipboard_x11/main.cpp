#include "ConcealedServer.h"
#include "X11ClipboardTest.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("--serve-concealed"))
        return serveConcealed(arguments.at(2));
    return runX11ClipboardTests(argc, argv);
}
