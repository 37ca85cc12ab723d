#pragma once

#include <QUuid>
#include <QWidget>

class NoteTextView;
struct QuickNote;
class Productivity;
class QPushButton;
class QVBoxLayout;
class TextLabel;

// The "Notizen" page: the editor bound to the draft, save and cancel, then the notes, newest
// first, each with edit, pin and remove.
class NotesPage : public QWidget
{
    Q_OBJECT
public:
    explicit NotesPage(Productivity& productivity, QWidget* parent = nullptr);

    NoteTextView* editor() const { return m_editor; }
    QString headerText() const;
    QPushButton* saveButton() const { return m_save; }
    QPushButton* cancelButton() const { return m_cancel; }
    // The notes as listed and the button of one row by its text.
    QStringList noteTexts() const;
    QPushButton* rowButton(int row, const QString& text) const;

private:
    void loadDraft();
    void showEditing();
    void rebuild();
    QWidget* makeRow(const QuickNote& note);

    Productivity& m_productivity;
    TextLabel* m_header;
    NoteTextView* m_editor;
    QPushButton* m_save;
    QPushButton* m_cancel;
    TextLabel* m_empty;
    QVBoxLayout* m_rows;
};
