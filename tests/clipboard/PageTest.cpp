#include "ClipboardTests.h"
#include "TestSupport.h"

#include "clipboard/HistoryListModel.h"
#include "clipboard/widgets/HistoryPage.h"
#include "clipboard/widgets/HistoryRowDelegate.h"
#include "productivity/Productivity.h"
#include "ui/SymbolButton.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>

namespace {

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

    void clickingARowAndItsButtons()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        for (const QString& text : {QStringLiteral("alt"), QStringLiteral("mitte"), QStringLiteral("neu")}) {
            fixture.memory.clock.advance(1);
            fixture.memory.pasteboard.copyFromOutside(text);
            model.pollClipboard();
        }
        bool closed = false;
        QObject::connect(&model, &Model::close, &model, [&closed] { closed = true; });
        HistoryPage page(model.clipboardHistory(), model.productivity(), fixture.memory.clock,
                         fixture.memory.scheduler);
        page.resize(560, 420);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        QListView* list = page.list();
        const auto rowRect = [&](int row) {
            return list->visualRect(page.rows()->index(row)).adjusted(0, 2, -2, -2);
        };
        const auto areaCentre = [&](int row, HistoryRowDelegate::Area area) {
            return HistoryRowDelegate::buttonRect(rowRect(row), area).center();
        };

        // The favourite toggle pins "mitte", which moves to the top.
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, areaCentre(1, HistoryRowDelegate::Area::pin));
        QTRY_COMPARE(model.productivity().pins(), QStringList{QStringLiteral("mitte")});
        QCOMPARE(page.rows()->clipAt(0)->text, QStringLiteral("mitte"));
        QVERIFY(!closed);

        // Delete removes "alt" everywhere.
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          areaCentre(2, HistoryRowDelegate::Area::remove));
        QTRY_COMPARE(model.clips().size(), 2);
        const QList<Clip> left = model.clips();
        QVERIFY(std::none_of(left.cbegin(), left.cend(),
                             [](const Clip& c) { return c.text == QStringLiteral("alt"); }));

        // Clicking the row's text copies it back and closes the panel, without reordering.
        const QList<Clip> before = model.clips();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rowRect(1).topLeft() + QPoint(30, 15));
        QTRY_VERIFY(closed);
        QCOMPARE(fixture.memory.pasteboard.string(), std::optional<QString>(QStringLiteral("neu")));
        model.pollClipboard();
        QCOMPARE(model.clips(), before);
    }
};

int runPageTests(int argc, char** argv)
{
    PageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "PageTest.moc"
