// Self-test groups for the note history, the shelf with sharing, and the search's rules.
#include "app/SelfTest.h"

#include "model/Model.h"
#include "platform/memory/MemoryPlatform.h"
#include "productivity/AppCatalog.h"
#include "productivity/DesktopEntry.h"
#include "productivity/DeviceSearch.h"
#include "productivity/NoteHistory.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

bool write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

namespace SelfTestGroups {

QString noteHistory()
{
    NoteHistory history;
    for (const char* text : {"a", "ab", "abc"})
        history.record(QString::fromLatin1(text));
    history.undo();
    selfCheck(history.undo() == QStringLiteral("a"), "two undos after a, ab, abc give a");
    selfCheck(history.redo() == QStringLiteral("ab"), "redo gives ab");
    history.record(QStringLiteral("abc!"));
    selfCheck(!history.redo(), "new typing clears the redo list");
    NoteHistory deep;
    for (int i = 1; i <= 100; ++i)
        deep.record(QString::number(i));
    int undone = 0;
    while (deep.undo())
        ++undone;
    selfCheck(undone == NoteHistory::depth && deep.current() == QStringLiteral("20"),
              "after 100 edits undo stops at the 20th after 80 steps");
    deep.reset(QStringLiteral("andere Notiz"));
    selfCheck(!deep.undo() && deep.current() == QStringLiteral("andere Notiz"),
              "loading another note leaves nothing to undo");
    return QStringLiteral("note history: undo, redo, depth 80, fresh history per note");
}

QString shelfAndSharing(Model& model, MemoryPlatform& memory)
{
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/srv/Bericht.pdf"));
    const QUrl app = QUrl::fromLocalFile(QStringLiteral("/usr/share/applications/Editor.DESKTOP"));
    const qsizetype apps = model.apps().size();
    model.addFiles({file, file, app, QUrl(QStringLiteral("https://example.org/x.desktop"))});
    selfCheck(model.files() == QList<QUrl>{file}, "a file joins the shelf once");
    selfCheck(model.apps().size() == apps + 1 && model.apps().last() == app,
              "a desktop entry joins the favourites, a web link is ignored");
    model.airDrop({});
    selfCheck(model.message() == QStringLiteral("Lege zuerst Dateien in die Ablage."), "empty shelf message");
    model.airDrop(model.files());
    model.airDrop(model.files());
    selfCheck(model.message() == QStringLiteral("Ein AirDrop-Dialog ist bereits geöffnet.") &&
                  model.interactionLocks() == 1,
              "one sharing session at a time, holding the panel");
    memory.sharing.reachable = false;
    memory.sharing.finish();
    selfCheck(model.message() == QStringLiteral("AirDrop ist für diese Auswahl nicht verfügbar.") &&
                  model.interactionLocks() == 0,
              "no reachable device is reported and releases the panel");
    memory.sharing.reachable = true;
    model.removeFile(file);
    model.removeApp(app);
    return QStringLiteral("shelf sorts apps from files; sharing holds one session and reports its end");
}

QString searchRules()
{
    QTemporaryDir root;
    const QString apps = root.filePath(QStringLiteral("applications"));
    selfCheck(write(apps + QStringLiteral("/term.desktop"),
                    "[Desktop Entry]\nType=Application\nName=Terminal\nExec=sh\n") &&
                  write(apps + QStringLiteral("/hidden.desktop"),
                        "[Desktop Entry]\nType=Application\nName=Termin\nExec=sh\nNoDisplay=true\n") &&
                  write(apps + QStringLiteral("/gone.desktop"),
                        "[Desktop Entry]\nType=Application\nName=Terminator\nExec=/nonexistent/x\n"),
              "desktop entries written");
    const QString doc = root.filePath(QStringLiteral("Term 10.txt"));
    const QString doc2 = root.filePath(QStringLiteral("Term 9.txt"));
    const QString bundled = root.filePath(QStringLiteral("Alt.app/term.txt"));
    selfCheck(write(doc, "x") && write(doc2, "x") && write(bundled, "x"), "files written");
    const QList<InstalledApp> installed = AppCatalog::scan({apps}, DesktopEntry::userLanguages());
    selfCheck(installed.size() == 1 && installed.first().name == QStringLiteral("Terminal"),
              "hidden entries and missing programs are not offered");
    const QList<SearchResult> results = DeviceSearch::combine(
        installed, QStringLiteral("term"), {doc, bundled, doc2, root.filePath(QStringLiteral("term.weg"))});
    QStringList names;
    for (const SearchResult& result : results)
        names.append(result.name);
    selfCheck(names == QStringList({QStringLiteral("Terminal"), QStringLiteral("Term 9.txt"),
                                    QStringLiteral("Term 10.txt")}),
              "applications first, numbers by value, nothing from bundles or that is gone");
    return QStringLiteral("search lists applications first and leaves out bundles and missing files");
}

} // namespace SelfTestGroups
