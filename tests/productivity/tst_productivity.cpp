#include "TestSupport.h"

#include "productivity/Productivity.h"

#include <QDir>
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
        fixture.memory.workspace.openable.insert(present);
        const WorkspacePreset preset{QUuid::createUuid(), QStringLiteral("Schreiben"), {present, gone}};
        fixture.model->launchWorkspace(preset);
        QCOMPARE(fixture.memory.workspace.opened, QStringList{present});
        QCOMPARE(fixture.model->message(), QStringLiteral("Nicht geöffnet: Weg.txt"));
        QCOMPARE(fixture.model->notices().first().title, QStringLiteral("Arbeitsbereich: Schreiben"));
        QCOMPARE(fixture.model->notices().first().detail, QStringLiteral("Nicht geöffnet: Weg.txt"));

        const WorkspacePreset good{QUuid::createUuid(), QStringLiteral("Lesen"), {present}};
        fixture.model->launchWorkspace(good);
        QCOMPARE(fixture.model->message(), QStringLiteral("Lesen geöffnet"));
    }

    void shelfSortsAppsFromFilesWithoutDuplicates()
    {
        ModelFixture fixture;
        Model& model = *fixture.model;
        const QUrl file = QUrl::fromLocalFile(QStringLiteral("/tmp/Bericht.pdf"));
        const QUrl app = QUrl::fromLocalFile(QStringLiteral("/opt/Editor.APP"));
        model.addFiles({file, file, app, QUrl(QStringLiteral("https://example.org/x.app"))});
        QCOMPARE(model.files(), QList<QUrl>{file});
        QCOMPARE(model.apps().size(), 4);
        QCOMPARE(model.apps().last(), app);
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
