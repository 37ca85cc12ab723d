#include "TestSupport.h"

#include "clipboard/ClipboardHistory.h"
#include "focus/FocusTimer.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

const QString sourceRoot = QStringLiteral(BRENLOW_SOURCE_DIR);

// The folders whose files are not an area's stores and rules.
bool isViewFolder(const QString& folder)
{
    return folder == u"ui" || folder == u"app" || folder.endsWith(u"/widgets") || folder == u"platform/linux";
}

// "clipboard/widgets/HistoryPage.h" -> "clipboard/widgets"; "model/Model.h" -> "model".
QString folderOf(const QString& path)
{
    const QStringList parts = path.split(u'/');
    if (parts.size() > 2 &&
        (parts.at(1) == u"widgets" || parts.at(1) == u"linux" || parts.at(1) == u"memory"))
        return parts.at(0) + u'/' + parts.at(1);
    return parts.at(0);
}

struct Include
{
    QString file;
    QString target;
};

QList<Include> includes(const QRegularExpression& pattern)
{
    QList<Include> found;
    QDirIterator it(sourceRoot, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString relative = QDir(sourceRoot).relativeFilePath(path);
        for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
            const QRegularExpressionMatch match = pattern.match(line);
            if (match.hasMatch())
                found.append(Include{relative, match.captured(1)});
        }
    }
    return found;
}

} // namespace

// The core on its own: its every object links and runs without QtWidgets, and the source tree
// keeps its layers (no circle between folders, no widget header below the views).
class CoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void theModelRunsWithoutAnyWidget()
    {
        QVERIFY(!QCoreApplication::instance()->inherits("QApplication"));
        ModelFixture fixture;
        Model& model = *fixture.model;
        fixture.memory.pasteboard.copyFromOutside(QStringLiteral("ohne Fenster"));
        model.toggleTimer();
        fixture.memory.clock.advance(61);
        model.tick();
        QCOMPARE(model.clipboardHistory().clips().first().text, QStringLiteral("ohne Fenster"));
        QCOMPARE(model.focus().seconds(), qint64(1500 - 61));
    }

    void foldersIncludeEachOtherWithoutCircles()
    {
        QHash<QString, QSet<QString>> edges;
        for (const Include& include :
             includes(QRegularExpression(QStringLiteral("^#include \"([^\"]+)\"")))) {
            const QString from = folderOf(include.file);
            const QString to = folderOf(include.target);
            if (from != to)
                edges[from].insert(to);
        }
        QVERIFY(edges.size() > 10);
        // A circle exists when a folder can reach itself again.
        for (auto it = edges.cbegin(); it != edges.cend(); ++it) {
            QHash<QString, QString> via{{it.key(), QString()}};
            QStringList queue{it.key()};
            while (!queue.isEmpty()) {
                const QString current = queue.takeFirst();
                for (const QString& next : edges.value(current)) {
                    QVERIFY2(next != it.key(),
                             qPrintable(QStringLiteral("%1 -> … -> %2 -> %1").arg(it.key(), current)));
                    if (!via.contains(next)) {
                        via.insert(next, current);
                        queue.append(next);
                    }
                }
            }
        }
    }

    void onlyTheViewsIncludeWidgetHeaders()
    {
        const QStringList widgetHeaders = QDir(QStringLiteral(QT_WIDGETS_INCLUDE_DIR)).entryList(QDir::Files);
        QVERIFY(widgetHeaders.contains(QStringLiteral("QWidget")));
        for (const Include& include : includes(QRegularExpression(QStringLiteral("^#include <([^>]+)>")))) {
            if (isViewFolder(folderOf(include.file)))
                continue;
            const bool widget =
                include.target.startsWith(u"QtWidgets/") || widgetHeaders.contains(include.target);
            QVERIFY2(!widget,
                     qPrintable(include.file + QStringLiteral(" includes <") + include.target + u'>'));
        }
    }

    // Areas see their stores and the services, never the composition above them.
    void onlyTheShellAndTheApplicationSeeTheWholeModel()
    {
        for (const Include& include :
             includes(QRegularExpression(QStringLiteral("^#include \"([^\"]+)\"")))) {
            const QString from = folderOf(include.file).section(u'/', 0, 0);
            const bool composition = include.target == u"model/Model.h" ||
                                     include.target.startsWith(u"app/") ||
                                     include.target.startsWith(u"shell/");
            if (!composition || from == u"app" || from == u"shell" || from == u"model")
                continue;
            QFAIL(qPrintable(include.file + QStringLiteral(" includes ") + include.target));
        }
    }
};

QTEST_GUILESS_MAIN(CoreTest)
#include "tst_core.moc"
