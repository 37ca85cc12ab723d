#pragma once

#include "clipboard/CodeUnitSet.h"

#include <QLocale>
#include <QString>
#include <QStringView>

// "Contains the search text, ignoring case, under the user's locale", fast enough to run over
// every stored clip on each keystroke. Case is compared by Unicode case folding, the same as
// QStringView::contains(…, Qt::CaseInsensitive); Turkish and Azerbaijani compare their dotted
// and dotless i by the locale's lower-casing instead.
class ClipSearch
{
public:
    explicit ClipSearch(const QString& needle, const QLocale& locale = QLocale());

    // An empty search text matches everything.
    bool isEmpty() const { return m_needle.isEmpty(); }
    bool matches(QStringView text) const;

private:
    enum class Mode { everything, anchored, folded, localeLowered };

    QString m_needle;
    Mode m_mode = Mode::everything;
    // Anchored mode: one character of the needle, chosen for being rare in ordinary text, is
    // looked for in every case form (all code units that fold like it); each hit is then
    // compared whole.
    qsizetype m_anchor = 0;
    CodeUnitSet m_anchorForms;
    QLocale m_locale;
};
