#pragma once

#include "productivity/WorkspacePreset.h"

#include <QWidget>

class PanelState;
class Productivity;
class QPushButton;
class QVBoxLayout;
class WorkspaceEditor;

// The "Bereiche" page: the editor on top, then every preset with "Starten", "Bearbeiten" and
// "Entfernen".
class WorkspacesPage : public QWidget
{
    Q_OBJECT
public:
    WorkspacesPage(Productivity& productivity, const PanelState& panel, QWidget* parent = nullptr);

    WorkspaceEditor* editor() const { return m_editor; }
    // The presets' names as listed.
    QStringList presetNames() const;
    // A preset row's button by its text ("Starten", "Bearbeiten", "Entfernen").
    QPushButton* rowButton(int row, const QString& text) const;
    bool showsEmptyState() const;

Q_SIGNALS:
    void chooseRequested();
    void launchRequested(const WorkspacePreset& preset);

private:
    void rebuild();
    QWidget* makeRow(const WorkspacePreset& preset);

    Productivity& m_productivity;
    WorkspaceEditor* m_editor;
    QWidget* m_empty;
    QVBoxLayout* m_rows;
};
