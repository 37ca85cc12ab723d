#pragma once

#include "clipboard/CodeUnitSet.h"

#include <QLocale>
#include <QString>
#include <QStringView>

#include <string>

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
    // The same answer for a text held one byte per character (every character below U+0100).
    bool matches(QLatin1StringView text) const;

private:
    void prepareLatin1();

    enum class Mode { everything, anchored, folded, localeLowered };

    QString m_needle;
    Mode m_mode = Mode::everything;
    // Anchored mode: one character of the needle, chosen for being rare in ordinary text, is
    // looked for in every case form (all code units that fold like it); each hit is then
    // compared whole.
    qsizetype m_anchor = 0;
    CodeUnitSet m_anchorForms;
    QLocale m_locale;
    // For one-byte texts: the needle folded, whether any such text can hold it at all, and the
    // bytes that fold like the anchor.
    std::u16string m_folded;
    bool m_latin1Possible = false;
    qsizetype m_latin1Anchor = 0;
    QByteArray m_latin1Anchors;
};
