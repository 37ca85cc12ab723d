#include "TestSupport.h"

#include "app/AppDelegate.h"
#include "app/NotchPanel.h"
#include "clipboard/HistoryListModel.h"
#include "clipboard/widgets/HistoryPage.h"
#include "clipboard/widgets/HistoryRowButtons.h"
#include "clipboard/widgets/HistoryRowDelegate.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/X11Support.h"
#include "productivity/Productivity.h"
#include "settings/Preferences.h"
#include "ui/EditCommand.h"
#include "ui/SymbolButton.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

// xdotool is the outside user: it moves the real pointer and types on the real keyboard.
QByteArray xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished(10000);
    return process.readAllStandardOutput().trimmed();
}

void moveTo(const QPoint& point)
{
    xdotool({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())});
}

void click(int button)
{
    xdotool({QStringLiteral("click"), QString::number(button)});
}

void key(const QString& combination)
{
    xdotool({QStringLiteral("key"), QStringLiteral("--clearmodifiers"), combination});
}

// The panel's frame as the X server has it.
QSize serverSize()
{
    const QByteArray ids =
        xdotool({QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^Brenlow$")});
    QSize largest;
    for (const QByteArray& id : ids.split('\n')) {
        const auto match = QRegularExpression(QStringLiteral("Geometry: (\\d+)x(\\d+)"))
                               .match(QString::fromUtf8(
                                   xdotool({QStringLiteral("getwindowgeometry"), QString::fromLatin1(id)})));
        if (match.hasMatch())
            largest = largest.expandedTo(QSize(match.captured(1).toInt(), match.captured(2).toInt()));
    }
    return largest;
}

// The clipboard as any other application reads it. The owner may be this very process, so its
// events keep running while xclip asks.
QString outsideClipboard()
{
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")});
    QDeadlineTimer deadline(5000);
    while (xclip.state() != QProcess::NotRunning && !deadline.hasExpired())
        QTest::qWait(20);
    if (xclip.state() != QProcess::NotRunning) {
        xclip.kill();
        xclip.waitForFinished();
    }
    return QString::fromUtf8(xclip.readAllStandardOutput());
}

QStringList menuTitles(const QMenu& menu)
{
    QStringList titles;
    for (const QAction* action : menu.actions()) {
        if (!action->isSeparator())
            titles << action->text().section(u'\t', 0, 0);
    }
    return titles;
}

QAction* menuAction(const QMenu& menu, EditCommand command)
{
    for (QAction* action : menu.actions()) {
        if (action->text().section(u'\t', 0, 0) == EditCommands::title(command))
            return action;
    }
    return nullptr;
}

} // namespace

// The history page in the real panel window, used with the real pointer and keyboard.
class HistoryX11Test : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<LinuxPlatform> m_linux;
    std::unique_ptr<ScratchDomain> m_domain;
    std::unique_ptr<AppDelegate> m_delegate;
    std::vector<std::unique_ptr<QProcess>> m_xclips;

    Model& model() { return m_delegate->model(); }
    NotchPanel& panel() { return *m_delegate->panel(); }

    // Another application copies `text`; the history records it.
    void copyOutside(const QString& text)
    {
        // xclip serves the text until another client takes the clipboard, then ends by itself.
        auto& xclip = m_xclips.emplace_back(std::make_unique<QProcess>());
        xclip->start(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard")});
        QVERIFY(xclip->waitForStarted());
        xclip->write(text.toUtf8());
        xclip->closeWriteChannel();
        QTRY_VERIFY_WITH_TIMEOUT(std::any_of(model().clips().cbegin(), model().clips().cend(),
                                             [&](const Clip& clip) { return clip.text == text; }),
                                 10000);
    }

    bool stored(const QString& text)
    {
        return std::any_of(model().clips().cbegin(), model().clips().cend(),
                           [&](const Clip& clip) { return clip.text == text; });
    }

    HistoryPage* openHistory(const QSize& frame)
    {
        key(QStringLiteral("super+v"));
        [&] {
            QTRY_VERIFY(model().expanded());
            QTRY_COMPARE(model().page(), Page::clipboard);
        }();
        auto* page = panel().findChild<HistoryPage*>();
        if (!page)
            return nullptr;
        // The pointer rests in the panel, so it stays open.
        moveTo(panel().mapToGlobal(QPoint(panel().width() / 2, 60)));
        [&] { QTRY_COMPARE(serverSize(), frame); }();
        [&] { QTRY_VERIFY(page->isVisible() && page->rows()->rowCount() > 0); }();
        return page;
    }

    int rowOf(HistoryPage& page, const QString& text)
    {
        for (int row = 0; row < page.rows()->rowCount(); ++row) {
            if (page.rows()->index(row).data(HistoryListModel::TextRole).toString() == text)
                return row;
        }
        return -1;
    }

    // Where the row's star or × is drawn, on the screen.
    QPoint glyph(HistoryPage& page, int row, HistoryRowDelegate::Area area)
    {
        QListView& list = *page.list();
        const QRect card = HistoryRowDelegate::rowRect(list, page.rows()->index(row));
        const QRect rect = area == HistoryRowDelegate::Area::row
                               ? QRect(card.topLeft() + QPoint(30, 10), QSize(1, 1))
                               : HistoryRowDelegate::buttonRect(card, area);
        return list.viewport()->mapToGlobal(rect.center());
    }

    // The pointer goes to the glyph first, the way a hand moves, then clicks.
    void clickGlyph(HistoryPage& page, const QString& text, HistoryRowDelegate::Area area)
    {
        const int row = rowOf(page, text);
        QVERIFY2(row >= 0, qPrintable(text));
        const QPoint target = glyph(page, row, area);
        // Inside what the list shows, not somewhere beyond its right edge.
        QVERIFY(QRect(page.list()->viewport()->mapToGlobal(QPoint(0, 0)), page.list()->viewport()->size())
                    .contains(target));
        moveTo(target);
        if (area != HistoryRowDelegate::Area::row)
            QTRY_COMPARE(page.rowButtons()->row().row(), row);
        click(1);
    }

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        QVERIFY2(X11Support::connection(), "needs an X display");
        QVERIFY2(!xdotool({QStringLiteral("version")}).isEmpty(), "needs xdotool");
    }

    void init()
    {
        moveTo(QPoint(300, 800));
        m_linux = std::make_unique<LinuxPlatform>();
        m_domain = std::make_unique<ScratchDomain>();
        m_domain->defaults->setBool(QStringLiteral("welcome.completed"), true);
        m_delegate = std::make_unique<AppDelegate>(*m_domain->defaults, m_linux->platform());
        m_delegate->launch();
        model().clearHistory();
        QTRY_VERIFY(model().clips().isEmpty());
    }

    void cleanup()
    {
        m_delegate->terminate();
        m_delegate.reset();
        m_domain.reset();
        m_linux.reset();
        for (auto& xclip : m_xclips) {
            xclip->kill();
            xclip->waitForFinished();
        }
        m_xclips.clear();
        moveTo(QPoint(300, 800));
    }

    void starDeleteAndCopyBackInEveryLayout_data()
    {
        QTest::addColumn<PanelLayout>("first");
        QTest::addColumn<PanelLayout>("layout");
        QTest::addColumn<QSize>("frame");
        QTest::newRow("wide") << PanelLayout::wide << PanelLayout::wide << QSize(800, 426);
        QTest::newRow("balanced") << PanelLayout::balanced << PanelLayout::balanced << QSize(620, 466);
        QTest::newRow("tall") << PanelLayout::tall << PanelLayout::tall << QSize(520, 556);
        // The list was laid out wide and shrinks with the open panel.
        QTest::newRow("wide, then tall while open")
            << PanelLayout::wide << PanelLayout::tall << QSize(520, 556);
        QTest::newRow("tall, then wide while open")
            << PanelLayout::tall << PanelLayout::wide << QSize(800, 426);
    }

    void starDeleteAndCopyBackInEveryLayout()
    {
        QFETCH(PanelLayout, first);
        QFETCH(PanelLayout, layout);
        QFETCH(QSize, frame);
        const auto useLayout = [this](PanelLayout value) {
            model().preferences().update([value](PreferenceValues& v) { v.layout = value; });
        };
        useLayout(first);
        for (const QString& text :
             {QStringLiteral("eins"), QStringLiteral("zwei"), QStringLiteral("drei"), QStringLiteral("vier")})
            copyOutside(text);

        HistoryPage* page = openHistory(first == PanelLayout::wide   ? QSize(800, 426)
                                        : first == PanelLayout::tall ? QSize(520, 556)
                                                                     : QSize(620, 466));
        QVERIFY(page);
        if (layout != first) {
            useLayout(layout);
            QTRY_COMPARE(serverSize(), frame);
            moveTo(panel().mapToGlobal(QPoint(panel().width() / 2, 60)));
            // The page follows the window's new size.
            QTRY_VERIFY(page->list()->width() < frame.width() && page->list()->width() > frame.width() - 80);
        }

        // The star pins "zwei": stored as a favourite, shown on top, the panel stays open.
        clickGlyph(*page, QStringLiteral("zwei"), HistoryRowDelegate::Area::pin);
        QTRY_COMPARE(model().productivity().pins(), QStringList{QStringLiteral("zwei")});
        QTRY_COMPARE(rowOf(*page, QStringLiteral("zwei")), 0);
        QVERIFY(model().expanded());
        QCOMPARE(model().clips().size(), 4);

        // The × deletes "eins" from the store; nothing else goes.
        clickGlyph(*page, QStringLiteral("eins"), HistoryRowDelegate::Area::remove);
        QTRY_VERIFY(!stored(QStringLiteral("eins")));
        QCOMPARE(model().clips().size(), 3);
        QCOMPARE(model().productivity().pins(), QStringList{QStringLiteral("zwei")});
        QVERIFY(model().expanded());

        // The star again unpins.
        clickGlyph(*page, QStringLiteral("zwei"), HistoryRowDelegate::Area::pin);
        QTRY_VERIFY(model().productivity().pins().isEmpty());

        // The text copies "drei" back for every application and closes the panel.
        clickGlyph(*page, QStringLiteral("drei"), HistoryRowDelegate::Area::row);
        QTRY_VERIFY(!model().expanded());
        QTRY_COMPARE(outsideClipboard(), QStringLiteral("drei"));
        QCOMPARE(model().clips().size(), 3);
        QVERIFY(stored(QStringLiteral("zwei")) && stored(QStringLiteral("vier")));
    }
};

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    HistoryX11Test test;
    return QTest::qExec(&test, argc, argv);
}

#include "HistoryX11Test.moc"
