#include "productivity/NoteTexts.h"

QString NoteTexts::header(bool editing)
{
    return editing ? QStringLiteral("NOTIZ BEARBEITEN") : QStringLiteral("GEDANKEN FESTHALTEN");
}
QString NoteTexts::hint()
{
    return QStringLiteral("Lokal gespeichert");
}
QString NoteTexts::save(bool editing)
{
    return editing ? QStringLiteral("Änderung speichern") : QStringLiteral("Notiz speichern");
}
QString NoteTexts::cancel()
{
    return QStringLiteral("Abbrechen");
}
QString NoteTexts::accessibleName()
{
    return QStringLiteral("Notiztext");
}
QString NoteTexts::edit()
{
    return QStringLiteral("Bearbeiten");
}
QString NoteTexts::remove()
{
    return QStringLiteral("Entfernen");
}
QString NoteTexts::pin(bool pinned)
{
    return pinned ? QStringLiteral("Nicht mehr anheften") : QStringLiteral("Anheften");
}
QString NoteTexts::empty()
{
    return QStringLiteral("Noch keine Notizen.");
}
