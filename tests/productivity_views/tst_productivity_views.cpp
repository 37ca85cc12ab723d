#include "TestSupport.h"

#include "productivity/NoteHistory.h"
#include "productivity/Productivity.h"
#include "productivity/Shelf.h"
#include "productivity/ShelfFileList.h"
#include "productivity/widgets/NoteTextView.h"
#include "productivity/widgets/NotesPage.h"
#include "productivity/widgets/SearchPage.h"
#include "productivity/widgets/ShelfFileView.h"
#include "productivity/widgets/ShelfPage.h"
#include "ui/SegmentedControl.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

void press(QWidget* widget, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(widget, Qt::Key_Z, modifiers);
}

} // namespace

// The notes, shelf and search pages with their stores.
class ProductivityViewsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        // Names of desktop entries are read in the user's language.
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }

    void theHistoryStepsBackAndForthWithinItsDepth()
    {
        NoteHistory history;
        for (const char* text : {"a", "ab", "abc"})
            history.record(QString::fromLatin1(text));
        history.undo();
        QCOMPARE(history.undo(), std::optional<QString>(QStringLiteral("a")));
        QCOMPARE(history.redo(), std::optional<QString>(QStringLiteral("ab")));
        history.record(QStringLiteral("abX"));
        QVERIFY(!history.redo());
        QCOMPARE(history.current(), QStringLiteral("abX"));

        NoteHistory deep;
        for (int i = 1; i <= 100; ++i)
            deep.record(QString::number(i));
        int undone = 0;
        while (deep.undo())
            ++undone;
        QCOMPARE(undone, NoteHistory::depth);
        QCOMPARE(deep.current(), QStringLiteral("20"));
        QVERIFY(!deep.undo());
        QCOMPARE(deep.current(), QStringLiteral("20"));
    }

    void theEditorUndoesTypingWithItsOwnHistory()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        Productivity store(*domain.defaults, memory.clock);
        NotesPage page(store);
        page.show();
        NoteTextView* editor = page.editor();
        QCOMPARE(page.headerText(), QStringLiteral("GEDANKEN FESTHALTEN"));
        QCOMPARE(page.saveButton()->text(), QStringLiteral("Notiz speichern"));

        // Nothing to undo: text and draft stay as they are.
        press(editor, Qt::ControlModifier);
        QVERIFY(editor->toPlainText().isEmpty());

        QTest::keyClicks(editor, QStringLiteral("abc"));
        QCOMPARE(store.noteDraft(), QStringLiteral("abc"));
        QVERIFY(!editor->document()->isUndoAvailable());
        press(editor, Qt::ControlModifier);
        press(editor, Qt::ControlModifier);
        QCOMPARE(editor->toPlainText(), QStringLiteral("a"));
        QCOMPARE(store.noteDraft(), QStringLiteral("a"));
        QCOMPARE(editor->textCursor().position(), 1);
        press(editor, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(store.noteDraft(), QStringLiteral("ab"));

        // The edit menu's items follow the same history.
        QMenu* menu = editor->editMenu();
        QAction* undo = menu->actions().at(0);
        QAction* redo = menu->actions().at(1);
        QVERIFY(undo->isEnabled() && redo->isEnabled());
        undo->trigger();
        QCOMPARE(store.noteDraft(), QStringLiteral("a"));
        delete menu;
        QTest::keyClicks(editor, QStringLiteral("Z"));
        press(editor, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(store.noteDraft(), QStringLiteral("aZ"));

        // Saving loads an empty editor: nothing of the saved note can be undone into it.
        page.saveButton()->click();
        QCOMPARE(store.notes().first().text, QStringLiteral("aZ"));
        QVERIFY(editor->toPlainText().isEmpty());
        press(editor, Qt::ControlModifier);
        QVERIFY(editor->toPlainText().isEmpty());
        QVERIFY(store.noteDraft().isEmpty());
    }

    void editingAListedNoteStartsAFreshHistoryAndPinsFollow()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        Productivity store(*domain.defaults, memory.clock);
        store.addNote(QStringLiteral("Einkaufen"));
        store.addNote(QStringLiteral("Anrufen"));
        NotesPage page(store);
        page.show();
        QCOMPARE(page.noteTexts(), (QStringList{QStringLiteral("Anrufen"), QStringLiteral("Einkaufen")}));
        QTest::keyClicks(page.editor(), QStringLiteral("halb"));

        page.rowButton(1, QStringLiteral("Bearbeiten"))->click();
        QCOMPARE(page.headerText(), QStringLiteral("NOTIZ BEARBEITEN"));
        QCOMPARE(page.saveButton()->text(), QStringLiteral("Änderung speichern"));
        QVERIFY(page.cancelButton()->isVisibleTo(&page));
        QCOMPARE(page.editor()->toPlainText(), QStringLiteral("Einkaufen"));
        press(page.editor(), Qt::ControlModifier);
        QCOMPARE(page.editor()->toPlainText(), QStringLiteral("Einkaufen"));
        QTest::keyClicks(page.editor(), QStringLiteral(" & Kochen"));
        page.saveButton()->click();
        QCOMPARE(page.noteTexts(),
                 (QStringList{QStringLiteral("Anrufen"), QStringLiteral("Einkaufen & Kochen")}));
        QCOMPARE(page.headerText(), QStringLiteral("GEDANKEN FESTHALTEN"));

        page.rowButton(0, QStringLiteral("Anheften"))->click();
        QCOMPARE(store.pins(), QStringList{QStringLiteral("Anrufen")});
        QVERIFY(page.rowButton(0, QStringLiteral("Nicht mehr anheften")));
        page.rowButton(1, QStringLiteral("Entfernen"))->click();
        QCOMPARE(store.notes().size(), 1);

        // The draft typed before quitting is in the editor after the next start.
        QTest::keyClicks(page.editor(), QStringLiteral("Entwurf"));
        Defaults reopened(domain.name);
        Productivity restarted(reopened, memory.clock);
        NotesPage again(restarted);
        QCOMPARE(again.editor()->toPlainText(), QStringLiteral("Entwurf"));
        press(again.editor(), Qt::ControlModifier);
        QCOMPARE(again.editor()->toPlainText(), QStringLiteral("Entwurf"));
    }

    void theShelfPageListsRemovesSharesAndDragsFiles()
    {
        ModelFixture fixture;
        Shelf& shelf = fixture.model->shelf();
        QTemporaryDir folder;
        const QString entryPath = folder.filePath(QStringLiteral("editor.desktop"));
        QFile entry(entryPath);
        QVERIFY(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nType=Application\nName=Schreiber\nName[de]=Schreibprogramm\nExec=sh\n");
        entry.close();
        shelf.addFiles({QUrl::fromLocalFile(entryPath)});

        ShelfPage page(shelf);
        page.resize(560, 300);
        page.show();
        QVERIFY(page.showsEmptyState());
        QCOMPARE(page.appNames(), QStringList{QStringLiteral("Schreibprogramm")});
        QSignalSpy opened(&page, &ShelfPage::openRequested);
        page.button(QStringLiteral("Schreibprogramm"))->click();
        QCOMPARE(opened.count(), 1);

        const QUrl a = QUrl::fromLocalFile(folder.filePath(QStringLiteral("a b.txt")));
        const QUrl b = QUrl::fromLocalFile(folder.filePath(QStringLiteral("c.pdf")));
        shelf.addFiles({a, b});
        QVERIFY(!page.showsEmptyState());
        QCOMPARE(page.fileNames(), (QStringList{QStringLiteral("a b.txt"), QStringLiteral("c.pdf")}));
        QAbstractItemModelTester tester(page.fileView()->model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);

        // Dragging rows out carries them as file URLs.
        QAbstractItemModel* list = page.fileView()->model();
        std::unique_ptr<QMimeData> drag(list->mimeData({list->index(0, 0), list->index(1, 0)}));
        QCOMPARE(drag->urls(), (QList<QUrl>{a, b}));

        QSignalSpy shared(&page, &ShelfPage::shareRequested);
        page.button(QStringLiteral("AirDrop für alle"))->click();
        QCOMPARE(shared.count(), 1);
        QCOMPARE(shared.first().first().value<QList<QUrl>>(), (QList<QUrl>{a, b}));

        ShelfFileView* view = page.fileView();
        QTRY_VERIFY(view->visualRect(list->index(0, 0)).height() > 0);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->removeMark(list->index(0, 0)).center());
        QCOMPARE(shelf.files(), QList<QUrl>{b});
        QSignalSpy chosen(&page, &ShelfPage::chooseRequested);
        page.button(QStringLiteral("App hinzufügen"))->click();
        QCOMPARE(chosen.first().first().toBool(), true);
    }

    void theSearchPageFiltersAndHandsOnResults()
    {
        QTemporaryDir folder;
        const QString apps = folder.filePath(QStringLiteral("applications"));
        QDir().mkpath(apps);
        QFile entry(apps + QStringLiteral("/term.desktop"));
        QVERIFY(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nType=Application\nName=Terminal\nExec=sh\n");
        entry.close();
        const QString notes = folder.filePath(QStringLiteral("term notes.md"));
        QFile(notes).open(QIODevice::WriteOnly);
        MemoryPlatform memory;
        memory.fileSearch.applications = {apps};
        memory.fileSearch.files = {notes};
        DeviceSearch search(memory.fileSearch, memory.scheduler);
        QTRY_VERIFY(search.appsReady());
        SearchPage page(search);
        page.resize(580, 300);
        page.show();
        QCOMPARE(page.field()->placeholderText(), QStringLiteral("Programme oder Dateien suchen …"));

        QTest::keyClicks(page.field(), QStringLiteral("term"));
        QCOMPARE(page.rowNames(), QStringList{QStringLiteral("Terminal")});
        memory.scheduler.advance(DeviceSearch::debounce);
        QTRY_COMPARE(page.rowNames(),
                     (QStringList{QStringLiteral("Terminal"), QStringLiteral("term notes.md")}));
        QCOMPARE(page.statusText(), QStringLiteral("2 Treffer · Programme zuerst · Spotlight-Dateiindex"));
        QTRY_VERIFY(page.rowButton(1, QStringLiteral("term notes.md"))->isVisible());
        QVERIFY(page.rowButton(1, QStringLiteral("term notes.md"))->height() > 10);

        page.scope()->button(QStringLiteral("Apps"))->click();
        QCOMPARE(page.rowNames(), QStringList{QStringLiteral("Terminal")});
        page.scope()->button(QStringLiteral("Dateien"))->click();
        QCOMPARE(page.rowNames(), QStringList{QStringLiteral("term notes.md")});

        QSignalSpy added(&page, &SearchPage::addRequested);
        QSignalSpy opened(&page, &SearchPage::openRequested);
        page.rowButton(0, QStringLiteral("Zur Ablage hinzufügen"))->click();
        page.rowButton(0, QStringLiteral("term notes.md"))->click();
        QCOMPARE(added.first().first().toUrl(), QUrl::fromLocalFile(notes));
        QCOMPARE(opened.first().first().toUrl(), QUrl::fromLocalFile(notes));
    }
};

QTEST_MAIN(ProductivityViewsTest)
#include "tst_productivity_views.moc"
