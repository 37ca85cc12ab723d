#pragma once

#include <QString>

// Texts of the search page ("Suche").
namespace SearchTexts {

QString idle();
QString searching();
QString noResults();
QString results(int count);
QString unavailable();
QString placeholder();
QString scopeAll();
QString scopeApps();
QString scopeFiles();
QString reveal();
QString addToShelf();

} // namespace SearchTexts
