#pragma once

#include <QString>

// Texts of the notes page ("Notizen").
namespace NoteTexts {

QString header(bool editing);
QString hint();
QString save(bool editing);
QString cancel();
QString accessibleName();
QString edit();
QString remove();
QString pin(bool pinned);
QString empty();

} // namespace NoteTexts
