#include "productivity/Productivity.h"

#include "common/Clock.h"
#include "productivity/WorkspaceLauncher.h"
#include "productivity/WorkspacePaths.h"
#include "productivity/WorkspaceTexts.h"
#include "settings/Defaults.h"
#include "settings/Json.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {
const QString notesKey = QStringLiteral("productivity.notes");
const QString presetsKey = QStringLiteral("productivity.workspaces");
const QString pinsKey = QStringLiteral("productivity.pins");
const QString miniKey = QStringLiteral("mini");
const QString noteDraftKey = QStringLiteral("noteDraft");
const QString noteEditingKey = QStringLiteral("noteEditingID");
const QString workspaceDraftKey = QStringLiteral("workspaceDraft");
const QString workspacePathsKey = QStringLiteral("workspacePaths");
const QString workspaceEditingKey = QStringLiteral("workspaceEditingID");

// A stored list decodes whole or counts as empty; one that is there but cannot be read is kept
// aside first, since the store writes over it at once.
template <typename Record>
QList<Record> loadRecords(Defaults& defaults, const QString& key, const QString& what)
{
    if (!defaults.contains(key))
        return {};
    const auto data = defaults.dataValue(key);
    const QJsonDocument document = data ? QJsonDocument::fromJson(*data) : QJsonDocument();
    QList<Record> records;
    bool readable = document.isArray();
    for (const QJsonValue& value : document.array()) {
        const auto record = Record::fromJson(value.toObject());
        if (!value.isObject() || !record) {
            readable = false;
            break;
        }
        records.append(*record);
    }
    if (readable)
        return records;
    defaults.keepUnreadable(key, what);
    return {};
}

template <typename Record>
void storeRecords(Defaults& defaults, const QString& key, const QList<Record>& records)
{
    QJsonArray array;
    for (const Record& record : records)
        array.append(record.toJson());
    defaults.setData(key, QJsonDocument(array).toJson(QJsonDocument::Compact));
}

QStringList loadPins(Defaults& defaults)
{
    if (!defaults.contains(pinsKey))
        return {};
    const auto data = defaults.dataValue(pinsKey);
    const QJsonDocument document = data ? QJsonDocument::fromJson(*data) : QJsonDocument();
    QStringList pins;
    bool readable = document.isArray();
    for (const QJsonValue& value : document.array()) {
        if (!value.isString()) {
            readable = false;
            break;
        }
        pins.append(value.toString());
    }
    if (readable)
        return pins;
    defaults.keepUnreadable(pinsKey, QStringLiteral("die Favoriten des Verlaufs"));
    return {};
}

// Text the user typed: a value of another type is kept aside before the empty text replaces it.
QString loadText(Defaults& defaults, const QString& key, const QString& what)
{
    if (const auto text = defaults.stringValue(key))
        return *text;
    if (defaults.contains(key))
        defaults.keepUnreadable(key, what);
    return {};
}

std::optional<QUuid> loadId(const Defaults& defaults, const QString& key)
{
    const auto text = defaults.stringValue(key);
    return text ? Json::decodeUuid(*text) : std::nullopt;
}

QString trimmed(const QString& text)
{
    return text.trimmed();
}
} // namespace

Productivity::Productivity(Defaults& defaults, Clock& clock, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_clock(clock)
{
    m_notes = loadRecords<QuickNote>(defaults, notesKey, QStringLiteral("die Notizen"));
    storeNotes();
    m_presets = loadRecords<WorkspacePreset>(defaults, presetsKey, QStringLiteral("die Arbeitsbereiche"));
    storePresets();
    m_pins = loadPins(defaults);
    storePins();
    m_mini = defaults.boolValue(miniKey).value_or(false);
    m_noteDraft = loadText(defaults, noteDraftKey, QStringLiteral("der Entwurf einer Notiz"));
    defaults.setString(noteDraftKey, m_noteDraft);
    m_noteEditingID = loadId(defaults, noteEditingKey);
    m_workspaceDraft =
        loadText(defaults, workspaceDraftKey, QStringLiteral("der Name eines neuen Arbeitsbereichs"));
    defaults.setString(workspaceDraftKey, m_workspaceDraft);
    const auto workspacePaths = defaults.stringArrayValue(workspacePathsKey);
    if (!workspacePaths && defaults.contains(workspacePathsKey))
        defaults.keepUnreadable(workspacePathsKey, QStringLiteral("die Auswahl eines neuen Arbeitsbereichs"));
    for (const QString& path : workspacePaths.value_or(QStringList()))
        m_workspacePaths.append(QUrl::fromLocalFile(path));
    m_workspaceEditingID = loadId(defaults, workspaceEditingKey);
}

void Productivity::setMini(bool mini)
{
    m_defaults.setBool(miniKey, mini);
    if (m_mini == mini)
        return;
    m_mini = mini;
    Q_EMIT miniChanged();
}

void Productivity::setNoteDraft(const QString& draft)
{
    m_defaults.setString(noteDraftKey, draft);
    if (m_noteDraft == draft)
        return;
    m_noteDraft = draft;
    Q_EMIT noteDraftChanged();
}

void Productivity::setNoteEditingID(std::optional<QUuid> id)
{
    storeOptionalId(noteEditingKey, id);
    if (m_noteEditingID == id)
        return;
    m_noteEditingID = id;
    Q_EMIT noteEditingIDChanged();
}

void Productivity::setWorkspaceDraft(const QString& draft)
{
    m_defaults.setString(workspaceDraftKey, draft);
    if (m_workspaceDraft == draft)
        return;
    m_workspaceDraft = draft;
    Q_EMIT workspaceDraftChanged();
}

void Productivity::setWorkspacePaths(const QList<QUrl>& paths)
{
    QStringList stored;
    for (const QUrl& url : paths)
        stored.append(url.toLocalFile());
    m_defaults.setStringArray(workspacePathsKey, stored);
    if (m_workspacePaths == paths)
        return;
    m_workspacePaths = paths;
    Q_EMIT workspacePathsChanged();
}

void Productivity::setWorkspaceEditingID(std::optional<QUuid> id)
{
    storeOptionalId(workspaceEditingKey, id);
    if (m_workspaceEditingID == id)
        return;
    m_workspaceEditingID = id;
    Q_EMIT workspaceEditingIDChanged();
}

void Productivity::addNote(const QString& text)
{
    const QString note = trimmed(text);
    if (note.isEmpty())
        return;
    m_notes.prepend(QuickNote{QUuid::createUuid(), note, m_clock.now()});
    storeNotes();
    Q_EMIT notesChanged();
}

void Productivity::saveNoteDraft()
{
    const auto edited = std::find_if(m_notes.begin(), m_notes.end(), [&](const QuickNote& note) {
        return m_noteEditingID && note.id == *m_noteEditingID;
    });
    if (edited != m_notes.end()) {
        const QString text = trimmed(m_noteDraft);
        // An emptied draft keeps the note: removing it is a separate, explicit action.
        if (!text.isEmpty()) {
            edited->text = text;
            storeNotes();
            Q_EMIT notesChanged();
        }
    } else {
        addNote(m_noteDraft);
    }
    setNoteDraft(QString());
    setNoteEditingID(std::nullopt);
}

void Productivity::setNotes(const QList<QuickNote>& notes)
{
    m_notes = notes;
    storeNotes();
    Q_EMIT notesChanged();
}

void Productivity::togglePin(QString text)
{
    if (m_pins.contains(text))
        m_pins.removeAll(text);
    else
        m_pins.prepend(text);
    storePins();
    Q_EMIT pinsChanged();
}

void Productivity::setPins(const QStringList& pins)
{
    m_pins = pins;
    storePins();
    Q_EMIT pinsChanged();
}

void Productivity::createWorkspace(const QString& name, const QList<QUrl>& urls)
{
    const QString cleanName = trimmed(name);
    const QStringList paths = WorkspacePaths::fromUrls(urls);
    if (cleanName.isEmpty() || paths.isEmpty())
        return;
    m_presets.append(WorkspacePreset{QUuid::createUuid(), cleanName, paths});
    storePresets();
    Q_EMIT presetsChanged();
}

void Productivity::addWorkspacePaths(const QList<QUrl>& urls)
{
    setWorkspacePaths(WorkspacePaths::merged(m_workspacePaths, urls));
}

void Productivity::saveWorkspaceDraft()
{
    const auto edited = std::find_if(m_presets.begin(), m_presets.end(), [&](const WorkspacePreset& preset) {
        return m_workspaceEditingID && preset.id == *m_workspaceEditingID;
    });
    if (edited != m_presets.end()) {
        const QString name = trimmed(m_workspaceDraft);
        // An empty name would leave a preset nobody can recognise; keep the old one.
        if (!name.isEmpty())
            edited->name = name;
        const QStringList paths = WorkspacePaths::fromUrls(m_workspacePaths);
        if (!paths.isEmpty())
            edited->paths = paths;
        storePresets();
        Q_EMIT presetsChanged();
    } else {
        createWorkspace(m_workspaceDraft, m_workspacePaths);
    }
    clearWorkspaceDraft();
}

bool Productivity::canSaveWorkspaceDraft() const
{
    const bool named = !trimmed(m_workspaceDraft).isEmpty();
    const bool chosen = !WorkspacePaths::fromUrls(m_workspacePaths).isEmpty();
    if (m_workspaceEditingID && preset(*m_workspaceEditingID))
        return named || chosen;
    return named && chosen;
}

void Productivity::clearWorkspaceDraft()
{
    setWorkspaceDraft(QString());
    setWorkspacePaths({});
    setWorkspaceEditingID(std::nullopt);
}

std::optional<WorkspacePreset> Productivity::preset(const QUuid& id) const
{
    for (const WorkspacePreset& preset : m_presets) {
        if (preset.id == id)
            return preset;
    }
    return std::nullopt;
}

void Productivity::editWorkspace(const QUuid& id)
{
    for (const WorkspacePreset& preset : m_presets) {
        if (preset.id != id)
            continue;
        QList<QUrl> urls;
        for (const QString& path : preset.paths)
            urls.append(QUrl::fromLocalFile(path));
        setWorkspaceEditingID(id);
        setWorkspaceDraft(preset.name);
        setWorkspacePaths(urls);
        return;
    }
}

void Productivity::removeWorkspace(QUuid id)
{
    m_presets.removeIf([&](const WorkspacePreset& preset) { return preset.id == id; });
    storePresets();
    Q_EMIT presetsChanged();
    // The editor must not keep pointing at a preset that is gone.
    if (m_workspaceEditingID == id)
        clearWorkspaceDraft();
}

QString Productivity::launchStatus(const WorkspacePreset& preset, Workspace& workspace)
{
    const QStringList paths = WorkspacePaths::unique(preset.paths);
    const QStringList failed =
        WorkspaceLauncher::openExisting(paths, WorkspacePaths::existing(paths), workspace);
    return WorkspaceTexts::launched(preset.name, failed);
}

void Productivity::storeNotes()
{
    storeRecords(m_defaults, notesKey, m_notes);
}

void Productivity::storePresets()
{
    storeRecords(m_defaults, presetsKey, m_presets);
}

void Productivity::storePins()
{
    m_defaults.setData(pinsKey,
                       QJsonDocument(QJsonArray::fromStringList(m_pins)).toJson(QJsonDocument::Compact));
}

void Productivity::storeOptionalId(const QString& key, std::optional<QUuid> id)
{
    if (id)
        m_defaults.setString(key, Json::encodeUuid(*id));
    else
        m_defaults.remove(key);
}
