#include "TestSupport.h"

#include "app/AppDelegate.h"
#include "app/NotchPanel.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/X11Support.h"

#include <QApplication>
#include <QDrag>
#include <QFile>
#include <QMimeData>
#include <QMouseEvent>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

namespace {

const QRect closedFrame(880, 0, 160, 24);
const QRect otherWindow(100, 400, 300, 200);

void xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished(10000);
}

// A whole drag as one xdotool run in the background: press, the moves, release. The drag's own
// event loop may hold this process while it runs, so the pointer cannot wait for us.
QStringList dragGesture(const QPoint& from, const QList<QPoint>& path)
{
    QStringList arguments{QStringLiteral("mousemove"), QString::number(from.x()), QString::number(from.y()),
                          QStringLiteral("sleep"),     QStringLiteral("0.2"),     QStringLiteral("mousedown"),
                          QStringLiteral("1"),         QStringLiteral("sleep"),   QStringLiteral("0.3")};
    for (const QPoint& point : path)
        arguments << QStringLiteral("mousemove") << QString::number(point.x()) << QString::number(point.y())
                  << QStringLiteral("sleep") << QStringLiteral("0.15");
    arguments << QStringLiteral("sleep") << QStringLiteral("0.4") << QStringLiteral("mouseup")
              << QStringLiteral("1");
    return arguments;
}

void moveTo(const QPoint& point)
{
    xdotool({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())});
    QTest::qWait(60);
}

// The other application of a drag, in a process of its own so that the drag crosses processes
// through XDND exactly as one from a file manager does.
class DragSource : public QWidget
{
public:
    explicit DragSource(QList<QUrl> urls) : m_urls(std::move(urls)) {}

protected:
    void mousePressEvent(QMouseEvent*) override
    {
        auto* drag = new QDrag(this);
        auto* data = new QMimeData;
        data->setUrls(m_urls);
        drag->setMimeData(data);
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::LinkAction);
        std::printf("drag ended %d\n", int(action));
        std::fflush(stdout);
    }

private:
    QList<QUrl> m_urls;
};

int runOtherApp(int argc, char** argv)
{
    QApplication app(argc, argv);
    QList<QUrl> urls;
    for (int i = 2; i < argc; ++i)
        urls.append(QUrl::fromLocalFile(QFile::decodeName(argv[i])));
    auto window = std::make_unique<DragSource>(urls);
    window->setWindowTitle(QStringLiteral("Andere App"));
    window->setGeometry(otherWindow);
    window->show();
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}

} // namespace

// Files dragged from another application onto the running panel over the real X server.
class ShelfX11Test : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<LinuxPlatform> m_linux;
    std::unique_ptr<ScratchDomain> m_domain;
    std::unique_ptr<AppDelegate> m_delegate;
    QProcess m_other;
    QProcess m_pointer;

    Model& model() { return m_delegate->model(); }

    void launch()
    {
        m_delegate = std::make_unique<AppDelegate>(*m_domain->defaults, m_linux->platform());
        m_delegate->launch();
        QTRY_COMPARE(m_delegate->panel()->geometry(), closedFrame);
    }

    void quit()
    {
        m_delegate->terminate();
        m_delegate.reset();
    }

    bool startOther(const QStringList& arguments)
    {
        m_other.start(QCoreApplication::applicationFilePath(), arguments);
        return m_other.waitForReadyRead(10000) && m_other.readLine().startsWith("ready");
    }

    QByteArray otherOutput()
    {
        m_other.waitForReadyRead(200);
        return m_other.readAll();
    }

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        QVERIFY2(X11Support::connection(), "needs an X display");
    }

    void init()
    {
        moveTo({600, 800});
        m_linux = std::make_unique<LinuxPlatform>();
        m_domain = std::make_unique<ScratchDomain>();
        m_domain->defaults->setBool(QStringLiteral("welcome.completed"), true);
        launch();
    }

    void cleanup()
    {
        m_pointer.waitForFinished(10000);
        if (m_other.state() != QProcess::NotRunning) {
            m_other.kill();
            m_other.waitForFinished();
        }
        if (m_delegate)
            quit();
        m_domain.reset();
        m_linux.reset();
    }

    void filesDroppedOnTheClosedNotchStayOnTheShelfAfterARestart()
    {
        QTemporaryDir folder;
        const QString first = folder.filePath(QStringLiteral("Bericht mit Leerzeichen.pdf"));
        const QString second = folder.filePath(QStringLiteral("Foto.png"));
        for (const QString& path : {first, second})
            QFile(path).open(QIODevice::WriteOnly);
        QVERIFY(startOther({QStringLiteral("--drag-source"), first, second}));
        QTest::qWait(300);

        // Press in the other app, carry the files onto the closed notch and let go.
        m_pointer.start(QStringLiteral("xdotool"),
                        dragGesture(otherWindow.center(),
                                    {QPoint(400, 300), QPoint(800, 60), QPoint(955, 12), QPoint(960, 10)}));

        const QList<QUrl> expected{QUrl::fromLocalFile(first), QUrl::fromLocalFile(second)};
        QTRY_COMPARE_WITH_TIMEOUT(model().files(), expected, 15000);
        QCOMPARE(model().page(), Page::shelf);
        QByteArray said;
        QTRY_VERIFY2((said += otherOutput()).contains("drag ended 1"), said.constData());

        quit();
        moveTo({600, 800});
        m_domain->reopen();
        launch();
        QCOMPARE(model().files(), expected);
    }
};

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--drag-source") == 0)
        return runOtherApp(argc, argv);
    QApplication app(argc, argv);
    ShelfX11Test test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_shelf_x11.moc"
