#pragma once

#include "productivity/QuickNote.h"
#include "productivity/WorkspacePreset.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <optional>

class Clock;
class Defaults;
class Workspace;

// Notes, clipboard favourites, workspaces and the editors' drafts; every change is stored at once.
class Productivity : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<QuickNote> notes READ notes NOTIFY notesChanged)
    Q_PROPERTY(QList<WorkspacePreset> presets READ presets NOTIFY presetsChanged)
    Q_PROPERTY(QStringList pins READ pins NOTIFY pinsChanged)
    Q_PROPERTY(bool mini READ mini WRITE setMini NOTIFY miniChanged)
    Q_PROPERTY(QString noteDraft READ noteDraft WRITE setNoteDraft NOTIFY noteDraftChanged)
    Q_PROPERTY(
        QString workspaceDraft READ workspaceDraft WRITE setWorkspaceDraft NOTIFY workspaceDraftChanged)
    Q_PROPERTY(
        QList<QUrl> workspacePaths READ workspacePaths WRITE setWorkspacePaths NOTIFY workspacePathsChanged)
public:
    Productivity(Defaults& defaults, Clock& clock, QObject* parent = nullptr);

    const QList<QuickNote>& notes() const { return m_notes; }
    const QList<WorkspacePreset>& presets() const { return m_presets; }
    const QStringList& pins() const { return m_pins; }
    bool mini() const { return m_mini; }
    const QString& noteDraft() const { return m_noteDraft; }
    std::optional<QUuid> noteEditingID() const { return m_noteEditingID; }
    const QString& workspaceDraft() const { return m_workspaceDraft; }
    const QList<QUrl>& workspacePaths() const { return m_workspacePaths; }
    std::optional<QUuid> workspaceEditingID() const { return m_workspaceEditingID; }

    void setMini(bool mini);
    void setNoteDraft(const QString& draft);
    void setNoteEditingID(std::optional<QUuid> id);
    void setWorkspaceDraft(const QString& draft);
    void setWorkspacePaths(const QList<QUrl>& paths);
    void setWorkspaceEditingID(std::optional<QUuid> id);

    void addNote(const QString& text);
    // The note editor's save: replaces the edited note or adds the draft, then clears the editor.
    void saveNoteDraft();
    void setNotes(const QList<QuickNote>& notes);
    void togglePin(QString text);
    void setPins(const QStringList& pins);
    // Paths are compared cleaned: "/srv/projekt/" and "/srv/projekt" are one folder.
    void createWorkspace(const QString& name, const QList<QUrl>& urls);
    // Chosen items join the editor's list once each, after the ones it has.
    void addWorkspacePaths(const QList<QUrl>& urls);
    // The workspace editor's save: updates the edited preset or creates one, then clears the editor.
    void saveWorkspaceDraft();
    // Whether the save would change anything: a new preset needs a name and items, an edited one
    // a name or items.
    bool canSaveWorkspaceDraft() const;
    void editWorkspace(const QUuid& id);
    // Leaves the editor empty without saving.
    void clearWorkspaceDraft();
    void removeWorkspace(QUuid id);
    std::optional<WorkspacePreset> preset(const QUuid& id) const;

    // Opens every path of the preset and answers the status message ("… geöffnet" or the
    // failures). Blocking: it asks the file system; the panel launches through WorkspaceLauncher.
    static QString launchStatus(const WorkspacePreset& preset, Workspace& workspace);

Q_SIGNALS:
    void notesChanged();
    void presetsChanged();
    void pinsChanged();
    void miniChanged();
    void noteDraftChanged();
    void noteEditingIDChanged();
    void workspaceDraftChanged();
    void workspacePathsChanged();
    void workspaceEditingIDChanged();

private:
    void storeNotes();
    void storePresets();
    void storePins();
    void storeOptionalId(const QString& key, std::optional<QUuid> id);

    Defaults& m_defaults;
    Clock& m_clock;
    QList<QuickNote> m_notes;
    QList<WorkspacePreset> m_presets;
    QStringList m_pins;
    bool m_mini = false;
    QString m_noteDraft;
    std::optional<QUuid> m_noteEditingID;
    QString m_workspaceDraft;
    QList<QUrl> m_workspacePaths;
    std::optional<QUuid> m_workspaceEditingID;
};
