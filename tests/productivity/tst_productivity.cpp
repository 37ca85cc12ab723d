#include "TestSupport.h"

#include "productivity/Productivity.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

// Notes, pins, workspaces and drafts; the shelf lists of the model.
class ProductivityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void notesAreTrimmedNewestFirstAndPersist()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        {
            Productivity store(*domain.defaults, memory.clock);
            store.addNote(QStringLiteral("  Eine Notiz  "));
            store.addNote(QStringLiteral(" \n "));
            store.addNote(QStringLiteral("Zweite"));
            QCOMPARE(store.notes().size(), 2);
            QCOMPARE(store.notes().at(0).text, QStringLiteral("Zweite"));
            QCOMPARE(store.notes().at(1).text, QStringLiteral("Eine Notiz"));
            store.togglePin(QStringLiteral("t"));
            store.togglePin(QStringLiteral("u"));
            store.togglePin(QStringLiteral("t"));
            store.setMini(true);
        }
        Productivity reloaded(domain.reopen(), memory.clock);
        QCOMPARE(reloaded.notes().size(), 2);
        QCOMPARE(reloaded.notes().at(1).text, QStringLiteral("Eine Notiz"));
        QCOMPARE(reloaded.pins(), QStringList{QStringLiteral("u")});
        QVERIFY(reloaded.mini());
    }

    void editingANoteKeepsItsPlaceAndId()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        Productivity store(*domain.defaults, memory.clock);
        store.addNote(QStringLiteral("alt"));
        store.addNote(QStringLiteral("oben"));
        const QuickNote old = store.notes().at(1);
        store.setNoteEditingID(old.id);
        store.setNoteDraft(QStringLiteral("  neu "));
        store.saveNoteDraft();
        QCOMPARE(store.notes().at(1).id, old.id);
        QCOMPARE(store.notes().at(1).text, QStringLiteral("neu"));
        QVERIFY(store.noteDraft().isEmpty());
        QVERIFY(!store.noteEditingID());
        // Draft and editing id survive a restart until saved.
        store.setNoteDraft(QStringLiteral("halb"));
        store.setNoteEditingID(old.id);
        Defaults reopened(domain.name);
        Productivity reloaded(reopened, memory.clock);
        QCOMPARE(reloaded.noteDraft(), QStringLiteral("halb"));
        QCOMPARE(reloaded.noteEditingID(), std::optional<QUuid>(old.id));
    }

    void workspacesNeedANameAndPaths()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        Productivity store(*domain.defaults, memory.clock);
        const QUrl applications = QUrl::fromLocalFile(QStringLiteral("/Applications"));
        store.createWorkspace(QStringLiteral(" Test "), {applications, applications});
        store.createWorkspace(QStringLiteral(" "), {applications});
        store.createWorkspace(QStringLiteral("Ohne"), {});
        QCOMPARE(store.presets().size(), 1);
        QCOMPARE(store.presets().first().name, QStringLiteral("Test"));
        QCOMPARE(store.presets().first().paths, QStringList{QStringLiteral("/Applications")});

        store.editWorkspace(store.presets().first().id);
        QCOMPARE(store.workspaceDraft(), QStringLiteral("Test"));
        store.setWorkspaceDraft(QStringLiteral("Entwicklung"));
        store.saveWorkspaceDraft();
        QCOMPARE(store.presets().size(), 1);
        QCOMPARE(store.presets().first().name, QStringLiteral("Entwicklung"));
        QVERIFY(store.workspacePaths().isEmpty());
        Defaults reopened(domain.name);
        QCOMPARE(Productivity(reopened, memory.clock).presets(), store.presets());

        store.removeWorkspace(store.presets().first().id);
        QVERIFY(store.presets().isEmpty());
    }

    void undecodableListsCountAsEmpty()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        domain.defaults->setData(QStringLiteral("productivity.notes"),
                                 QByteArray(R"([{"id":"x","text":"a"}])"));
        domain.defaults->setData(QStringLiteral("productivity.pins"), QByteArray(R"(["a", 3])"));
        Productivity store(*domain.defaults, memory.clock);
        QVERIFY(store.notes().isEmpty());
        QVERIFY(store.pins().isEmpty());
        QCOMPARE(domain.defaults->dataValue(QStringLiteral("productivity.notes")),
                 std::optional<QByteArray>("[]"));
    }

    void launchingAWorkspaceReportsWhatFailed()
    {
        ModelFixture fixture;
        QTemporaryDir folder;
        const QString present = folder.path();
        const QString gone = folder.filePath(QStringLiteral("Weg.txt"));
        // A folder written with a trailing slash is still named by its last part.
        const QString goneFolder = folder.filePath(QStringLiteral("Archiv")) + u'/';
        fixture.memory.workspace.openable.insert(present);
        const WorkspacePreset preset{
            QUuid::createUuid(), QStringLiteral("Schreiben"), {present, gone, present + u'/', goneFolder}};
        fixture.model->launchWorkspace(preset);
        // The paths are looked up off the main thread; nothing is reported before the answer.
        QVERIFY(fixture.model->message().isEmpty());
        QTRY_COMPARE(fixture.model->message(), QStringLiteral("Nicht geöffnet: Weg.txt, Archiv"));
        // The folder written twice opened once.
        QCOMPARE(fixture.memory.workspace.opened, QStringList{present});
        QCOMPARE(fixture.model->notices().first().title, QStringLiteral("Arbeitsbereich: Schreiben"));
        QCOMPARE(fixture.model->notices().first().detail, QStringLiteral("Nicht geöffnet: Weg.txt, Archiv"));

        const WorkspacePreset good{QUuid::createUuid(), QStringLiteral("Lesen"), {present}};
        fixture.model->launchWorkspace(good);
        QTRY_COMPARE(fixture.model->message(), QStringLiteral("Lesen geöffnet"));

        // A path that exists but that the desktop refuses to open counts as not opened.
        fixture.memory.workspace.openable.clear();
        fixture.model->launchWorkspace(good);
        QTRY_COMPARE(fixture.model->message(),
                     QStringLiteral("Nicht geöffnet: ") + QFileInfo(present).fileName());
    }

    void aSecondClickWhileLaunchingOpensNothingTwice()
    {
        ModelFixture fixture;
        QTemporaryDir folder;
        fixture.memory.workspace.openable.insert(folder.path());
        const WorkspacePreset preset{QUuid::createUuid(), QStringLiteral("Doppelt"), {folder.path()}};
        fixture.model->launchWorkspace(preset);
        fixture.model->launchWorkspace(preset);
        QTRY_COMPARE(fixture.model->message(), QStringLiteral("Doppelt geöffnet"));
        QTest::qWait(50);
        QCOMPARE(fixture.memory.workspace.opened.size(), 1);
        QCOMPARE(fixture.model->notices().first().title, QStringLiteral("Arbeitsbereich: Doppelt"));
        QVERIFY(fixture.model->notices().at(1).title != QStringLiteral("Arbeitsbereich: Doppelt"));
        // Once answered, the next click launches again.
        fixture.model->launchWorkspace(preset);
        QTRY_COMPARE(fixture.memory.workspace.opened.size(), 2);
    }

    void pathsWithAndWithoutATrailingSlashAreOnePath()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        Productivity store(*domain.defaults, memory.clock);
        const QUrl plain = QUrl::fromLocalFile(QStringLiteral("/srv/projekt"));
        const QUrl slashed = QUrl::fromLocalFile(QStringLiteral("/srv/projekt/"));
        const QUrl doubled = QUrl::fromLocalFile(QStringLiteral("/srv//projekt/./"));
        const QUrl notes = QUrl::fromLocalFile(QStringLiteral("/srv/notizen.md"));
        store.createWorkspace(QStringLiteral("Projekt"), {slashed, notes, plain, doubled});
        QCOMPARE(store.presets().first().paths,
                 (QStringList{QStringLiteral("/srv/projekt"), QStringLiteral("/srv/notizen.md")}));

        // The chooser adds only what the editor does not have yet, keeping the order.
        store.addWorkspacePaths({slashed});
        store.addWorkspacePaths({notes, plain, QUrl(QStringLiteral("https://example.org/"))});
        QCOMPARE(store.workspacePaths(), (QList<QUrl>{plain, notes}));

        // Editing replaces the paths with the cleaned, deduplicated choice.
        store.editWorkspace(store.presets().first().id);
        QCOMPARE(store.workspacePaths(), (QList<QUrl>{plain, notes}));
        store.setWorkspacePaths({notes, slashed, plain});
        store.saveWorkspaceDraft();
        QCOMPARE(store.presets().first().paths,
                 (QStringList{QStringLiteral("/srv/notizen.md"), QStringLiteral("/srv/projekt")}));
    }

    void theEditorSavesOnlyWhatMakesAPreset()
    {
        ScratchDomain domain;
        MemoryPlatform memory;
        Productivity store(*domain.defaults, memory.clock);
        const QUrl folder = QUrl::fromLocalFile(QStringLiteral("/srv/projekt"));
        QVERIFY(!store.canSaveWorkspaceDraft());
        store.setWorkspaceDraft(QStringLiteral("  "));
        store.addWorkspacePaths({folder});
        QVERIFY(!store.canSaveWorkspaceDraft());
        store.setWorkspaceDraft(QStringLiteral("Projekt"));
        QVERIFY(store.canSaveWorkspaceDraft());
        store.setWorkspacePaths({});
        QVERIFY(!store.canSaveWorkspaceDraft());

        // An edited preset may change only its name, or only its items.
        store.createWorkspace(QStringLiteral("Alt"), {folder});
        const QUuid id = store.presets().first().id;
        store.editWorkspace(id);
        store.setWorkspacePaths({});
        QVERIFY(store.canSaveWorkspaceDraft());
        store.setWorkspaceDraft(QString());
        QVERIFY(!store.canSaveWorkspaceDraft());

        // Removing the preset being edited empties the editor.
        store.setWorkspaceDraft(QStringLiteral("Neu"));
        store.removeWorkspace(id);
        QVERIFY(!store.workspaceEditingID());
        QVERIFY(store.workspaceDraft().isEmpty());
        QVERIFY(store.presets().isEmpty());
    }

    void theChooserHoldsThePanelOpenUntilItEnds()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        MemoryDialogs& dialogs = fixture.memory.dialogs;
        model.chooseWorkspaceItems();
        QCOMPARE(dialogs.openCount(), 1);
        QCOMPARE(model.interactionLocks(), qint64(1));
        QVERIFY(dialogs.current().multipleSelection && dialogs.current().files &&
                dialogs.current().directories);
        QCOMPARE(dialogs.current().startFolder, QStringLiteral("/usr/share/applications"));

        // Cancelled: nothing is added and the panel is free again.
        QVERIFY(dialogs.cancel());
        QCOMPARE(model.interactionLocks(), qint64(0));
        QVERIFY(model.productivity().workspacePaths().isEmpty());

        const QUrl a = QUrl::fromLocalFile(QStringLiteral("/srv/a"));
        const QUrl b = QUrl::fromLocalFile(QStringLiteral("/srv/b/"));
        model.chooseWorkspaceItems();
        model.chooseWorkspaceItems();
        QCOMPARE(model.interactionLocks(), qint64(2));
        QVERIFY(dialogs.choose({a}));
        QCOMPARE(model.interactionLocks(), qint64(1));
        QVERIFY(dialogs.choose({b, a}));
        QCOMPARE(model.interactionLocks(), qint64(0));
        QCOMPARE(model.productivity().workspacePaths(),
                 (QList<QUrl>{a, QUrl::fromLocalFile(QStringLiteral("/srv/b"))}));
        // A stray answer cannot push the count below zero.
        QVERIFY(!dialogs.cancel());
        QCOMPARE(model.interactionLocks(), qint64(0));
    }

    void aDialogOutlivingItsReceiverOnlyReleasesThePanel()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        std::optional<QList<QUrl>> received;
        {
            QObject receiver;
            model.present(OpenDialogRequest{}, &receiver,
                          [&received](const QList<QUrl>& urls) { received = urls; });
        }
        QVERIFY(fixture.memory.dialogs.choose({QUrl::fromLocalFile(QStringLiteral("/srv/a"))}));
        QVERIFY(!received);
        QCOMPARE(model.interactionLocks(), qint64(0));
    }

    void shelfSortsAppsFromFilesWithoutDuplicates()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        const QUrl file = QUrl::fromLocalFile(QStringLiteral("/tmp/Bericht.pdf"));
        const QUrl app = QUrl::fromLocalFile(QStringLiteral("/opt/Editor.APP"));
        model.addFiles({file, file, app, QUrl(QStringLiteral("https://example.org/x.app"))});
        QCOMPARE(model.files(), QList<QUrl>{file});
        // No applications folder in the memory platform: no favourites of a first start.
        QCOMPARE(model.apps(), QList<QUrl>{app});
        model.removeFile(file);
        Model& restarted = fixture.restart();
        QVERIFY(restarted.files().isEmpty());
        QCOMPARE(restarted.apps().last(), app);
    }

    void anEmptiedAppListStaysEmpty()
    {
        ModelFixture fixture;
        fixture.domain.defaults->setStringArray(QStringLiteral("apps"), {});
        QVERIFY(fixture.restart().apps().isEmpty());
    }
};

QTEST_GUILESS_MAIN(ProductivityTest)
#include "tst_productivity.moc"
