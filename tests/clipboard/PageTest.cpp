#include "ClipboardTests.h"
#include "TestSupport.h"

#include "clipboard/HistoryListModel.h"
#include "clipboard/widgets/HistoryPage.h"
#include "clipboard/widgets/HistoryRowButtons.h"
#include "clipboard/widgets/HistoryRowDelegate.h"
#include "productivity/Productivity.h"
#include "ui/SymbolButton.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>

namespace {

void capture(ModelFixture& fixture, const QStringList& texts)
{
    for (const QString& text : texts) {
        fixture.memory.clock.advance(1);
        fixture.memory.pasteboard.copyFromOutside(text);
        fixture.model->pollClipboard();
    }
}

QString textOf(const QModelIndex& index)
{
    return index.data(HistoryListModel::TextRole).toString();
}

// Moves the pointer onto the middle of a row's text.
void hover(HistoryPage& page, int row)
{
    const QRect card = HistoryRowDelegate::rowRect(*page.list(), page.rows()->index(row));
    QTest::mouseMove(page.list()->viewport(), card.topLeft() + QPoint(40, card.height() / 2));
}

// Pixels of a glyph against the dark card: anything clearly lighter than the card itself.
int brightPixels(const QImage& image, const QRect& rect)
{
    int count = 0;
    const QRect inside = rect.intersected(image.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            if (qGray(image.pixel(x, y)) > 60)
                ++count;
        }
    }
    return count;
}

QStringList labelTexts(QWidget* root)
{
    QStringList texts;
    for (QLabel* label : root->findChildren<QLabel*>())
        texts.append(label->text());
    return texts;
}

} // namespace

// The history page driven as a user would: typing, chips, buttons and clicks on rows.
class PageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void controlsCarryTheirTexts()
    {
        ModelFixture fixture;
        HistoryPage page(fixture.model->clipboardHistory(), fixture.model->productivity(),
                         fixture.memory.clock, fixture.memory.scheduler);
        QCOMPARE(page.searchField()->placeholderText(), QStringLiteral("Im Verlauf suchen …"));
        QCOMPARE(page.recordingButton()->toolTip(), QStringLiteral("Erfassung pausieren oder fortsetzen"));
        QCOMPARE(page.clearButton()->toolTip(),
                 QStringLiteral("Gesamten lokal gespeicherten Verlauf einschließlich Favoriten leeren"));
        QStringList chips;
        for (ClipKind kind : ClipKinds::allCases())
            chips.append(page.chip(kind)->text());
        QCOMPARE(chips, QStringList({"Alle", "Favoriten", "Text", "Links", "E-Mails", "Telefon", "Zahlen",
                                     "Dateipfade", "Farben", "Code"}));
        QVERIFY(page.chip(ClipKind::all)->isChecked());
    }

    void emptyStateErrorAndControls()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        HistoryPage page(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                         fixture.memory.scheduler);
        page.resize(560, 420);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        QVERIFY(page.emptyState()->isVisible());
        QVERIFY(labelTexts(&page).contains(QStringLiteral("Keine passenden Einträge.")));
        QVERIFY(labelTexts(&page).contains(
            QStringLiteral("Alle erfassten Kopien bleiben lokal gespeichert, bis du sie löschst.")));
        QVERIFY(!page.storageError()->isVisible());

        fixture.memory.pasteboard.copyFromOutside(QStringLiteral("Hallo Welt"));
        model.pollClipboard();
        QVERIFY(page.list()->isVisible());
        QVERIFY(!page.emptyState()->isVisible());

        // Favourites with no pins: nothing, and the empty state.
        QTest::mouseClick(page.chip(ClipKind::pinned), Qt::LeftButton);
        QVERIFY(page.chip(ClipKind::pinned)->isChecked());
        QCOMPARE(page.rows()->filter(), ClipKind::pinned);
        QVERIFY(page.emptyState()->isVisible());
        QTest::mouseClick(page.chip(ClipKind::all), Qt::LeftButton);

        QTest::keyClicks(page.searchField(), QStringLiteral("WELT"));
        QCOMPARE(page.rows()->rowCount(), 1);
        page.searchField()->clear();

        QTest::mouseClick(page.recordingButton(), Qt::LeftButton);
        QVERIFY(!model.recording());
        QCOMPARE(page.recordingButton()->symbol(), QStringLiteral("play.fill"));
        QTest::mouseClick(page.recordingButton(), Qt::LeftButton);
        QVERIFY(model.recording());

        model.productivity().togglePin(QStringLiteral("Hallo Welt"));
        QTest::mouseClick(page.clearButton(), Qt::LeftButton);
        QVERIFY(model.clips().isEmpty());
        QVERIFY(model.productivity().pins().isEmpty());
        QVERIFY(page.emptyState()->isVisible());
    }

    void aStorageErrorIsShown()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("clipboard.sqlite"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("keine Datenbank");
        file.close();
        ModelFixture fixture(path);
        HistoryPage page(fixture.model->clipboardHistory(), fixture.model->productivity(),
                         fixture.memory.clock, fixture.memory.scheduler);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        QVERIFY(page.storageError()->isVisible());
        QCOMPARE(page.storageError()->text(), fixture.model->historyStorageError());
        QVERIFY(!page.storageError()->text().isEmpty());
    }

    void theRowButtonsFollowThePointer()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        capture(fixture, {QStringLiteral("alt"), QStringLiteral("mitte"), QStringLiteral("neu")});
        bool closed = false;
        QObject::connect(&model, &Model::close, &model, [&closed] { closed = true; });
        HistoryPage page(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                         fixture.memory.scheduler);
        page.resize(560, 420);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        QListView* list = page.list();
        HistoryRowButtons* buttons = page.rowButtons();
        QVERIFY(!buttons->isVisible());

        // Real buttons, with their hints and the delete button's name for screen readers.
        QCOMPARE(buttons->pinButton()->toolTip(),
                 QStringLiteral("Favorit umschalten · wird lokal gespeichert"));
        QCOMPARE(buttons->removeButton()->toolTip(), QStringLiteral("Diesen Eintrag lokal löschen"));
        QCOMPARE(buttons->removeButton()->accessibleName(), QStringLiteral("Eintrag löschen"));

        hover(page, 1);
        QTRY_VERIFY(buttons->isVisible());
        QCOMPARE(textOf(buttons->row()), QStringLiteral("mitte"));
        QVERIFY(!buttons->pinButton()->isChecked());
        QVERIFY(list->viewport()->rect().contains(buttons->geometry()));

        // Pinning moves "mitte" to the top; the resting pointer now has "neu" under it.
        QTest::mouseClick(buttons->pinButton(), Qt::LeftButton);
        QTRY_COMPARE(model.productivity().pins(), QStringList{QStringLiteral("mitte")});
        QCOMPARE(textOf(page.rows()->index(0)), QStringLiteral("mitte"));
        QTRY_COMPARE(textOf(buttons->row()), QStringLiteral("neu"));
        QVERIFY(!buttons->pinButton()->isChecked());
        hover(page, 0);
        QTRY_VERIFY(buttons->pinButton()->isChecked());
        QVERIFY(!closed);

        hover(page, 2);
        QTRY_COMPARE(textOf(buttons->row()), QStringLiteral("alt"));
        QTest::mouseClick(buttons->removeButton(), Qt::LeftButton);
        QTRY_COMPARE(model.clips().size(), 2);
        const QList<Clip> left = model.clips();
        QVERIFY(std::none_of(left.cbegin(), left.cend(),
                             [](const Clip& c) { return c.text == QStringLiteral("alt"); }));
        // Nothing is under the pointer any more.
        QTRY_VERIFY(!buttons->isVisible());
        QVERIFY(!closed);

        // The row's text copies it back and closes the panel, without reordering.
        const QList<Clip> before = model.clips();
        const QRect neu = HistoryRowDelegate::rowRect(*list, page.rows()->index(1));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, neu.topLeft() + QPoint(30, 15));
        QTRY_VERIFY(closed);
        QCOMPARE(fixture.memory.pasteboard.string(), std::optional<QString>(QStringLiteral("neu")));
        model.pollClipboard();
        QCOMPARE(model.clips(), before);
    }

    void aClickActsOnTheClipItWasMeantFor()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        capture(fixture, {QStringLiteral("alt"), QStringLiteral("mitte"), QStringLiteral("neu")});
        HistoryPage page(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                         fixture.memory.scheduler);
        page.resize(560, 420);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        hover(page, 1);
        QTRY_COMPARE(textOf(page.rowButtons()->row()), QStringLiteral("mitte"));

        // A copy arrives between the click and its action: the rows move down by one.
        QTest::mouseClick(page.rowButtons()->pinButton(), Qt::LeftButton);
        fixture.memory.pasteboard.copyFromOutside(QStringLiteral("frisch"));
        model.pollClipboard();
        QTRY_COMPARE(model.productivity().pins(), QStringList{QStringLiteral("mitte")});

        // A clip that is gone by then is not replaced by its neighbour.
        hover(page, 2);
        QTRY_COMPARE(textOf(page.rowButtons()->row()), QStringLiteral("neu"));
        QTest::mouseClick(page.rowButtons()->removeButton(), Qt::LeftButton);
        model.clearHistory();
        capture(fixture, {QStringLiteral("eins"), QStringLiteral("zwei"), QStringLiteral("drei")});
        QTest::qWait(50);
        QCOMPARE(model.clips().size(), 3);
    }

    void glyphsAndButtonsStayInsideANarrowerList_data()
    {
        QTest::addColumn<int>("firstWidth");
        QTest::addColumn<int>("width");
        QTest::newRow("wide, then narrow") << 800 << 480;
        QTest::newRow("narrow, then wide") << 480 << 760;
        QTest::newRow("never resized") << 560 << 560;
    }

    void glyphsAndButtonsStayInsideANarrowerList()
    {
        QFETCH(int, firstWidth);
        QFETCH(int, width);
        ModelFixture fixture;
        Model& model = *fixture.model;
        capture(fixture, {QStringLiteral("alt"), QStringLiteral("mitte"), QStringLiteral("neu")});
        HistoryPage page(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                         fixture.memory.scheduler);
        page.resize(firstWidth, 420);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        page.resize(width, 420);
        QListView* list = page.list();
        QTRY_COMPARE(list->width(), width);
        QTest::qWait(150);

        // The painted glyphs sit at the right end of what the list shows, not beyond it.
        const QImage shown = list->viewport()->grab().toImage();
        const int viewportWidth = list->viewport()->width();
        for (int row = 0; row < 3; ++row) {
            const QRect card = HistoryRowDelegate::rowRect(*list, page.rows()->index(row));
            QCOMPARE(card.right(), viewportWidth - 3);
            for (auto area : {HistoryRowDelegate::Area::pin, HistoryRowDelegate::Area::remove}) {
                const QRect glyph = HistoryRowDelegate::buttonRect(card, area);
                QVERIFY(list->viewport()->rect().contains(glyph));
                QVERIFY2(brightPixels(shown, glyph) > 8, qPrintable(QStringLiteral("row %1").arg(row)));
            }
        }

        // The real buttons cover the painted ones exactly.
        hover(page, 0);
        QTRY_VERIFY(page.rowButtons()->isVisible());
        const QRect card = HistoryRowDelegate::rowRect(*list, page.rows()->index(0));
        QCOMPARE(page.rowButtons()->pinButton()->geometry().translated(page.rowButtons()->pos()),
                 HistoryRowDelegate::buttonRect(card, HistoryRowDelegate::Area::pin));
        QCOMPARE(page.rowButtons()->removeButton()->geometry().translated(page.rowButtons()->pos()),
                 HistoryRowDelegate::buttonRect(card, HistoryRowDelegate::Area::remove));

        // A click on a painted × (a row the pointer did not hover first) deletes, too.
        QTest::mouseMove(page.searchField());
        QTRY_VERIFY(!page.rowButtons()->isVisible());
        const QRect last = HistoryRowDelegate::rowRect(*list, page.rows()->index(2));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          HistoryRowDelegate::buttonRect(last, HistoryRowDelegate::Area::remove).center());
        QTRY_COMPARE(model.clips().size(), 2);
        QCOMPARE(model.clips().last().text, QStringLiteral("mitte"));
    }
};

int runPageTests(int argc, char** argv)
{
    PageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PageTest.moc"
