#include "TestSupport.h"

#include "app/AppDelegate.h"
#include "app/NotchPanel.h"
#include "clipboard/ClipboardHistory.h"
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
#include <QPlainTextEdit>
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
        QTRY_VERIFY_WITH_TIMEOUT(model().clipboardHistory().store().slotOf(text).has_value(), 10000);
    }

    bool stored(const QString& text)
    {
        return model().clipboardHistory().store().slotOf(text).has_value();
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

    // Right-clicks `widget` at `local` and answers the menu that opens.
    QMenu* rightClick(QWidget& widget, const QPoint& local)
    {
        moveTo(widget.mapToGlobal(local));
        click(3);
        QMenu* menu = nullptr;
        [&] { QTRY_VERIFY((menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))); }();
        return menu;
    }

    void choose(QMenu& menu, EditCommand command)
    {
        QAction* action = menuAction(menu, command);
        QVERIFY(action);
        moveTo(menu.mapToGlobal(menu.actionGeometry(action).center()));
        click(1);
        QTRY_VERIFY(!QApplication::activePopupWidget());
    }

    static QList<bool> enabledStates(const QMenu& menu)
    {
        QList<bool> states;
        for (EditCommand command : EditCommands::allCases())
            states << menuAction(menu, command)->isEnabled();
        return states;
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
    void theSearchFieldHasTheGermanEditMenuAndItsKeys()
    {
        copyOutside(QStringLiteral("von draußen"));
        HistoryPage* page = openHistory(QSize(620, 466));
        QVERIFY(page);
        QLineEdit& field = *page->searchField();
        moveTo(field.mapToGlobal(field.rect().center()));
        click(1);
        QTRY_VERIFY(field.hasFocus());
        xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"),
                 QStringLiteral("hallo welt")});
        QTRY_COMPARE(field.text(), QStringLiteral("hallo welt"));

        // Exactly the six German commands, in menu order; only what applies is enabled.
        QMenu* menu = rightClick(field, field.rect().center());
        QVERIFY(menu);
        QCOMPARE(menu->objectName(), QStringLiteral("editMenu"));
        QCOMPARE(menuTitles(*menu),
                 QStringList({QStringLiteral("Widerrufen"), QStringLiteral("Wiederholen"),
                              QStringLiteral("Ausschneiden"), QStringLiteral("Kopieren"),
                              QStringLiteral("Einsetzen"), QStringLiteral("Alles auswählen")}));
        // Typed: undo; nothing selected: no cut or copy; the clipboard holds text: paste.
        QCOMPARE(enabledStates(*menu), QList<bool>({true, false, false, false, true, true}));
        choose(*menu, EditCommand::selectAll);
        QTRY_COMPARE(field.selectedText(), QStringLiteral("hallo welt"));

        menu = rightClick(field, field.rect().center());
        QVERIFY(menu);
        QCOMPARE(enabledStates(*menu), QList<bool>({true, false, true, true, true, false}));
        choose(*menu, EditCommand::copy);
        QTRY_COMPARE(outsideClipboard(), QStringLiteral("hallo welt"));

        // The same commands from the keyboard, typed on the real keyboard.
        key(QStringLiteral("ctrl+a"));
        key(QStringLiteral("ctrl+x"));
        QTRY_COMPARE(field.text(), QString());
        QTRY_COMPARE(outsideClipboard(), QStringLiteral("hallo welt"));
        key(QStringLiteral("ctrl+z"));
        QTRY_COMPARE(field.text(), QStringLiteral("hallo welt"));
        key(QStringLiteral("ctrl+y"));
        QTRY_COMPARE(field.text(), QString());
        key(QStringLiteral("ctrl+z"));
        QTRY_COMPARE(field.text(), QStringLiteral("hallo welt"));
        key(QStringLiteral("ctrl+shift+z"));
        QTRY_COMPARE(field.text(), QString());
        key(QStringLiteral("ctrl+v"));
        key(QStringLiteral("ctrl+v"));
        QTRY_COMPARE(field.text(), QStringLiteral("hallo welthallo welt"));

        // "Einsetzen" from the menu, and "Widerrufen" takes it back.
        // Set from the program: no history to undo.
        field.setText(QString());
        menu = rightClick(field, field.rect().center());
        QVERIFY(menu);
        QCOMPARE(enabledStates(*menu), QList<bool>({false, false, false, false, true, false}));
        choose(*menu, EditCommand::paste);
        QTRY_COMPARE(field.text(), QStringLiteral("hallo welt"));
        menu = rightClick(field, field.rect().center());
        QVERIFY(menu);
        choose(*menu, EditCommand::undo);
        QTRY_COMPARE(field.text(), QString());
        QVERIFY(model().expanded());
    }

    void textFieldsAddedLaterGetTheMenuToo()
    {
        HistoryPage* page = [this] {
            copyOutside(QStringLiteral("etwas"));
            return openHistory(QSize(620, 466));
        }();
        QVERIFY(page);
        // A page that builds a multi-line field after the launch.
        auto* notes = new QPlainTextEdit(page);
        notes->setGeometry(10, 10, 300, 80);
        notes->setPlainText(QStringLiteral("Zeile eins"));
        notes->show();
        QTRY_VERIFY(notes->isVisible());
        QMenu* menu = rightClick(*notes->viewport(), QPoint(150, 40));
        QVERIFY(menu);
        QCOMPARE(menu->objectName(), QStringLiteral("editMenu"));
        QCOMPARE(menuTitles(*menu).size(), 6);
        QCOMPARE(enabledStates(*menu), QList<bool>({false, false, false, false, true, true}));
        choose(*menu, EditCommand::selectAll);
        QTRY_COMPARE(notes->textCursor().selectedText(), QStringLiteral("Zeile eins"));

        // Read-only: copying only. A password: never copied or cut.
        notes->setReadOnly(true);
        menu = rightClick(*notes->viewport(), QPoint(150, 40));
        QVERIFY(menu);
        QCOMPARE(enabledStates(*menu), QList<bool>({false, false, false, true, false, false}));
        menu->close();
        auto* secret = new QLineEdit(page);
        secret->setGeometry(10, 100, 200, 30);
        secret->setEchoMode(QLineEdit::Password);
        secret->setText(QStringLiteral("geheim"));
        secret->show();
        secret->selectAll();
        menu = rightClick(*secret, QPoint(50, 15));
        QVERIFY(menu);
        QCOMPARE(enabledStates(*menu), QList<bool>({false, false, false, false, true, false}));
        menu->close();

        // A field that brings its own menu keeps it.
        auto* own = new QLineEdit(page);
        own->setGeometry(10, 140, 200, 30);
        own->setContextMenuPolicy(Qt::NoContextMenu);
        own->show();
        moveTo(own->mapToGlobal(QPoint(50, 15)));
        click(3);
        QTest::qWait(300);
        QVERIFY(!QApplication::activePopupWidget());
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
