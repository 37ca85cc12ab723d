#include "productivity/widgets/NotesPage.h"

#include "productivity/NoteTexts.h"
#include "productivity/Productivity.h"
#include "productivity/widgets/ElidedTextLabel.h"
#include "productivity/widgets/NoteTextView.h"
#include "productivity/widgets/PageButton.h"
#include "ui/Card.h"
#include "ui/RowList.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const char* const rowText = "noteText";
}

NotesPage::NotesPage(Productivity& productivity, QWidget* parent)
    : QWidget(parent), m_productivity(productivity), m_header(new TextLabel(QString(), 10, TextLabel::caps)),
      m_editor(new NoteTextView), m_save(PageButton::make(QString(), QStringLiteral("primary"))),
      m_cancel(PageButton::make(NoteTexts::cancel(), QStringLiteral("plain"))),
      m_empty(new TextLabel(NoteTexts::empty(), 12, TextLabel::secondary)), m_rows(new QVBoxLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(5);
    auto* top = new QHBoxLayout;
    top->addWidget(m_header);
    top->addStretch(1);
    top->addWidget(new TextLabel(NoteTexts::hint(), 11, TextLabel::secondary));
    column->addLayout(top);

    auto* card = new Card;
    auto* inCard = new QVBoxLayout(card);
    inCard->setContentsMargins(4, 4, 4, 4);
    m_editor->setMinimumHeight(64);
    inCard->addWidget(m_editor);
    column->addWidget(card, 2);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_save);
    column->addLayout(buttons);

    column->addWidget(RowList::scrolling(m_rows, 3, m_empty), 3);

    connect(m_editor, &NoteTextView::edited, &productivity, &Productivity::setNoteDraft);
    connect(&productivity, &Productivity::noteDraftChanged, this, &NotesPage::loadDraft);
    connect(&productivity, &Productivity::noteEditingIDChanged, this, &NotesPage::showEditing);
    connect(&productivity, &Productivity::notesChanged, this, &NotesPage::rebuild);
    connect(&productivity, &Productivity::pinsChanged, this, &NotesPage::rebuild);
    // Saving, cancelling and starting an edit load another text: undo starts over each time.
    connect(m_save, &QPushButton::clicked, this, [this] {
        m_productivity.saveNoteDraft();
        m_editor->replaceExternally(m_productivity.noteDraft());
    });
    connect(m_cancel, &QPushButton::clicked, this, [this] {
        // Leaving the edit also leaves its text: the note itself is unchanged.
        m_productivity.setNoteEditingID(std::nullopt);
        m_productivity.setNoteDraft(QString());
        m_editor->replaceExternally(QString());
    });
    m_editor->replaceExternally(productivity.noteDraft());
    showEditing();
    rebuild();
}

QString NotesPage::headerText() const
{
    return m_header->text();
}

void NotesPage::loadDraft()
{
    // Only a change from outside the editor replaces its text (and its history).
    if (m_editor->toPlainText() != m_productivity.noteDraft())
        m_editor->replaceExternally(m_productivity.noteDraft());
}

void NotesPage::showEditing()
{
    const bool editing = m_productivity.noteEditingID().has_value();
    m_header->setText(NoteTexts::header(editing));
    m_save->setText(NoteTexts::save(editing));
    m_cancel->setVisible(editing);
    rebuild();
}

QStringList NotesPage::noteTexts() const
{
    return RowList::texts<ElidedTextLabel>(m_rows, QString::fromLatin1(rowText), &ElidedTextLabel::fullText);
}

QPushButton* NotesPage::rowButton(int row, const QString& text) const
{
    return RowList::button<QPushButton>(m_rows, row, text);
}

void NotesPage::rebuild()
{
    RowList::clear(m_rows);
    for (const QuickNote& note : m_productivity.notes())
        m_rows->addWidget(makeRow(note));
    m_empty->setHidden(!m_productivity.notes().isEmpty());
}

QWidget* NotesPage::makeRow(const QuickNote& note)
{
    auto* row = new Card;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(10, 3, 6, 3);
    layout->setSpacing(4);
    // One line per note: the first line of its text.
    auto* text = new ElidedTextLabel(note.text, 12, TextLabel::primary);
    text->setObjectName(QString::fromLatin1(rowText));
    text->setToolTip(note.text);
    layout->addWidget(text, 1);
    const bool pinned = m_productivity.pins().contains(note.text);
    QPushButton* pin =
        PageButton::make(NoteTexts::pin(pinned), pinned ? QStringLiteral("chip") : QStringLiteral("plain"));
    QPushButton* edit = PageButton::make(NoteTexts::edit(), QStringLiteral("plain"));
    QPushButton* remove = PageButton::make(NoteTexts::remove(), QStringLiteral("plain"));
    edit->setEnabled(m_productivity.noteEditingID() != note.id);
    for (QPushButton* button : {pin, edit, remove})
        layout->addWidget(button);

    const QUuid id = note.id;
    const QString noteText = note.text;
    connect(pin, &QPushButton::clicked, this, [this, noteText] { m_productivity.togglePin(noteText); });
    connect(edit, &QPushButton::clicked, this, [this, id, noteText] {
        m_productivity.setNoteEditingID(id);
        m_productivity.setNoteDraft(noteText);
        m_editor->replaceExternally(noteText);
    });
    connect(remove, &QPushButton::clicked, this, [this, id] {
        QList<QuickNote> notes = m_productivity.notes();
        notes.removeIf([&](const QuickNote& n) { return n.id == id; });
        m_productivity.setNotes(notes);
        if (m_productivity.noteEditingID() == id) {
            m_productivity.setNoteEditingID(std::nullopt);
            m_productivity.setNoteDraft(QString());
        }
    });
    return row;
}
