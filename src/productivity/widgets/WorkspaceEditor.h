#pragma once

#include "ui/Card.h"

class PanelState;
class Productivity;
class QLabel;
class QLineEdit;
class QPushButton;

// The workspace editor: a name bound to the draft, the chooser with the number of chosen items,
// save, and a way out of editing a preset.
class WorkspaceEditor : public Card
{
    Q_OBJECT
public:
    WorkspaceEditor(Productivity& productivity, const PanelState& panel, QWidget* parent = nullptr);

    QLineEdit* nameField() const { return m_name; }
    QPushButton* chooseButton() const { return m_choose; }
    QPushButton* saveButton() const { return m_save; }
    QPushButton* cancelButton() const { return m_cancel; }
    QString countText() const;

Q_SIGNALS:
    // "Apps / Dateien wählen": the model shows the dialog.
    void chooseRequested();

private:
    void save();
    void sync();
    void syncChooser();

    Productivity& m_productivity;
    const PanelState& m_panel;
    QLineEdit* m_name;
    QPushButton* m_choose;
    QLabel* m_count;
    QPushButton* m_cancel;
    QPushButton* m_save;
};
