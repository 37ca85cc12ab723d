#include "productivity/widgets/WorkspacesPage.h"

#include "productivity/Productivity.h"
#include "productivity/WorkspaceTexts.h"
#include "productivity/widgets/ElidedTextLabel.h"
#include "productivity/widgets/PageButton.h"
#include "productivity/widgets/WorkspaceEditor.h"
#include "ui/Card.h"
#include "ui/PanelTheme.h"
#include "ui/RowList.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const char* const rowName = "workspaceName";
}

WorkspacesPage::WorkspacesPage(Productivity& productivity, const PanelState& panel, QWidget* parent)
    : QWidget(parent), m_productivity(productivity), m_editor(new WorkspaceEditor(productivity, panel)),
      m_empty(new TextLabel(WorkspaceTexts::empty(), 12, TextLabel::secondary)), m_rows(new QVBoxLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget((new TextLabel(WorkspaceTexts::intro(), 12, TextLabel::secondary))->wrapping());
    column->addWidget(m_editor);

    // Only the list scrolls: the editor stays in reach however many presets there are.
    column->addWidget(RowList::scrolling(m_rows, 4, m_empty), 1);

    connect(m_editor, &WorkspaceEditor::chooseRequested, this, &WorkspacesPage::chooseRequested);
    connect(&productivity, &Productivity::presetsChanged, this, &WorkspacesPage::rebuild);
    connect(&productivity, &Productivity::workspaceEditingIDChanged, this, &WorkspacesPage::rebuild);
    rebuild();
}

QStringList WorkspacesPage::presetNames() const
{
    return RowList::texts<ElidedTextLabel>(m_rows, QString::fromLatin1(rowName), &ElidedTextLabel::fullText);
}

QPushButton* WorkspacesPage::rowButton(int row, const QString& text) const
{
    return RowList::button<QPushButton>(m_rows, row, text);
}

bool WorkspacesPage::showsEmptyState() const
{
    return !m_empty->isHidden();
}

void WorkspacesPage::rebuild()
{
    RowList::clear(m_rows);
    for (const WorkspacePreset& preset : m_productivity.presets())
        m_rows->addWidget(makeRow(preset));
    m_empty->setHidden(!m_productivity.presets().isEmpty());
}

QWidget* WorkspacesPage::makeRow(const WorkspacePreset& preset)
{
    auto* row = new Card;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(10, 6, 8, 6);
    layout->setSpacing(8);
    auto* glyph = new SymbolLabel(QStringLiteral("square.stack.3d.up"), 16);
    glyph->setStyleSheet(QStringLiteral("color: %1;").arg(PanelTheme::accent().name()));
    layout->addWidget(glyph);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    // Long names and item lists give way to the buttons instead of widening the panel.
    auto* name = new ElidedTextLabel(preset.name, 13, TextLabel::primary, QFont::DemiBold);
    name->setObjectName(QString::fromLatin1(rowName));
    auto* items = new ElidedTextLabel(WorkspaceTexts::items(preset.paths), 11, TextLabel::secondary);
    items->setToolTip(preset.paths.join(QLatin1Char('\n')));
    texts->addWidget(name);
    texts->addWidget(items);
    layout->addLayout(texts, 1);

    auto* start = PageButton::make(WorkspaceTexts::start(), QStringLiteral("primary"));
    auto* edit = PageButton::make(WorkspaceTexts::edit(), QString());
    auto* remove = PageButton::make(WorkspaceTexts::remove(), QStringLiteral("plain"));
    // The preset in the editor is already being edited.
    edit->setEnabled(m_productivity.workspaceEditingID() != preset.id);
    for (QPushButton* button : {start, edit, remove})
        layout->addWidget(button);

    connect(start, &QPushButton::clicked, this, [this, preset] { Q_EMIT launchRequested(preset); });
    const QUuid id = preset.id;
    connect(edit, &QPushButton::clicked, this, [this, id] { m_productivity.editWorkspace(id); });
    connect(remove, &QPushButton::clicked, this, [this, id] { m_productivity.removeWorkspace(id); });
    return row;
}
