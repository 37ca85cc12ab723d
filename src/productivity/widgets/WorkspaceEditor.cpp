#include "productivity/widgets/WorkspaceEditor.h"

#include "model/PanelState.h"
#include "productivity/Productivity.h"
#include "productivity/WorkspacePaths.h"
#include "productivity/WorkspaceTexts.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QPushButton* button(const QString& text, const QString& kind = QString())
{
    auto* button = new QPushButton(PanelTheme::buttonText(text));
    button->setCursor(Qt::PointingHandCursor);
    button->setFont(PanelTheme::font(12, kind == u"primary" ? QFont::DemiBold : QFont::Normal));
    if (!kind.isEmpty())
        button->setProperty("kind", kind);
    return button;
}

} // namespace

WorkspaceEditor::WorkspaceEditor(Productivity& productivity, const PanelState& panel, QWidget* parent)
    : Card(parent), m_productivity(productivity), m_panel(panel), m_name(new QLineEdit),
      m_choose(button(WorkspaceTexts::choose())), m_count(new TextLabel(QString(), 12, TextLabel::secondary)),
      m_cancel(button(WorkspaceTexts::cancelEdit(), QStringLiteral("plain"))),
      m_save(button(WorkspaceTexts::save(), QStringLiteral("primary")))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(10, 8, 10, 8);
    column->setSpacing(6);

    auto* nameRow = new QHBoxLayout;
    nameRow->setSpacing(6);
    m_name->setPlaceholderText(WorkspaceTexts::namePlaceholder());
    m_name->setFont(PanelTheme::font(13));
    m_name->setStyleSheet(QStringLiteral("QLineEdit { background: rgba(255,255,255,0.08); border: none; "
                                         "border-radius: 8px; padding: 5px 9px; color: %1; }")
                              .arg(PanelTheme::text().name()));
    m_name->setMinimumWidth(120);
    nameRow->addWidget(m_name, 1);
    nameRow->addWidget(m_save);
    column->addLayout(nameRow);

    auto* chooseRow = new QHBoxLayout;
    chooseRow->setSpacing(8);
    chooseRow->addWidget(m_choose);
    m_count->setMinimumWidth(60);
    chooseRow->addWidget(m_count, 1);
    chooseRow->addWidget(m_cancel);
    column->addLayout(chooseRow);

    connect(m_name, &QLineEdit::textEdited, &productivity, &Productivity::setWorkspaceDraft);
    connect(m_name, &QLineEdit::returnPressed, this, &WorkspaceEditor::save);
    connect(m_save, &QPushButton::clicked, this, &WorkspaceEditor::save);
    connect(m_cancel, &QPushButton::clicked, &productivity, &Productivity::clearWorkspaceDraft);
    connect(m_choose, &QPushButton::clicked, this, &WorkspaceEditor::chooseRequested);
    connect(&productivity, &Productivity::workspaceDraftChanged, this, &WorkspaceEditor::sync);
    connect(&productivity, &Productivity::workspacePathsChanged, this, &WorkspaceEditor::sync);
    connect(&productivity, &Productivity::workspaceEditingIDChanged, this, &WorkspaceEditor::sync);
    connect(&productivity, &Productivity::presetsChanged, this, &WorkspaceEditor::sync);
    connect(&panel, &PanelState::interactionLocksChanged, this, &WorkspaceEditor::syncChooser);
    sync();
    syncChooser();
}

QString WorkspaceEditor::countText() const
{
    return m_count->text();
}

void WorkspaceEditor::save()
{
    if (m_productivity.canSaveWorkspaceDraft())
        m_productivity.saveWorkspaceDraft();
}

void WorkspaceEditor::sync()
{
    // Typing keeps its cursor: the field is only written when the draft changed elsewhere.
    if (m_name->text() != m_productivity.workspaceDraft())
        m_name->setText(m_productivity.workspaceDraft());
    const QStringList paths = WorkspacePaths::fromUrls(m_productivity.workspacePaths());
    m_count->setText(WorkspaceTexts::chosenCount(int(paths.size())));
    m_count->setToolTip(paths.join(QLatin1Char('\n')));
    const auto editing = m_productivity.workspaceEditingID();
    const bool editingPreset = editing && m_productivity.preset(*editing);
    m_cancel->setVisible(editingPreset);
    m_save->setText(editingPreset ? WorkspaceTexts::saveChanges() : WorkspaceTexts::save());
    const bool ready = m_productivity.canSaveWorkspaceDraft();
    m_save->setEnabled(ready);
    m_save->setToolTip(ready ? QString() : WorkspaceTexts::saveHint());
}

void WorkspaceEditor::syncChooser()
{
    // One dialog at a time; while it is up the panel waits for it.
    const bool dialogOpen = m_panel.interactionLocks() > 0;
    m_choose->setEnabled(!dialogOpen);
    m_choose->setToolTip(dialogOpen ? WorkspaceTexts::dialogOpen() : QString());
}
