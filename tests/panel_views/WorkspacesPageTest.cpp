#include "PanelViewsTests.h"
#include "ViewRig.h"

#include "productivity/Productivity.h"
#include "productivity/widgets/ElidedTextLabel.h"
#include "productivity/widgets/WorkspaceEditor.h"
#include "productivity/widgets/WorkspacesPage.h"
#include "settings/Preferences.h"
#include "shell/widgets/FullLayout.h"
#include "shell/widgets/StatusLineView.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct WorkspacesRig : ViewRig
{
    explicit WorkspacesRig(QSize size = {620, 466})
    {
        model().setPage(Page::workspaces);
        open(size);
        page = qobject_cast<WorkspacesPage*>(root->fullLayout()->currentPage());
    }
    WorkspaceEditor& editor() { return *page->editor(); }
    Productivity& store() { return model().productivity(); }
    QString status() { return root->fullLayout()->statusLine()->text(); }
    // What a user does: types a name, picks items in the dialog, saves.
    void create(const QString& name, const QList<QUrl>& items)
    {
        QTest::keyClicks(editor().nameField(), name);
        QTest::mouseClick(editor().chooseButton(), Qt::LeftButton);
        QVERIFY(memory().dialogs.choose(items));
        QTest::mouseClick(editor().saveButton(), Qt::LeftButton);
    }

    WorkspacesPage* page = nullptr;
};

} // namespace

// The "Bereiche" page through its real widgets: the editor with the memory dialogs answering as
// the user, the presets' buttons and the outcome in the status line.
class WorkspacesPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void savesAWorkspaceFromTwoChosenFolders()
    {
        WorkspacesRig rig;
        QVERIFY(rig.page);
        QVERIFY(labelTexts(rig.page).contains(QStringLiteral(
            "Stelle Apps, Projektordner und Dokumente zusammen. Ein Klick öffnet deinen Arbeitsbereich.")));
        QCOMPARE(rig.editor().nameField()->placeholderText(), QStringLiteral("Name, z. B. Entwicklung"));
        QCOMPARE(rig.editor().chooseButton()->text(), QStringLiteral("Apps / Dateien wählen"));
        QCOMPARE(rig.editor().countText(), QStringLiteral("Nichts ausgewählt"));
        QVERIFY(rig.page->showsEmptyState());
        QVERIFY(!rig.editor().saveButton()->isEnabled());

        QTest::keyClicks(rig.editor().nameField(), QStringLiteral(" Entwicklung "));
        // The draft is the store's: it survives the panel closing.
        QCOMPARE(rig.store().workspaceDraft(), QStringLiteral(" Entwicklung "));
        QVERIFY(!rig.editor().saveButton()->isEnabled());

        QTest::mouseClick(rig.editor().chooseButton(), Qt::LeftButton);
        QCOMPARE(rig.memory().dialogs.openCount(), 1);
        QCOMPARE(rig.model().interactionLocks(), qint64(1));
        // One dialog at a time.
        QVERIFY(!rig.editor().chooseButton()->isEnabled());
        QTest::mouseClick(rig.editor().chooseButton(), Qt::LeftButton);
        QCOMPARE(rig.memory().dialogs.openCount(), 1);

        const QUrl project = QUrl::fromLocalFile(QStringLiteral("/srv/projekt"));
        const QUrl notes = QUrl::fromLocalFile(QStringLiteral("/srv/notizen/"));
        QVERIFY(rig.memory().dialogs.choose({project, notes}));
        QCOMPARE(rig.model().interactionLocks(), qint64(0));
        QVERIFY(rig.editor().chooseButton()->isEnabled());
        QCOMPARE(rig.editor().countText(), QStringLiteral("2 Elemente ausgewählt"));

        // Choosing a folder again, written the other way, counts it once.
        QTest::mouseClick(rig.editor().chooseButton(), Qt::LeftButton);
        QVERIFY(rig.memory().dialogs.choose({QUrl::fromLocalFile(QStringLiteral("/srv/projekt/"))}));
        QCOMPARE(rig.editor().countText(), QStringLiteral("2 Elemente ausgewählt"));

        QVERIFY(rig.editor().saveButton()->isEnabled());
        QTest::mouseClick(rig.editor().saveButton(), Qt::LeftButton);
        QCOMPARE(rig.store().presets().size(), 1);
        const WorkspacePreset& saved = rig.store().presets().first();
        QCOMPARE(saved.name, QStringLiteral("Entwicklung"));
        QCOMPARE(saved.paths, (QStringList{QStringLiteral("/srv/projekt"), QStringLiteral("/srv/notizen")}));
        QCOMPARE(rig.page->presetNames(), QStringList{QStringLiteral("Entwicklung")});
        QVERIFY(!rig.page->showsEmptyState());
        QVERIFY(labelTexts(rig.page).contains(QStringLiteral("projekt · notizen")));
        // The editor is empty again.
        QVERIFY(rig.editor().nameField()->text().isEmpty());
        QCOMPARE(rig.editor().countText(), QStringLiteral("Nichts ausgewählt"));
        QVERIFY(!rig.editor().saveButton()->isEnabled());
    }

    void aCancelledDialogAddsNothingAndReleasesThePanel()
    {
        WorkspacesRig rig;
        QTest::keyClicks(rig.editor().nameField(), QStringLiteral("Schreiben"));
        QTest::mouseClick(rig.editor().chooseButton(), Qt::LeftButton);
        QCOMPARE(rig.model().interactionLocks(), qint64(1));
        QVERIFY(rig.memory().dialogs.cancel());
        QCOMPARE(rig.model().interactionLocks(), qint64(0));
        QVERIFY(rig.editor().chooseButton()->isEnabled());
        QCOMPARE(rig.editor().countText(), QStringLiteral("Nichts ausgewählt"));
        QVERIFY(rig.store().workspacePaths().isEmpty());
        QVERIFY(!rig.editor().saveButton()->isEnabled());
        // Return in the name field does not save half a workspace either.
        QTest::keyClick(rig.editor().nameField(), Qt::Key_Return);
        QVERIFY(rig.store().presets().isEmpty());
    }

    void editsAndRemovesAPreset()
    {
        WorkspacesRig rig;
        const QUrl a = QUrl::fromLocalFile(QStringLiteral("/srv/a"));
        const QUrl b = QUrl::fromLocalFile(QStringLiteral("/srv/b"));
        rig.create(QStringLiteral("Erster"), {a});
        rig.create(QStringLiteral("Zweiter"), {b});
        QCOMPARE(rig.page->presetNames(), (QStringList{QStringLiteral("Erster"), QStringLiteral("Zweiter")}));
        QVERIFY(rig.editor().cancelButton()->isHidden());

        QTest::mouseClick(rig.page->rowButton(0, QStringLiteral("Bearbeiten")), Qt::LeftButton);
        QApplication::processEvents();
        QCOMPARE(rig.editor().nameField()->text(), QStringLiteral("Erster"));
        QCOMPARE(rig.editor().countText(), QStringLiteral("1 Element ausgewählt"));
        QCOMPARE(rig.editor().saveButton()->text(), QStringLiteral("Änderungen sichern"));
        QVERIFY(!rig.editor().cancelButton()->isHidden());
        QVERIFY(!rig.page->rowButton(0, QStringLiteral("Bearbeiten"))->isEnabled());

        rig.editor().nameField()->selectAll();
        QTest::keyClicks(rig.editor().nameField(), QStringLiteral("Umbenannt"));
        QTest::mouseClick(rig.editor().chooseButton(), Qt::LeftButton);
        QVERIFY(rig.memory().dialogs.choose({b}));
        QCOMPARE(rig.editor().countText(), QStringLiteral("2 Elemente ausgewählt"));
        QTest::keyClick(rig.editor().nameField(), Qt::Key_Return);
        QApplication::processEvents();
        QCOMPARE(rig.store().presets().size(), 2);
        QCOMPARE(rig.store().presets().first().name, QStringLiteral("Umbenannt"));
        QCOMPARE(rig.store().presets().first().paths,
                 (QStringList{QStringLiteral("/srv/a"), QStringLiteral("/srv/b")}));
        QVERIFY(rig.editor().cancelButton()->isHidden());

        // "Abbrechen" leaves the preset as it was.
        QTest::mouseClick(rig.page->rowButton(1, QStringLiteral("Bearbeiten")), Qt::LeftButton);
        QApplication::processEvents();
        rig.editor().nameField()->clear();
        QTest::keyClicks(rig.editor().nameField(), QStringLiteral("Verworfen"));
        QTest::mouseClick(rig.editor().cancelButton(), Qt::LeftButton);
        QApplication::processEvents();
        QCOMPARE(rig.store().presets().at(1).name, QStringLiteral("Zweiter"));
        QVERIFY(rig.editor().nameField()->text().isEmpty());

        QTest::mouseClick(rig.page->rowButton(0, QStringLiteral("Entfernen")), Qt::LeftButton);
        QApplication::processEvents();
        QCOMPARE(rig.page->presetNames(), QStringList{QStringLiteral("Zweiter")});
        QTest::mouseClick(rig.page->rowButton(0, QStringLiteral("Entfernen")), Qt::LeftButton);
        QApplication::processEvents();
        QVERIFY(rig.page->showsEmptyState());
        QVERIFY(labelTexts(rig.page).contains(QStringLiteral("Noch keine Arbeitsbereiche.")));
        // The removal is stored.
        QVERIFY(rig.fixture.restart().productivity().presets().isEmpty());
    }

    void startingReportsWhatDidNotOpen()
    {
        WorkspacesRig rig;
        QTemporaryDir folder;
        const QString project = folder.filePath(QStringLiteral("Projekt"));
        QVERIFY(QDir().mkpath(project));
        const QString gone = folder.filePath(QStringLiteral("Verschoben"));
        rig.memory().workspace.openable.insert(project);
        rig.create(QStringLiteral("Entwicklung"),
                   {QUrl::fromLocalFile(project), QUrl::fromLocalFile(gone + u'/')});

        QTest::mouseClick(rig.page->rowButton(0, QStringLiteral("Starten")), Qt::LeftButton);
        QTRY_COMPARE(rig.status(), QStringLiteral("Nicht geöffnet: Verschoben"));
        QCOMPARE(rig.memory().workspace.opened, QStringList{project});
        QCOMPARE(rig.model().notices().first().title, QStringLiteral("Arbeitsbereich: Entwicklung"));

        QVERIFY(QDir().mkpath(gone));
        rig.memory().workspace.openable.insert(gone);
        QTest::mouseClick(rig.page->rowButton(0, QStringLiteral("Starten")), Qt::LeftButton);
        QTRY_COMPARE(rig.status(), QStringLiteral("Entwicklung geöffnet"));
    }

    void fitsEveryLayoutWithPresets()
    {
        WorkspacesRig rig;
        for (int i = 0; i < 6; ++i)
            rig.store().createWorkspace(
                QStringLiteral("Ein recht langer Name für Bereich %1").arg(i),
                {QUrl::fromLocalFile(
                     QStringLiteral(
                         "/home/nutzer/Projekte/ein-sehr-langer-ordnername-für-das-ganze-jahresprojekt-%1")
                         .arg(i)),
                 QUrl::fromLocalFile(QStringLiteral("/usr/share/applications/org.gnome.Nautilus.desktop"))});
        rig.model().productivity().editWorkspace(rig.store().presets().first().id);
        const std::pair<PanelLayout, QSize> layouts[] = {{PanelLayout::wide, {800, 426}},
                                                         {PanelLayout::balanced, {620, 466}},
                                                         {PanelLayout::tall, {520, 556}}};
        for (const auto& [layout, size] : layouts) {
            rig.model().preferences().update([layout](PreferenceValues& v) { v.layout = layout; });
            rig.root->resize(size);
            QApplication::processEvents();
            const QSize needed = rig.root->contentMinimum();
            QVERIFY2(needed.width() <= size.width() && needed.height() <= size.height(),
                     qPrintable(QStringLiteral("needs %1×%2").arg(needed.width()).arg(needed.height())));
            // Every row keeps its three buttons inside the page.
            QPushButton* remove = rig.page->rowButton(0, QStringLiteral("Entfernen"));
            const QRect inPage(remove->mapTo(rig.page, QPoint(0, 0)), remove->size());
            QVERIFY2(rig.page->rect().contains(inPage), qPrintable(QString::number(size.width())));
            // Names and item lists too long for the row end in "…" instead of being cut off.
            int elided = 0;
            for (const ElidedTextLabel* label : rig.page->findChildren<ElidedTextLabel*>()) {
                if (!label->isVisible())
                    continue;
                QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <=
                        label->contentsRect().width());
                if (label->text() != label->fullText()) {
                    QVERIFY(label->text().endsWith(QChar(0x2026)));
                    ++elided;
                }
            }
            QVERIFY2(elided > 0, qPrintable(QString::number(size.width())));
        }
        QCOMPARE(rig.page->presetNames().first(), QStringLiteral("Ein recht langer Name für Bereich 0"));
    }
};

int runWorkspacesPageTests(int argc, char** argv)
{
    WorkspacesPageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "WorkspacesPageTest.moc"
