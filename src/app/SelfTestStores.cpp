// Self-test groups for the stores that need no model: permissions, productivity, preferences.
#include "app/SelfTest.h"

#include "common/Clock.h"
#include "model/Model.h"
#include "platform/memory/MemoryPlatform.h"
#include "productivity/Productivity.h"
#include "settings/Defaults.h"
#include "settings/Preferences.h"
#include "setup/PermissionStore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QUuid>

namespace {

// A settings domain of its own, removed when the group ends.
class PrivateDomain
{
public:
    PrivateDomain()
        : m_name(QStringLiteral("Brenlow.SelfTest.") + QUuid::createUuid().toString(QUuid::WithoutBraces))
    {}
    ~PrivateDomain() { Defaults(m_name).removeDomain(); }
    std::unique_ptr<Defaults> open() const { return std::make_unique<Defaults>(m_name); }

private:
    QString m_name;
};

} // namespace

namespace SelfTestGroups {

QString permissions()
{
    MemoryPlatform memory;
    PermissionStore store(memory.permissions, memory.clock);
    selfCheck(!store.accessibility() && !store.screenCapture(),
              "permissions start from the system's answers");
    int changes = 0;
    QObject::connect(&store, &PermissionStore::accessibilityChanged, &store, [&changes] { ++changes; });
    store.refresh();
    selfCheck(changes == 0, "an unchanged trust state reports nothing");
    memory.permissions.accessibility = true;
    memory.permissions.screenCapture = true;
    store.refresh();
    store.refresh();
    selfCheck(changes == 1 && store.accessibility(), "a granted trust state reports once");
    selfCheck(store.screenCapture() && store.checkedAt().has_value(), "screen capture and check time follow");
    selfCheck(memory.permissions.promptCount == 0, "refreshing never prompts");
    return QStringLiteral("permissions refresh without prompts; trust change reported once");
}

QString productivityStore()
{
    PrivateDomain domain;
    MemoryPlatform memory;
    QTemporaryDir folder;
    selfCheck(folder.isValid(), "temporary folder");
    const QString existing = folder.path();
    const QString missing = folder.filePath(QStringLiteral("Fehlt"));
    {
        auto defaults = domain.open();
        Productivity store(*defaults, memory.clock);
        store.addNote(QStringLiteral("  Eine Notiz  "));
        store.addNote(QStringLiteral(" \n "));
        selfCheck(store.notes().size() == 1 && store.notes().first().text == u"Eine Notiz",
                  "notes are trimmed");
        store.togglePin(QStringLiteral("A"));
        store.togglePin(QStringLiteral("B"));
        store.togglePin(QStringLiteral("A"));
        selfCheck(store.pins() == QStringList{QStringLiteral("B")}, "toggling a pin twice removes it");
        const QUrl folderUrl = QUrl::fromLocalFile(existing);
        store.createWorkspace(QStringLiteral(" Test "), {folderUrl, folderUrl});
        store.createWorkspace(QStringLiteral(" "), {folderUrl});
        store.createWorkspace(QStringLiteral("Leer"), {});
        selfCheck(store.presets().size() == 1 && store.presets().first().name == u"Test" &&
                      store.presets().first().paths.size() == 1,
                  "workspaces are trimmed, deduplicated and need a name and paths");
        store.setMini(true);
    }
    auto defaults = domain.open();
    Productivity reloaded(*defaults, memory.clock);
    selfCheck(reloaded.notes().size() == 1 && reloaded.pins() == QStringList{QStringLiteral("B")} &&
                  reloaded.presets().size() == 1 && reloaded.mini(),
              "the store survives a restart");

    memory.workspace.openable.insert(existing);
    const WorkspacePreset preset{QUuid::createUuid(), QStringLiteral("Projekt"), {existing, missing}};
    selfCheck(reloaded.launchStatus(preset, memory.workspace) == u"Nicht geöffnet: Fehlt" &&
                  memory.workspace.opened == QStringList{existing},
              "a workspace opens what exists and names what failed");
    return QStringLiteral("productivity store notes, pins, workspaces, persistence and launch");
}

QString preferencesAndHover()
{
    {
        PrivateDomain domain;
        auto defaults = domain.open();
        Preferences fresh(*defaults);
        selfCheck(fresh.values() == PreferenceValues{}, "a fresh domain gives the defaults");
        selfCheck(defaults->dataValue(QString::fromLatin1(Preferences::storageKey)).has_value() &&
                      defaults->boolValue(QString::fromLatin1(Preferences::migrationKey)) == true,
                  "the defaults are written back with the migration flag");
        fresh.update([](PreferenceValues& values) { values.layout = PanelLayout::tall; });
        auto reopened = domain.open();
        selfCheck(Preferences(*reopened).values().layout == PanelLayout::tall, "preferences persist");
    }
    for (const auto& [stored, expected] : {std::pair{0.12, 0.0}, {0.1201, 0.0}, {0.3, 0.3}}) {
        PrivateDomain domain;
        auto defaults = domain.open();
        PreferenceValues values;
        values.openDelay = stored;
        defaults->setData(QString::fromLatin1(Preferences::storageKey), values.encode());
        selfCheck(Preferences(*defaults).values().openDelay == expected,
                  "the former hover delay migrates once");
        values.openDelay = 0.12;
        defaults->setData(QString::fromLatin1(Preferences::storageKey), values.encode());
        selfCheck(Preferences(*defaults).values().openDelay == 0.12, "the migration never runs twice");
    }
    hoverBehaviour();
    return QStringLiteral("preferences defaults/migration/persistence; hover open/close/locks/suppression");
}

} // namespace SelfTestGroups
